// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The tick, the hand angles and the clock texts.

#include "manager/vsmanager.h"

#include "config/vsconfig.h"
#include "manager/clocktexts.h"
#include "manager/handangles.h"
#include "manager/ticktime.h"

#include <QtCore/qscopedvaluerollback.h>

namespace
{

QString &languageName()
{
    static QString name;
    return name;
}

// Assigns and tells whether that changed anything.
bool assign(double &member, double value)
{
    if (qFuzzyCompare(member, value))
        return false;
    member = value;
    return true;
}

bool assign(QString &member, const QString &value)
{
    if (member == value)
        return false;
    member = value;
    return true;
}

} // namespace

void VsManager::setLanguageName(const QString &name) { languageName() = name; }

void VsManager::start()
{
    m_ticking = true;
    mainLoop();
}

void VsManager::setSessionLocked(bool locked)
{
    if (!locked) {
        start();
        return;
    }
    m_ticking = false;
    m_tickTimer.stop();
}

void VsManager::mainLoop()
{
    if (m_inMainLoop)
        return;
    const QScopedValueRollback guard(m_inMainLoop, true);
    m_tickTimer.stop();
    if (!m_ticking)
        return;
    const qint64 second = startOfSecond(m_wallClock());
    if (const auto tick = QDateTime::fromMSecsSinceEpoch(second); tick != m_lastTick) {
        m_lastTick = tick;
        publish(tick);
    }
    m_tickTimer.start(msToNextSecond(second, m_wallClock()));
}

void VsManager::publish(const QDateTime &tick)
{
    const HandAngles angles = handAngles(tick.time());
    m_secondHandAngle = angles.second;
    m_minuteHandAngle = angles.minute;
    m_hourHandAngle = angles.hour;
    m_timeText = makeTimeText(tick.time());
    Q_EMIT secondHandAngleChanged(m_secondHandAngle);
    Q_EMIT minuteHandAngleChanged(m_minuteHandAngle);
    Q_EMIT hourHandAngleChanged(m_hourHandAngle);
    Q_EMIT timeTextChanged(m_timeText);
    setDateText(makeDateText(tick.date()));
}

QDateTime VsManager::now() const { return QDateTime::fromMSecsSinceEpoch(m_wallClock()); }

QString VsManager::makeTimeText(QTime time)
{
    if (m_config->tweleveHours())
        setAmPmText(amPmMarker(time));
    return clockTimeText(time, m_config->tweleveHours());
}

QString VsManager::makeDateText(QDate date) const
{
    return clockDateText(date, languageName(), m_config->useEra());
}

void VsManager::updateTimeTextImmediately()
{
    m_timeText = makeTimeText(now().time());
    Q_EMIT timeTextChanged(m_timeText);
}

void VsManager::updateDateTextImmediately()
{
    m_dateText = makeDateText(now().date());
    Q_EMIT dateTextChanged(m_dateText);
}

void VsManager::setSecondHandAngle(double angle)
{
    if (assign(m_secondHandAngle, angle))
        Q_EMIT secondHandAngleChanged(m_secondHandAngle);
}

void VsManager::setMinuteHandAngle(double angle)
{
    if (assign(m_minuteHandAngle, angle))
        Q_EMIT minuteHandAngleChanged(m_minuteHandAngle);
}

void VsManager::setHourHandAngle(double angle)
{
    if (assign(m_hourHandAngle, angle))
        Q_EMIT hourHandAngleChanged(m_hourHandAngle);
}

void VsManager::setTimeText(const QString &timeText)
{
    if (assign(m_timeText, timeText))
        Q_EMIT timeTextChanged(m_timeText);
}

void VsManager::setDateText(const QString &dateText)
{
    if (assign(m_dateText, dateText))
        Q_EMIT dateTextChanged(m_dateText);
}

void VsManager::setAmPmText(const QString &amPmText)
{
    if (assign(m_amPmText, amPmText))
        Q_EMIT amPmTextChanged(m_amPmText);
}
