// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Where the clock window is: its geometry in the configuration, the moves, the questions about
// screens.

#include "manager/vsmanager.h"

#include "config/saturate.h"
#include "config/vsconfig.h"
#include "dialogs/vsdebugwindow.h"
#include "manager/clockside.h"
#include "manager/windowstyle.h"
#include "platform/vsnativeeventfilter.h"

#include <QtCore/qparallelanimationgroup.h>
#include <QtCore/qpropertyanimation.h>
#include <QtGui/qcursor.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qscreen.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

constexpr int moveDurationMs = 450;

QPropertyAnimation *moveAlong(QWindow *window, const QByteArray &axis, int to)
{
    auto *animation = new QPropertyAnimation(window, axis);
    animation->setDuration(moveDurationMs);
    animation->setEasingCurve(QEasingCurve::InOutCirc);
    animation->setStartValue(window->property(axis));
    animation->setEndValue(to);
    return animation;
}

} // namespace

void VsManager::syncWindowGeometory()
{
    if (!m_mainWindow)
        return;
    const bool minimized = placement().state() == WindowPlacement::State::Minimized;
    const QRect geometry
        = minimized && !placement().isDisplaced() ? m_normalGeometry : placement().wanted();
    const QPoint position = geometry.topLeft();
    QSize size = geometry.size();
    if (size.width() != size.height()) { // a square is taken as it is, whatever its side
        const int side
            = std::clamp(std::max(size.width(), size.height()), minimumClockSide, maximumClockSide);
        size = QSize(side, side);
    }
    if (const QScreen *screen = m_mainWindow->screen())
        m_config->setDevicePixelRatio(screen->devicePixelRatio());
    m_config->setLeft(position.x());
    m_config->setTop(position.y());
    m_config->setWidth(size.width());
    m_config->setHeight(size.height());
}

void VsManager::keepOnScreen() { placement().bringOntoScreen(); }

void VsManager::placeFirstClock()
{
    const QScreen *screen = QGuiApplication::primaryScreen();
    if (!m_mainWindow || !screen || m_config->geometry() != QRect(0, 0, 0, 0))
        return;
    constexpr int margin = 24;
    const QRect room = screen->availableGeometry();
    m_mainWindow->setPosition(
        room.x() + room.width() - margin - m_mainWindow->width(), room.y() + margin);
}

WindowPlacement &VsManager::placement() { return m_nativeEventFilter->placement(); }

void VsManager::moveToTopLeft() { moveToCorner(Qt::TopLeftCorner); }

void VsManager::moveToTopRight() { moveToCorner(Qt::TopRightCorner); }

void VsManager::moveToBottomRight() { moveToCorner(Qt::BottomRightCorner); }

void VsManager::moveToBottomLeft() { moveToCorner(Qt::BottomLeftCorner); }

void VsManager::moveToCorner(Qt::Corner corner)
{
    if (!m_mainWindow || !m_mainWindow->screen())
        return;
    // right() and bottom() lie on the screen, so the clock stays one pixel short of these two
    // edges: meant so.
    const QRect screen = m_mainWindow->screen()->geometry();
    const bool atRight = corner == Qt::TopRightCorner || corner == Qt::BottomRightCorner;
    const bool atBottom = corner == Qt::BottomLeftCorner || corner == Qt::BottomRightCorner;
    const int x = atRight ? screen.right() - m_mainWindow->width() : screen.left();
    const int y = atBottom ? screen.bottom() - m_mainWindow->height() : screen.top();
    moveWindowWithAnimation(m_mainWindow, QPoint(x, y));
}

void VsManager::moveToCenterAtCurrentScreen()
{
    if (!m_mainWindow)
        return;
    QRect target = m_mainWindow->geometry();
    if (const QScreen *screen = QGuiApplication::screenAt(QCursor::pos()))
        target.moveCenter(screen->geometry().center());
    moveWindowWithAnimation(m_mainWindow, target.topLeft());
}

void VsManager::moveWindowWithAnimation(QWindow *window, QPoint toPos)
{
    if (!window)
        return;
    window->show();
    WindowStyle::showWindow(window->winId());
    clearMask();
    auto *animation = new QParallelAnimationGroup(this);
    animation->addAnimation(moveAlong(window, "x"_ba, toPos.x()));
    animation->addAnimation(moveAlong(window, "y"_ba, toPos.y()));
    connect(animation, &QAbstractAnimation::finished, this, [this, window] {
        m_nativeEventFilter->onUserMoved();
        saveConfig();
        updateMask();
        Q_EMIT windowMovingAnimationFinished(window);
    });
    animation->start(QAbstractAnimation::DeleteWhenStopped);
}

void VsManager::moveAndReturnMainWindow()
{
    if (!m_mainWindow)
        return;
    const QPoint position = m_mainWindow->position();
    m_mainWindow->setPosition(position + QPoint(1, 1));
    QTimer::singleShot(0, m_mainWindow, [this, position] { m_mainWindow->setPosition(position); });
}

// Meant: where no screen is, a topmost clock still counts as being on one.
bool VsManager::isAvailableScreen(QPoint pos)
{
    return QGuiApplication::screenAt(pos) || m_config->topmost();
}

QRect VsManager::getCurrentScreenGeometory()
{
    const QScreen *screen = QGuiApplication::screenAt(QCursor::pos());
    return screen ? screen->geometry() : QRect(0, 0, 0, 0);
}

void VsManager::onDpiChanged(WId wid, uint xDpi, [[maybe_unused]] uint yDpi, QRect rect)
{
    if (!m_mainWindow || wid != m_mainWindow->winId())
        return;
    clearMask();
    if (!m_mousePressed) { // whoever is dragging keeps the size
        const QSize size = m_mainWindow->size();
        const double oldScale = m_dpi / referenceDpi;
        m_dpi = xDpi;
        const int side = toIntSaturated(size.width() / oldScale * (xDpi / referenceDpi));
        VsDebugWindow::append(u"dpi: %1, WinSize: %2x%3, %Rect.Size: %4x%5"_s // so spelled: meant
                .arg(xDpi)
                .arg(size.width())
                .arg(size.height())
                .arg(rect.width())
                .arg(rect.height()));
        m_mainWindow->resize(side, side);
    }
    updateMask();
}

// Runs once, a second after the clock window was adopted, and does nothing more: meant so.
void VsManager::checkMainWindowDpi() { m_dpiCheckTimer.stop(); }
