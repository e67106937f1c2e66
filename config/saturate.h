// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <cmath>
#include <limits>

/// \a value truncated toward zero, bounded to what an int holds; 0 for what is no number.
/// Converting such a value with a cast is undefined, and the settings file may hold anything.
[[nodiscard]] inline int toIntSaturated(double value)
{
    using Int = std::numeric_limits<int>;
    if (std::isnan(value))
        return 0;
    if (value >= double(Int::max()))
        return Int::max();
    if (value <= double(Int::min()))
        return Int::min();
    return static_cast<int>(value);
}
