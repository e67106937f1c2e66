// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/desktop/xinput.h"
#include "tests/events/hands.h"

namespace
{

XInput::Button buttonOf(Hands::Button button)
{
    return button == Hands::Button::Left ? XInput::LeftButton : XInput::RightButton;
}

XInput::Key keyOf(Hands::Key key)
{
    switch (key) {
    case Hands::Key::Return:
        return XInput::ReturnKey;
    case Hands::Key::Escape:
        return XInput::EscapeKey;
    case Hands::Key::Left:
        return XInput::LeftKey;
    case Hands::Key::Right:
        return XInput::RightKey;
    case Hands::Key::Up:
        return XInput::UpKey;
    case Hands::Key::Down:
        return XInput::DownKey;
    case Hands::Key::Tab:
        return XInput::TabKey;
    case Hands::Key::Space:
        return XInput::SpaceKey;
    case Hands::Key::M:
        return XInput::MKey;
    case Hands::Key::F5:
        return XInput::F5Key;
    case Hands::Key::Menu:
        return XInput::MenuKey;
    case Hands::Key::Control:
        return XInput::LeftControlKey;
    }
    Q_UNREACHABLE_RETURN(XInput::EscapeKey);
}

} // namespace

namespace Hands
{

void moveTo(QPoint point) { XInput::moveTo(point); }

void press(Button button) { XInput::press(buttonOf(button)); }

void release(Button button) { XInput::release(buttonOf(button)); }

void click(QPoint point, Button button) { XInput::click(point, buttonOf(button)); }

void turnWheel(int notches) { XInput::turnWheel(notches); }

void type(Key key) { XInput::type(keyOf(key)); }

void hold(Key key) { XInput::hold(keyOf(key)); }

void letGo(Key key) { XInput::letGo(keyOf(key)); }

} // namespace Hands
