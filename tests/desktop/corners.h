// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qpoint.h>
#include <QtCore/qrect.h>

/// A corner of the clock that changes its size when it is dragged.
struct Corner {
    const char *name;
    int growX; // +1 where a move to the right makes the clock larger
    int growY;

    /// So many pixels from the corner of \a place, inward in both directions.
    QPoint inside(QRect place, int distance) const
    {
        return {growX > 0 ? place.right() - distance : place.left() + distance,
            growY > 0 ? place.bottom() - distance : place.top() + distance};
    }
    /// What \a place becomes when only this corner moves.
    QRect grown(QRect place, int growth) const
    {
        return place.adjusted(growX < 0 ? -growth : 0, growY < 0 ? -growth : 0,
            growX > 0 ? growth : 0, growY > 0 ? growth : 0);
    }
    /// A move by so much in both directions, positive where the clock becomes larger.
    QPoint outward(int x, int y) const { return {x * growX, y * growY}; }
};
inline constexpr Corner corners[] = {
    {"top left", -1, -1},
    {"top right", 1, -1},
    {"bottom right", 1, 1},
    {"bottom left", -1, 1},
};
