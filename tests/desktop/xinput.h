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

/// The keys that the tests need, as X names them.
enum Key {
    ReturnKey = 0xFF0D,
    EscapeKey = 0xFF1B,
    LeftKey = 0xFF51,
    RightKey = 0xFF53,
    UpKey = 0xFF52,
    DownKey = 0xFF54,
    TabKey = 0xFF09,
    SpaceKey = 0x0020,
    MKey = 0x006D,
    MenuKey = 0xFF67,
    F5Key = 0xFFC2,
    F10Key = 0xFFC7,
    ShiftKey = 0xFFE1,
    LeftControlKey = 0xFFE3,
    LeftAltKey = 0xFFE9,
    LeftSuperKey = 0xFFEB
};

/// In pixels of the screen.
void moveTo(QPoint point);
void press(Button button = LeftButton);
void release(Button button = LeftButton);
void click(QPoint point, Button button = LeftButton);
/// Positive away from the user, which is up.
void turnWheel(int notches);
/// Presses at the first point, passes the others and releases at the last one.
void drag(const QList<QPoint> &points, Button button = LeftButton);

/// Presses and releases a key.
void type(Key key);
void hold(Key key);
void letGo(Key key);

/// Holds a key down for as long as it lives.
class HeldKey
{
public:
    explicit HeldKey(Key key);
    Q_DISABLE_COPY_MOVE(HeldKey)
    ~HeldKey();

private:
    Key m_key;
};

class ControlKey : public HeldKey
{
public:
    ControlKey()
        : HeldKey(LeftControlKey)
    {
    }
};

} // namespace XInput
