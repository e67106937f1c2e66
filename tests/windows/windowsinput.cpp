// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/windows/windowsinput.h"

#include <QtTest/qtest.h>

namespace
{

void sendMouse(DWORD flags, int wheel = 0)
{
    INPUT input = {};
    input.type = INPUT_MOUSE;
    input.mi.dwFlags = flags;
    input.mi.mouseData = DWORD(wheel);
    SendInput(1, &input, sizeof(input));
}

void sendKey(WORD virtualKey, DWORD flags)
{
    INPUT input = {};
    input.type = INPUT_KEYBOARD;
    input.ki.wVk = virtualKey;
    input.ki.dwFlags = flags;
    SendInput(1, &input, sizeof(input));
}

} // namespace

namespace WindowsInput
{

void moveTo(QPoint point)
{
    SetCursorPos(point.x(), point.y());
    sendMouse(MOUSEEVENTF_MOVE); // by nothing: the window under the pointer gets to know of it
}

void press(Button button)
{
    sendMouse(button == Button::Left ? MOUSEEVENTF_LEFTDOWN : MOUSEEVENTF_RIGHTDOWN);
}

void release(Button button)
{
    sendMouse(button == Button::Left ? MOUSEEVENTF_LEFTUP : MOUSEEVENTF_RIGHTUP);
}

void click(QPoint point, Button button)
{
    moveTo(point);
    press(button);
    release(button);
}

void drag(QPoint from, QPoint to)
{
    constexpr int handMs = 100; // Wine loses input that comes faster
    moveTo(from);
    QTest::qWait(handMs);
    press();
    for (const QPoint point : {(from + to) / 2, to}) {
        QTest::qWait(handMs);
        moveTo(point);
    }
    QTest::qWait(handMs);
    release();
}

void turnWheel(int notches) { sendMouse(MOUSEEVENTF_WHEEL, notches * WHEEL_DELTA); }

void type(WORD virtualKey)
{
    hold(virtualKey);
    letGo(virtualKey);
}

void hold(WORD virtualKey) { sendKey(virtualKey, 0); }

void letGo(WORD virtualKey) { sendKey(virtualKey, KEYEVENTF_KEYUP); }

HeldKey::HeldKey(WORD virtualKey)
    : m_virtualKey(virtualKey)
{
    hold(m_virtualKey);
}

HeldKey::~HeldKey() { letGo(m_virtualKey); }

} // namespace WindowsInput
