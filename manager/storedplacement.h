// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include "config/saturate.h"
#include "config/vsconfig.h"
#include "manager/clockside.h"

#include <QtCore/qpoint.h>

#include <optional>

/// Place and side of a square clock.
struct ClockPlacement {
    QPoint position; ///< may lie at either end of what an int holds
    int side = 0; ///< from minimumClockSide to maximumClockSide
};

/// Where \a config has the clock. None without a size that a clock can have: nothing is stored
/// before the first save, and the file may hold anything.
[[nodiscard]] inline std::optional<ClockPlacement> storedPlacement(const VsConfig &config)
{
    const auto isUsable
        = [](double side) { return side >= minimumClockSide && side <= maximumClockSide; };
    if (!isUsable(config.width()) || !isUsable(config.height()))
        return std::nullopt;
    return ClockPlacement{
        .position = {toIntSaturated(config.left()), toIntSaturated(config.top())},
        .side = toIntSaturated(config.width()), // the width wins: the clock is square
    };
}
