// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/soak/quicktime.h"

#include <QtCore/qcoreapplication.h>
#include <QtCore/qcoreevent.h>

#include <algorithm>

QuickTime *QuickTime::s_instance = nullptr;

QuickTime::QuickTime() { s_instance = this; }

QuickTime::~QuickTime() { s_instance = nullptr; }

bool QuickTime::fireNextUntil(qint64 endMs)
{
    const auto next = std::ranges::min_element(m_timers, {}, &Timer::dueMs);
    if (next == m_timers.end() || next->dueMs > endMs) {
        m_nowMs = std::max(m_nowMs, endMs);
        return false;
    }
    m_nowMs = std::max(m_nowMs, next->dueMs + takeDelay());
    next->dueMs = dueAfter(next->info.interval);
    QTimerEvent event(next->info.timerId);
    QCoreApplication::sendEvent(next->object, &event); // which may change the list
    QCoreApplication::sendPostedEvents();
    return true;
}

void QuickTime::setDelays(const QList<qint64> &delaysMs)
{
    m_delaysMs = delaysMs;
    m_nextDelay = 0;
}

qint64 QuickTime::takeDelay()
{
    const qint64 delay = m_delaysMs.at(m_nextDelay);
    m_nextDelay = (m_nextDelay + 1) % m_delaysMs.size();
    return delay;
}

qint64 QuickTime::dueAfter(Duration interval) const
{
    return m_nowMs + std::chrono::ceil<std::chrono::milliseconds>(interval).count();
}

qint64 QuickTime::readWallClock()
{
    QuickTime &time = *s_instance;
    time.m_lastReading = time.wallClock();
    time.m_nowMs += time.m_workMs;
    if (const qint64 step = std::exchange(time.m_stepMs, 0); step != 0) {
        time.m_wallOffsetMs += step;
        time.m_hasStepped = true;
    }
    return time.m_lastReading;
}

bool QuickTime::processEvents([[maybe_unused]] QEventLoop::ProcessEventsFlags flags)
{
    QCoreApplication::sendPostedEvents();
    return true;
}

// Nothing comes from outside.
void QuickTime::registerSocketNotifier([[maybe_unused]] QSocketNotifier *notifier) { }
void QuickTime::unregisterSocketNotifier([[maybe_unused]] QSocketNotifier *notifier) { }
void QuickTime::wakeUp() { }
void QuickTime::interrupt() { }

void QuickTime::registerTimer(
    Qt::TimerId id, Duration interval, Qt::TimerType type, QObject *object)
{
    m_timers.append({{interval, id, type}, object, dueAfter(interval)});
}

bool QuickTime::unregisterTimer(Qt::TimerId id)
{
    return m_timers.removeIf([id](const Timer &timer) { return timer.info.timerId == id; }) > 0;
}

bool QuickTime::unregisterTimers(QObject *object)
{
    return m_timers.removeIf([object](const Timer &timer) { return timer.object == object; }) > 0;
}

QList<QuickTime::TimerInfoV2> QuickTime::timersForObject(QObject *object) const
{
    QList<TimerInfoV2> result;
    for (const Timer &timer : m_timers) {
        if (timer.object == object)
            result.append(timer.info);
    }
    return result;
}

QuickTime::Duration QuickTime::remainingTime(Qt::TimerId id) const
{
    const auto timer
        = std::ranges::find(m_timers, id, [](const Timer &t) { return t.info.timerId; });
    if (timer == m_timers.end())
        return Duration::min();
    return std::chrono::milliseconds(std::max<qint64>(0, timer->dueMs - m_nowMs));
}
