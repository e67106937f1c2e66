// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The clock window's behaviour: its adoption, topmost, taskbar, mask and click-through.

#include "manager/vsmanager.h"

#include "config/saturate.h"
#include "config/vsconfig.h"
#include "manager/windowstyle.h"

#include <QtGui/qevent.h>
#include <QtGui/qregion.h>

#include <chrono>

using namespace std::chrono_literals;

namespace
{

constexpr double minimumSide = 72.0;
constexpr double maximumSide = 7680.0;

bool isUsableSide(double side) { return side >= minimumSide && side <= maximumSide; }

} // namespace

void VsManager::setMainWindow(QWindow *window)
{
    m_dpiCheckTimer.stop();
    m_mainWindow = window;
    // A clock that appears must not take the keyboard away from whoever is typing. This is how
    // QWidget tells its window; QWindow has no property of its own for it.
    window->setProperty("_q_showWithoutActivating", true);
    window->setFlag(Qt::NoDropShadowWindowHint);
    WindowStyle::setWindowToolStyle(window->winId(), true);
    if (m_config->topmost())
        WindowStyle::setWindowTopmost(window->winId(), true);
    connect(m_config, &VsConfig::ignoreMouseEventChanged, this, &VsManager::setIgnoreMouseEvent);
    applyStoredGeometry();
    updateMask();
    if (m_config->ignoreMouseEvent())
        WindowStyle::setWindowTransparentForMouse(window->winId(), true);
    if (m_config->resizeEnabled())
        clearMask();
    window->setVisible(true);
    setTopmostTimerEnabled(m_config->topmost());
    WindowStyle::touchThreadDpiAwareness();
    window->installEventFilter(this);
    m_dpiCheckTimer.start(1000ms);
    Q_EMIT mainWindowIdChanged(window->winId());
    Q_EMIT mainWindowChanged(window);
}

void VsManager::applyStoredGeometry()
{
    if (!isUsableSide(m_config->width()) || !isUsableSide(m_config->height()))
        return;
    const int side = toIntSaturated(m_config->width()); // the width wins: the clock is square
    m_mainWindow->setPosition(toIntSaturated(m_config->left()), toIntSaturated(m_config->top()));
    m_mainWindow->resize(side, side);
}

void VsManager::filterMainWindowEvent(QEvent *event)
{
    if (event->type() == QEvent::PlatformSurface) {
        const auto type = static_cast<QPlatformSurfaceEvent *>(event)->surfaceEventType();
        if (type == QPlatformSurfaceEvent::SurfaceCreated)
            applyWindowStyle();
    }
}

// A native window that Qt made anew knows nothing of what was set on the old one.
void VsManager::applyWindowStyle()
{
    const WId window = m_mainWindow->winId();
    WindowStyle::setWindowToolStyle(window, !m_config->showOnTaskbar());
    WindowStyle::setWindowTopmost(window, m_config->topmost());
    WindowStyle::setWindowTransparentForMouse(window, m_config->ignoreMouseEvent());
}

void VsManager::setTopmost(bool enabled)
{
    if (m_mainWindow)
        WindowStyle::setWindowTopmost(m_mainWindow->winId(), enabled);
}

// The settings decide, not the argument: either of two signals brings only its own value.
void VsManager::setTopmostTimerEnabled([[maybe_unused]] bool enabled)
{
    if (m_config->topmost() && m_config->raisePriorityOfTopmost())
        m_topmostTimer.start();
    else
        m_topmostTimer.stop();
}

void VsManager::setTopmostForce()
{
    if (m_config->topmost() && m_config->raisePriorityOfTopmost())
        setTopmost(true);
}

void VsManager::updateMask()
{
    if (!m_mainWindow || m_config->resizeEnabled())
        return; // a window that can be resized has no mask: its corners must be in reach
    const int side = m_mainWindow->width() + 1; // for both: the clock is square
    m_mainWindow->setMask(QRegion(-1, -1, side, side, QRegion::Ellipse));
}

void VsManager::clearMask()
{
    if (m_mainWindow)
        m_mainWindow->setMask(QRegion());
}

void VsManager::setResizeEnabled(bool enabled)
{
    if (enabled)
        clearMask();
    else
        updateMask();
}

void VsManager::setIgnoreMouseEvent(bool ignore)
{
    if (m_mainWindow)
        WindowStyle::setWindowTransparentForMouse(m_mainWindow->winId(), ignore);
}

bool VsManager::isMouseInnerImage(QPoint mousePos, QImage image)
{
    return image.valid(mousePos) && qAlpha(image.pixel(mousePos)) != 0;
}

void VsManager::setShowOnTaskbar([[maybe_unused]] bool enabled, [[maybe_unused]] bool storeGeometry)
{
}

void VsManager::onAboutToMinimize() { }
