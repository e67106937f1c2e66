// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qobjectdefs.h>
#include <QtCore/qpoint.h>

/// Mouse and keyboard. Each call returns when the system has taken the input.
namespace Hands
{

Q_NAMESPACE

enum class Button { Left, Right };
enum class Key { Return, Escape, Left, Right, Up, Down, Tab, Space, M, F5, Menu, Control };
Q_ENUM_NS(Key)

/// In pixels of the screen.
void moveTo(QPoint point);
void press(Button button = Button::Left);
void release(Button button = Button::Left);
void click(QPoint point, Button button = Button::Left);
/// Positive away from the user, which is up.
void turnWheel(int notches);
/// Presses and releases a key.
void type(Key key);
void hold(Key key);
void letGo(Key key);

} // namespace Hands
