// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qpoint.h>
#include <QtCore/qrect.h>

#include <random>

/// Chance that can be repeated: the same seed gives the same numbers on every system, which the
/// distributions of the standard library do not promise.
class Dice
{
public:
    explicit Dice(uint seed)
        : m_engine(seed)
    {
    }

    /// One of 0 ... \a count - 1. The last few of them are rarer by less than a millionth.
    int below(int count) { return int(m_engine() % uint(count)); }
    /// One of \a least ... \a most.
    int between(int least, int most) { return least + below(most - least + 1); }
    bool oneIn(int count) { return below(count) == 0; }
    QPoint anyPointOf(QRect rectangle)
    {
        const int x = between(rectangle.left(), rectangle.right());
        return {x, between(rectangle.top(), rectangle.bottom())};
    }

private:
    std::mt19937 m_engine;
};
