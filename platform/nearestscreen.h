// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qlist.h>
#include <QtCore/qpoint.h>
#include <QtCore/qrect.h>
#include <QtCore/qsize.h>

// Position and size come apart: a stored position may lie at either end of what an int holds, where
// the far edge of a QRect would overflow.

/// True when a window of \a size at \a position has a point in common with one of \a screens.
[[nodiscard]] bool meetsAnyScreen(QPoint position, QSize size, const QList<QRect> &screens);

/// The position next to \a position that has a window of \a size fully on the nearest of \a
/// screens. What is larger than the screen keeps its top-left corner on it. Without any screen, \a
/// position.
[[nodiscard]] QPoint positionOnNearestScreen(
    QPoint position, QSize size, const QList<QRect> &screens);

/// The whole geometries of the present screens.
[[nodiscard]] QList<QRect> screenGeometries();
