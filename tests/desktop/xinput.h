// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qlist.h>
#include <QtCore/qpoint.h>
#include <QtCore/qtclasshelpermacros.h>

/// Mouse and keyboard, as the X server would get them from the devices themselves. Each call
/// returns when the server has taken the input; the programs see it later.
namespace XInput
{

enum Button { LeftButton = 1, RightButton = 3 };

/// In pixels of the screen.
void moveTo(QPoint point);
void press(Button button = LeftButton);
void release(Button button = LeftButton);
void click(QPoint point, Button button = LeftButton);
/// Positive away from the user, which is up.
void turnWheel(int notches);
/// Presses at the first point, passes the others and releases at the last one.
void drag(const QList<QPoint> &points, Button button = LeftButton);

/// Holds the Control key down.
class ControlKey
{
public:
    ControlKey();
    Q_DISABLE_COPY_MOVE(ControlKey)
    ~ControlKey();
};

} // namespace XInput
