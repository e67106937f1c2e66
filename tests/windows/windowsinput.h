// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qpoint.h>
#include <QtCore/qtclasshelpermacros.h>

#include <windows.h>

/// Mouse and keyboard, as Windows would get them from the devices themselves. The programs see the
/// input after the call.
namespace WindowsInput
{

enum class Button { Left, Right };

/// In pixels of the screen.
void moveTo(QPoint point);
void press(Button button = Button::Left);
void release(Button button = Button::Left);
void click(QPoint point, Button button = Button::Left);
/// Drags with the left button, slowly enough for Wine. Processes events meanwhile.
void drag(QPoint from, QPoint to);
/// Positive away from the user, which is up.
void turnWheel(int notches);

/// Presses and releases a key, for example VK_ESCAPE.
void type(WORD virtualKey);

void hold(WORD virtualKey);
void letGo(WORD virtualKey);

/// Holds a key down as long as it lives.
class HeldKey
{
public:
    explicit HeldKey(WORD virtualKey);
    Q_DISABLE_COPY_MOVE(HeldKey)
    ~HeldKey();

private:
    WORD m_virtualKey;
};

} // namespace WindowsInput
