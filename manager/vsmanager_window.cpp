// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The clock window's behaviour: its adoption, topmost, taskbar, mask and click-through.

#include "manager/vsmanager.h"

#include "config/vsconfig.h"
#include "manager/storedplacement.h"
#include "manager/windowstyle.h"
#include "platform/vsnativeeventfilter.h"

#include <QtGui/qcursor.h>
#include <QtGui/qevent.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qregion.h>

#include <chrono>

using namespace std::chrono_literals;

namespace
{

// The two ways of every desktop.
bool asksForMenu(const QKeyEvent &event)
{
    return event.key() == Qt::Key_Menu
        || (event.key() == Qt::Key_F10 && event.modifiers() == Qt::ShiftModifier);
}

} // namespace

void VsManager::setMainWindow(QWindow *window)
{
    m_dpiCheckTimer.stop();
    m_mainWindow = window;
    placement().setWindow(window);
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
    WindowStyle::reapplyWhenLost(window, this, [this] { applyWindowStyle(); });
    m_dpiCheckTimer.start(1000ms);
    Q_EMIT mainWindowIdChanged(window->winId());
    Q_EMIT mainWindowChanged(window);
}

void VsManager::applyStoredGeometry()
{
    const auto stored = storedPlacement(*m_config);
    if (!stored)
        return;
    m_mainWindow->setPosition(stored->position); // apart: a rectangle may not hold the far edges
    m_mainWindow->resize(stored->side, stored->side);
    placement().adoptGeometry();
}

void VsManager::filterMainWindowEvent(QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
        if (static_cast<QMouseEvent *>(event)->buttons().testFlag(Qt::RightButton))
            showContextMenu(QCursor::pos());
        m_mousePressed = true;
        break;
    case QEvent::MouseButtonRelease:
        m_mousePressed = false;
        m_dpi = m_mainWindow->devicePixelRatio() * referenceDpi;
        m_devicePixelRatio = m_mainWindow->screen()->devicePixelRatio();
        break;
    case QEvent::MouseButtonDblClick:
        mainLoop();
        break;
    case QEvent::Close:
        m_lazySaveTimer.stop();
        saveConfig();
        break;
    case QEvent::WindowStateChange:
        // X11 tells the state once when the window first appears, without a change.
        if (!event->spontaneous() || m_windowStates != m_mainWindow->windowStates())
            onMainWindowStateChange();
        break;
    case QEvent::KeyPress:
        if (asksForMenu(*static_cast<QKeyEvent *>(event)))
            openMenuByKeyboard();
        break;
    case QEvent::KeyRelease:
        if (static_cast<QKeyEvent *>(event)->key() == Qt::Key_M)
            Q_EMIT reqOpenMenu();
        break;
    default:
        break;
    }
}

void VsManager::onMainWindowStateChange()
{
    m_windowStates = m_mainWindow->windowStates();
    if (m_mainWindow->windowState() == Qt::WindowMinimized) {
        // A plain window, with an entry on the taskbar to restore it from.
        m_mainWindow->setFlags(Qt::Window);
        WindowStyle::keepFrameless(m_mainWindow->winId());
        WindowStyle::offerForRestore(m_mainWindow->winId());
    } else {
        setShowOnTaskbar(m_config->showOnTaskbar(), false);
    }
    Q_EMIT mainWindowStateChanged(m_windowStates);
}

// A native window that Qt made anew knows nothing of what was set on the old one.
void VsManager::applyWindowStyle()
{
    const WId window = m_mainWindow->winId();
    WindowStyle::setWindowToolStyle(window, !m_isOnTaskbar);
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

bool VsManager::isMouseInnerImage(QPoint mousePos, const QImage &image)
{
    return image.valid(mousePos) && qAlpha(image.pixel(mousePos)) != 0;
}

void VsManager::setShowOnTaskbar(bool enabled, bool storeGeometry)
{
    if (!m_mainWindow)
        return;
    if (m_mainWindow->windowState() != Qt::WindowMinimized && storeGeometry)
        m_normalGeometry = placement().wanted();
    m_isOnTaskbar = enabled;
    if (enabled) {
        m_mainWindow->setFlags(m_mainWindow->flags() | Qt::Window | Qt::WindowSystemMenuHint
            | Qt::WindowMinimizeButtonHint);
        WindowStyle::keepFrameless(m_mainWindow->winId());
    } else {
        m_mainWindow->setFlags(Qt::FramelessWindowHint | Qt::CustomizeWindowHint);
    }
    QTimer::singleShot(0, this, &VsManager::completeTaskbarChange);
}

// Nothing is stored before the first save, and a file may hold anything: a window without a size
// would not be seen again, one of millions of pixels would take the machine's memory.
QRect VsManager::restorableGeometry() const
{
    return storedPlacement(*m_config) ? m_config->geometry() : QRect();
}

// Brings back what the change of the flags may have lost, once it has been carried out.
void VsManager::completeTaskbarChange()
{
    m_isTaskbarChangeDue = placement().state() == WindowPlacement::State::AwaitingMonitor;
    if (m_isTaskbarChangeDue)
        return; // until it is shown again
    m_mainWindow->hide();
    WindowStyle::setWindowToolStyle(m_mainWindow->winId(), !m_isOnTaskbar);
    m_mainWindow->show();
    WindowStyle::setWindowTopmost(m_mainWindow->winId(), m_config->topmost());
    const QRect geometry = m_normalGeometry.isValid() ? m_normalGeometry : restorableGeometry();
    // Of a rescued clock a window manager would leave a strip on the screen.
    if (geometry.isValid() && !placement().isRescued())
        placement().restore(geometry);
    updateMask();
    WindowStyle::setWindowTransparentForMouse(m_mainWindow->winId(), m_config->ignoreMouseEvent());
    QTimer::singleShot(500ms, this, &VsManager::updateMaskAfterShow);
}

// What Windows restores gets its size after the mask.
void VsManager::updateMaskAfterShow()
{
    // Not m_mousePressed: what opens the menu is never released for the clock.
    const bool isDragged = QGuiApplication::mouseButtons().testFlag(Qt::LeftButton);
    if (placement().state() == WindowPlacement::State::Shown && !isDragged) // no mask in a drag
        updateMask();
}

void VsManager::onAboutToMinimize()
{
    if (m_mainWindow)
        m_normalGeometry = placement().wanted(); // its geometry, unless it is not where it belongs
}
