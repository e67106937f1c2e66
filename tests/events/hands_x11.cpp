// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/desktop/xinput.h"
#include "tests/events/hands.h"

#include <QtTest/qtestsystem.h>

#include <cstdlib>

using namespace Qt::StringLiterals;

namespace
{

// xfwm4 looks at each press before it passes it on, and loses one that follows another at once.
void restBeforePress()
{
    constexpr int handMs = 100;
    if (qEnvironmentVariable("VESPER_WM") == u"xfwm4"_s)
        QTest::qWait(handMs);
}

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

void press(Button button)
{
    restBeforePress();
    XInput::press(buttonOf(button));
}

void release(Button button) { XInput::release(buttonOf(button)); }

void click(QPoint point, Button button)
{
    restBeforePress();
    XInput::click(point, buttonOf(button));
}

void turnWheel(int notches)
{
    for (int i = 0; i < std::abs(notches); ++i) {
        restBeforePress();
        XInput::turnWheel(notches > 0 ? 1 : -1);
    }
}

void type(Key key) { XInput::type(keyOf(key)); }

void hold(Key key) { XInput::hold(keyOf(key)); }

void letGo(Key key) { XInput::letGo(keyOf(key)); }

} // namespace Hands
