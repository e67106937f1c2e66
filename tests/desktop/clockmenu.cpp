// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/desktop/clockmenu.h"

#include "tests/desktop/xinput.h"
#include "tests/desktop/xwindow.h"

#include <QtTest/qtest.h>

bool ClockMenu::open(QPoint point)
{
    constexpr int styledWidth = 180;
    return QTest::qWaitFor([point] {
        XInput::click(point, XInput::RightButton);
        if (!QTest::qWaitFor([] { return XWindow::popups().size() == 1; }, 1000))
            return false;
        if (XWindow::popups().first().geometry().width() >= styledWidth)
            return true;
        XInput::type(XInput::EscapeKey);
        return false;
    });
}

bool ClockMenu::choose(QPoint point, int item)
{
    if (!open(point))
        return false;
    for (int i = 0; i < item; ++i)
        XInput::type(XInput::DownKey);
    XInput::type(XInput::ReturnKey);
    return true;
}
