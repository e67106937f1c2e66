// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qpoint.h>

/// The clock's context menu, driven as a person drives it.
namespace ClockMenu
{

/// The items in the order of the arrow key, which leaves out what is hidden and what separates.
enum Item { Resize = 1, Fixed, Topmost, ShowOnTaskbar, MoveTo, Settings, About, Quit };

/// Opens the menu at \a point of the clock, and waits until it has its style, which comes a moment
/// after the start. False if it does not come.
[[nodiscard]] bool open(QPoint point);
/// Opens the menu and chooses an item with the arrow key.
[[nodiscard]] bool choose(QPoint point, int item);

} // namespace ClockMenu
