// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "manager/handangles.h"

namespace
{

constexpr double secondDegreesPerSecond = 6.0;
constexpr double minuteDegreesPerSecond = 0.1;
constexpr double hourDegreesPerHour = 30.0;
constexpr double twelveOClock = -90.0;

} // namespace

HandAngles handAngles(QTime time)
{
    const int secondsIntoHour = time.minute() * 60 + time.second();
    const double hours = time.hour() % 12 + secondsIntoHour / 3600.0;
    return {
        time.second() * secondDegreesPerSecond + twelveOClock,
        secondsIntoHour * minuteDegreesPerSecond + twelveOClock,
        hours * hourDegreesPerHour + twelveOClock,
    };
}
