// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qabstracteventdispatcher.h>
#include <QtCore/qlist.h>

#include <utility>

/// An event dispatcher whose time does not pass by itself: a timer is due as soon as somebody asks
/// for it. There is a clock that goes with that time and can be set. All times are in ms.
class QuickTime : public QAbstractEventDispatcherV2
{
    Q_OBJECT

public:
    QuickTime();
    ~QuickTime() override;

    /// Lets the time go on to the next timer that is due until \a endMs and fires it. False, and
    /// it is \a endMs or later, when there is none.
    bool fireNextUntil(qint64 endMs);
    [[nodiscard]] qint64 nowMs() const { return m_nowMs; }

    /// How much later than it is due each timer fires, one after the other and then from the start.
    void setDelays(const QList<qint64> &delaysMs);
    /// How long it takes to read the clock and to do what follows.
    void setWork(qint64 workMs) { m_workMs = workMs; }

    void setWallClock(qint64 ms) { m_wallOffsetMs = ms - m_nowMs; }
    [[nodiscard]] qint64 wallClock() const { return m_nowMs + m_wallOffsetMs; }
    /// Sets the clock by that much as soon as it has been read once more.
    void setWallClockAfterReading(qint64 stepMs) { m_stepMs = stepMs; }
    /// True once after that has happened.
    bool takeStepped() { return std::exchange(m_hasStepped, false); }
    /// Reads the clock of the one dispatcher that there is.
    static qint64 readWallClock();
    /// What was read last.
    [[nodiscard]] qint64 lastReading() const { return m_lastReading; }

    bool processEvents(QEventLoop::ProcessEventsFlags flags) override;
    void registerSocketNotifier(QSocketNotifier *notifier) override;
    void unregisterSocketNotifier(QSocketNotifier *notifier) override;
    void registerTimer(
        Qt::TimerId id, Duration interval, Qt::TimerType type, QObject *object) override;
    bool unregisterTimer(Qt::TimerId id) override;
    bool unregisterTimers(QObject *object) override;
    QList<TimerInfoV2> timersForObject(QObject *object) const override;
    Duration remainingTime(Qt::TimerId id) const override;
    void wakeUp() override;
    void interrupt() override;

private:
    struct Timer {
        TimerInfoV2 info;
        QObject *object;
        qint64 dueMs;
    };

    qint64 takeDelay();
    qint64 dueAfter(Duration interval) const;

    static QuickTime *s_instance;
    qint64 m_nowMs = 0;
    qint64 m_wallOffsetMs = 0;
    qint64 m_workMs = 0;
    qint64 m_lastReading = 0;
    qint64 m_stepMs = 0;
    bool m_hasStepped = false;
    QList<Timer> m_timers;
    QList<qint64> m_delaysMs{0};
    qsizetype m_nextDelay = 0;
};
