// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qdatetime.h>

/// Angles of the three hands in degrees, clockwise, -90 at twelve o'clock, 0 at three.
struct HandAngles {
    double second;
    double minute;
    double hour;
};

/// The angles at \a time. Its milliseconds do not count: the clock shows whole seconds.
[[nodiscard]] HandAngles handAngles(QTime time);
