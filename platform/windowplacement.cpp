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

#include <cmath>
#include <utility>

using namespace std::chrono_literals;

namespace
{

// An answer that takes longer is taken for the window system's own doing; what is wanted stays.
constexpr auto answerTime = 500ms;
constexpr auto screenChangeTime = 1000ms;

// In native pixels, computed from rounded ones.
bool isSameWidth(double one, double other) { return std::abs(one - other) < 2; }

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
    m_hearing = false;
    m_isAnswerDue = false;
    m_isReporting = false;
    m_isCorrectionDue = false;
    m_awaitsMonitor = false;
    m_lastPointer.reset();
    m_hiddenLock.reset();
    m_settleTimer.stop();
    if (!m_window)
        return;
    m_wanted = m_asked = m_window->geometry();
    m_ratio = m_window->devicePixelRatio();
    m_window->installEventFilter(this);
    connect(m_window, &QWindow::windowStateChanged, this, [this](Qt::WindowState state) {
        if (state == Qt::WindowMinimized)
            Q_EMIT minimized();
    });
}

void WindowPlacement::adoptGeometry()
{
    if (m_window) {
        m_wanted = m_asked = m_window->geometry();
        m_ratio = m_window->devicePixelRatio();
    }
    m_isWantedKnown = true;
}

WindowPlacement::State WindowPlacement::state() const
{
    if (!m_window)
        return State::Hidden;
    if (m_window->windowState() == Qt::WindowMinimized)
        return State::Minimized;
    if (isShown())
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

bool WindowPlacement::isRescued() { return isDisplaced() && !isOnAnyScreen(); }

// QWindow does not report the requests that it passes on, so a request is inferred from its result:
// a change that the window system has not been heard to make.
void WindowPlacement::noteChange()
{
    if (!m_window)
        return;
    const double ratioBefore = std::exchange(m_ratio, m_window->devicePixelRatio());
    if (m_window->geometry() == m_asked)
        return;
    const QRect before = std::exchange(m_asked, m_window->geometry());
    if (m_isWantedKnown && ratioBefore != m_ratio
        && isSameWidth(m_asked.width() * m_ratio, before.width() * ratioBefore)) {
        compareAfterScreenChange(); // the scale factor has changed, the native size has not
    } else if (!std::exchange(m_hearing, false)) {
        // A size that only the window system gave is not taken over with a new place.
        m_wanted = QRect(
            m_asked.topLeft(), m_asked.size() == before.size() ? m_wanted.size() : m_asked.size());
        m_isWantedKnown = true;
        m_isAnswerDue = true;
        settleWithin(answerTime);
    } else if (!m_isWantedKnown) {
        m_wanted = m_asked;
    } else if ((m_isUserMoving || hasMovedWithPointer(m_asked.topLeft() - before.topLeft()))
        && m_asked.width() == m_asked.height()) {
        m_wanted = m_asked;
        Q_EMIT movedByUser();
    }
}

// Some window managers report a drag only when the button has been released. The pointer has then
// moved by the same offset since it was last seen on the window.
bool WindowPlacement::hasMovedWithPointer(QPoint offset) const
{
    constexpr int slackPx = 4; // it may have moved on meanwhile
    return !m_isCorrectionDue && m_pointerOffset.manhattanLength() > slackPx
        && (m_pointerOffset - offset).manhattanLength() <= slackPx;
}

// Qt applies the change after this returns and emits nothing at that moment.
void WindowPlacement::expectSystemChange()
{
    noteChange();
    m_hearing = true;
    // A window that has just appeared is moved by the window manager, whatever the user holds. So
    // is one that is reported after a while: a key is held now, but was not when it moved.
    const bool isReport = std::exchange(m_isReporting, false);
    m_isUserMoving = !m_isCorrectionDue && (isHeldByButton() || (!isReport && isAnyKeyHeld()));
    m_pointerOffset = m_lastPointer ? QCursor::pos() - *m_lastPointer : QPoint();
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
            settleWithin(answerTime);
        }
        break;
    case QEvent::DevicePixelRatioChange:
        noteChange();
        break;
    case QEvent::Enter:
        m_lastPointer = static_cast<QEnterEvent *>(event)->globalPosition().toPoint();
        break;
    case QEvent::MouseMove:
        m_lastPointer = static_cast<QMouseEvent *>(event)->globalPosition().toPoint();
        break;
    case QEvent::Expose:
        endCorrectionIfInPlace();
        break;
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

// A window that is in its place as soon as it can be seen needs no correction: what moves it after
// that is another program. After a change of the screens window managers may take longer.
void WindowPlacement::endCorrectionIfInPlace()
{
    if (!m_isCorrectionDue || m_isScreenChange || !m_window->isExposed())
        return;
    if (isAt(target())) {
        m_isCorrectionDue = false;
        m_isAnswerDue = false;
        m_settleTimer.stop();
    } else if (!m_settleTimer.isActive()) {
        m_settleTimer.start(answerTime); // a busy window manager brings it onto the screen late
    }
}

// Never sooner than was said before.
void WindowPlacement::settleWithin(std::chrono::milliseconds time)
{
    if (m_settleTimer.remainingTimeAsDuration() < time) // negative while it does not run
        m_settleTimer.start(time);
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
    if (!m_window || state() == State::Minimized || isShown() != awaits)
        return;
    showWindow(!awaits);
    if (!awaits)
        Q_EMIT shownAgain();
}

void WindowPlacement::compareAfterScreenChange()
{
    m_isCorrectionDue = true;
    m_isScreenChange = true;
    settleWithin(screenChangeTime);
}

void WindowPlacement::move(const QRect &geometry)
{
    noteChange();
    m_isAnswerDue = true;
    settleWithin(answerTime);
    request(geometry);
    m_asked = m_window->geometry(); // a minimized window may not take it
}

void WindowPlacement::settle()
{
    noteChange();
    if (!m_window)
        return;
    const bool isDragged = isHeldByButton();
    if (isDragged && QGuiApplication::mouseButtons() != Qt::NoButton) {
        m_settleTimer.start(answerTime); // on its way to another place already
        return;
    }
    if (isDragged)
        m_isCorrectionDue = false; // by the window manager, which has grabbed the pointer
    m_isScreenChange = false;
    if (m_awaitsMonitor)
        settleWithoutMonitor();
    if (state() != State::Shown || !m_window->isExposed()) {
        m_isAnswerDue = m_isCorrectionDue; // the next exposure starts it again
        return;
    }
    if (std::exchange(m_isCorrectionDue, false) && !isAt(target())) {
        move(target());
        Q_EMIT corrected();
        return;
    }
    m_isAnswerDue = false;
    reportPlace();
}

// The user has moved the clock to a screen that is there, or restored it while its own is away.
void WindowPlacement::settleWithoutMonitor() { setAwaitsMonitor(!isOnAnyScreen()); }

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
        return {m_asked.topLeft(), m_wanted.size()}; // wherever it has been put meanwhile
    return {positionOnNearestScreen(m_wanted.topLeft(), m_wanted.size(), screenGeometries()),
        m_wanted.size()};
}
