// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/events/hands.h"
#include "tests/windows/windowsinput.h"

#include <QtTest/qtest.h>

#include <optional>

namespace
{

constexpr int answerMs = 1000;

WindowsInput::Button buttonOf(Hands::Button button)
{
    return button == Hands::Button::Left ? WindowsInput::Button::Left : WindowsInput::Button::Right;
}

WORD keyOf(Hands::Key key)
{
    switch (key) {
    case Hands::Key::Return:
        return VK_RETURN;
    case Hands::Key::Escape:
        return VK_ESCAPE;
    case Hands::Key::Left:
        return VK_LEFT;
    case Hands::Key::Right:
        return VK_RIGHT;
    case Hands::Key::Up:
        return VK_UP;
    case Hands::Key::Down:
        return VK_DOWN;
    case Hands::Key::Tab:
        return VK_TAB;
    case Hands::Key::Space:
        return VK_SPACE;
    case Hands::Key::M:
        return 'M';
    case Hands::Key::F5:
        return VK_F5;
    case Hands::Key::Menu:
        return VK_APPS;
    case Hands::Key::Control:
        return VK_CONTROL;
    }
    Q_UNREACHABLE_RETURN(VK_ESCAPE);
}

GUITHREADINFO threadOf(HWND window)
{
    GUITHREADINFO info = {};
    info.cbSize = sizeof(info);
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
    return info;
}

QPoint pointer()
{
    POINT point = {};
    GetCursorPos(&point);
    return {point.x, point.y};
}

HWND windowUnderPointer() { return WindowFromPoint({pointer().x(), pointer().y()}); }

// Faster, presses and turns of the wheel get lost: it seems that Wine remembers for 50 ms which
// buttons and keys are down, for a program that asks.
void waitAsAHand() { QTest::qWait(60); }

// As Windows does with a window that is pressed. Wine does it only when the program does not take
// the window for active; when a dialog closes, the keyboard may go to Wine's own tray, and the
// program never gets to know. A drag would end where the pointer leaves the clock.
void makeForeground(HWND window)
{
    const auto bringForward = [window] {
        SetForegroundWindow(window);
        return GetForegroundWindow() == window;
    };
    if (threadOf(window).hwndActive == window && !QTest::qWaitFor(bringForward, answerMs))
        qInfo("Wine keeps the keyboard.");
}

bool isOfAProgram(HWND window) { return window != GetDesktopWindow(); }

} // namespace

namespace Hands
{

namespace
{

std::optional<Key> heldKey;
bool isButtonDown = false;

// As a key that is held does. Wine seems to take it for released whenever a window comes to the
// pointer, because the X server has never seen it pressed.
void repeatHeldKey()
{
    if (heldKey)
        WindowsInput::hold(keyOf(*heldKey));
}

} // namespace

void moveTo(QPoint point)
{
    repeatHeldKey();
    WindowsInput::moveTo(point);
    // A window that belongs on the taskbar hears from the X server where it was, and Wine moves it
    // back there when that comes after the next move.
    if (isButtonDown)
        waitAsAHand();
}

// Wine gives input to a window when it is sent: what follows a press reaches the window that has
// been pressed only once that has taken the mouse. Not every window does.
void press(Button button)
{
    const HWND window = windowUnderPointer();
    const auto isTaken = [window] { return threadOf(window).hwndCapture != nullptr; };
    waitAsAHand();
    makeForeground(window);
    repeatHeldKey();
    WindowsInput::press(buttonOf(button));
    isButtonDown = true;
    if (isOfAProgram(window) && !QTest::qWaitFor(isTaken, answerMs))
        qInfo("A press has no effect.");
}

void release(Button button)
{
    WindowsInput::release(buttonOf(button));
    isButtonDown = false;
    waitAsAHand();
}

void click(QPoint point, Button button)
{
    moveTo(point);
    press(button);
    release(button);
}

void turnWheel(int notches)
{
    repeatHeldKey();
    WindowsInput::turnWheel(notches);
    waitAsAHand();
}

void type(Key key) { WindowsInput::type(keyOf(key)); }

// Windows gives the wheel to the window under the pointer, Wine to the active one, which alone gets
// to know of the key, too. Now and then Wine does not heed the wish, but a click always works.
void hold(Key key)
{
    const HWND window = windowUnderPointer();
    const auto hasFocus = [window] {
        SetForegroundWindow(window);
        return GetForegroundWindow() == window && threadOf(window).hwndFocus == window;
    };
    if (isOfAProgram(window) && !QTest::qWaitFor(hasFocus, answerMs))
        click(pointer());
    heldKey = key;
    repeatHeldKey();
    waitAsAHand();
}

void letGo(Key key)
{
    heldKey.reset();
    WindowsInput::letGo(keyOf(key));
}

} // namespace Hands
