// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qlist.h>
#include <QtCore/qrect.h>

class QWindow;

/// True when \a rect has at least one point in common with one of \a screens.
[[nodiscard]] bool meetsAnyScreen(const QRect &rect, const QList<QRect> &screens);

/// \a rect moved by as little as brings it fully onto the nearest of \a screens. What is larger
/// than the screen keeps its top-left corner on it. Without any screen, \a rect as it is.
[[nodiscard]] QRect movedOntoNearestScreen(const QRect &rect, const QList<QRect> &screens);

/// The whole geometries of the present screens.
[[nodiscard]] QList<QRect> screenGeometries();

/// Brings \a window fully onto the nearest screen if it lies on none at all.
void rescueOffScreenWindow(QWindow *window);
