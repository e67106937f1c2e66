// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// What is common to all window systems: what is wanted, and when the window is compared with it.

#include "platform/windowplacement.h"

#include "config/vsconfig.h"
#include "platform/nearestscreen.h"

#include <QtCore/qmetaobject.h>
#include <QtGui/qcursor.h>
#include <QtGui/qevent.h>
#include <QtGui/qguiapplication.h>

#include <utility>

using namespace std::chrono_literals;

namespace
{

// An answer that takes longer is taken for the window system's own doing; what is wanted stays.
constexpr auto answerTime = 500ms;
constexpr auto screenChangeTime = 1000ms;

} // namespace

WindowPlacement::WindowPlacement(QObject *parent)
    : QObject(parent)
{
    m_settleTimer.setSingleShot(true);
    connect(&m_settleTimer, &QTimer::timeout, this, &WindowPlacement::settle);
}

void WindowPlacement::setWindow(QWindow *window)
{
    if (m_window == window)
        return;
    if (m_window) {
        m_window->disconnect(this);
        m_window->removeEventFilter(this);
    }
    m_window = window;
    m_isWantedKnown = false;
    m_settleTimer.stop();
    if (!m_window)
        return;
    m_wanted = m_asked = m_window->geometry();
    m_window->installEventFilter(this);
    connect(m_window, &QWindow::windowStateChanged, this, [this](Qt::WindowState state) {
        if (state == Qt::WindowMinimized)
            Q_EMIT minimized();
    });
}

WindowPlacement::State WindowPlacement::state() const
{
    if (!m_window)
        return State::Hidden;
    if (m_window->windowState() == Qt::WindowMinimized)
        return State::Minimized;
    if (isOnDisplay())
        return State::Shown;
    return m_awaitsMonitor ? State::AwaitingMonitor : State::Hidden;
}

QRect WindowPlacement::wanted()
{
    noteChange();
    return m_wanted;
}

bool WindowPlacement::isDisplaced()
{
    noteChange();
    return m_wanted != m_asked;
}

// QWindow reports no request that it passes on, so a request is found out by its result: a change
// that the window system has not been heard to make.
void WindowPlacement::noteChange()
{
    if (!m_window || m_window->geometry() == m_asked)
        return;
    const QPoint way = m_window->position() - m_asked.topLeft();
    m_asked = m_window->geometry();
    if (!std::exchange(m_hearing, false)) {
        m_wanted = m_asked;
        m_isWantedKnown = true;
        m_isAnswerDue = true;
        m_settleTimer.start(answerTime);
    } else if (!m_isWantedKnown
        || ((m_isUserMoving || hasPointerGone(way)) && m_asked.width() == m_asked.height())) {
        m_wanted = m_asked;
    }
}

// Some window managers report a drag only when the button has been released. The pointer has then
// gone the same way since it was last seen on the clock.
bool WindowPlacement::hasPointerGone(QPoint way) const
{
    constexpr int slackPx = 4; // it may have gone on meanwhile
    return !m_isCorrectionDue && !m_pointerWay.isNull()
        && (m_pointerWay - way).manhattanLength() <= slackPx;
}

// Qt takes over the change as soon as the native event has been handled, and nothing tells when.
void WindowPlacement::hearNextChange()
{
    noteChange();
    m_hearing = true;
    // A window that has just appeared is moved by the window manager, whatever the user holds.
    m_isUserMoving = !m_isCorrectionDue && (isUserHoldingButton() || isUserHoldingKey());
    m_pointerWay = QCursor::pos() - m_lastPointer;
    QMetaObject::invokeMethod(
        this,
        [this] {
            noteChange();
            m_hearing = false;
        },
        Qt::QueuedConnection);
}

bool WindowPlacement::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::Show:
        m_hiddenLock.reset();
        [[fallthrough]];
    case QEvent::WindowStateChange:
        noteChange();
        if (m_isWantedKnown) {
            m_isAnswerDue = true;
            m_isCorrectionDue = true;
            m_settleTimer.start(answerTime);
        }
        break;
    case QEvent::Enter:
        m_lastPointer = static_cast<QEnterEvent *>(event)->globalPosition().toPoint();
        break;
    case QEvent::MouseMove:
        m_lastPointer = static_cast<QMouseEvent *>(event)->globalPosition().toPoint();
        break;
    case QEvent::Expose:
        lookIfInPlace();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

// What is in its place as soon as it can be seen needs no correction, and whatever comes next is
// another program's doing. What is not may still be on its way.
void WindowPlacement::lookIfInPlace()
{
    if (!m_isCorrectionDue || !m_isAnswerDue || !m_window->isExposed())
        return;
    if (isAt(target())) {
        m_isCorrectionDue = false;
        m_isAnswerDue = false;
        m_settleTimer.stop();
    } else if (!m_settleTimer.isActive()) {
        m_settleTimer.start(answerTime); // a busy window manager brings it onto the screen late
    }
}

void WindowPlacement::restore(const QRect &geometry)
{
    if (!m_window)
        return;
    const bool changesWanted = !isDisplaced();
    move(geometry);
    if (changesWanted) {
        m_wanted = geometry;
        m_isWantedKnown = true;
    }
}

void WindowPlacement::bringOntoScreen()
{
    noteChange();
    if (!m_window || isOnAnyScreen() || isPlaceKept())
        return;
    move(target());
    if (m_awaitsMonitor)
        setAwaitsMonitor(false);
}

void WindowPlacement::setAwaitsMonitor(bool awaits)
{
    m_awaitsMonitor = awaits;
    if (m_window && state() != State::Minimized && isOnDisplay() == awaits)
        setOnDisplay(!awaits);
}

void WindowPlacement::compareAfterScreenChange()
{
    m_isCorrectionDue = true;
    m_settleTimer.start(screenChangeTime);
}

void WindowPlacement::move(const QRect &geometry)
{
    noteChange();
    m_asked = geometry;
    m_isAnswerDue = true;
    m_settleTimer.start(answerTime);
    request(geometry);
}

void WindowPlacement::settle()
{
    noteChange();
    if (!m_window)
        return;
    if (QGuiApplication::mouseButtons() != Qt::NoButton) {
        m_settleTimer.start(answerTime); // dragged, and on its way to another place already
        return;
    }
    if (isUserHoldingButton())
        m_isCorrectionDue = false; // dragged by the window manager, which has taken the pointer
    if (m_awaitsMonitor)
        settleWithoutMonitor();
    if (state() != State::Shown || !m_window->isExposed())
        return; // the next exposure starts it again
    if (std::exchange(m_isCorrectionDue, false) && !isAt(target())) {
        move(target());
        return;
    }
    m_isAnswerDue = false;
    reportPlace();
}

// The user has moved the clock to a screen that is there, or restored it while its own is away.
void WindowPlacement::settleWithoutMonitor()
{
    if (isOnAnyScreen())
        m_awaitsMonitor = false;
    else
        setAwaitsMonitor(true);
}

bool WindowPlacement::isOnAnyScreen() const
{
    return meetsAnyScreen(m_wanted.topLeft(), m_wanted.size(), screenGeometries());
}

bool WindowPlacement::isPlaceKept() const
{
    return m_config && m_config->keepPositionWhenMonitorDetatched();
}

QRect WindowPlacement::target() const
{
    if (isOnAnyScreen())
        return m_wanted;
    if (isPlaceKept())
        return m_asked; // wherever the window system has put it meanwhile
    return {positionOnNearestScreen(m_wanted.topLeft(), m_wanted.size(), screenGeometries()),
        m_wanted.size()};
}
