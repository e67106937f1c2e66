// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/desktop/xinput.h"

#include <QtCore/qlogging.h>
#include <QtTest/qtestsystem.h>

#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>
#include <xcb/xtest.h>

namespace XInput
{

namespace
{

// Nobody clicks twice in a millisecond, and a window manager that passes a press on only after it
// has looked at it may lose the second.
constexpr int paceMs = 40;

struct FreeDeleter {
    void operator()(void *reply) const { std::free(reply); } // xcb hands out memory of malloc
};
template <typename Reply> using Owned = std::unique_ptr<Reply, FreeDeleter>;

xcb_connection_t *server()
{
    static const std::unique_ptr<xcb_connection_t, decltype(&xcb_disconnect)> connection(
        xcb_connect(nullptr, nullptr), &xcb_disconnect);
    return connection.get();
}

void send(uint8_t type, uint8_t detail, QPoint point = {})
{
    xcb_test_fake_input(server(), type, detail, XCB_CURRENT_TIME, XCB_WINDOW_NONE,
        int16_t(point.x()), int16_t(point.y()), 0);
    // Input is dealt with in its turn, so it has been when this is answered.
    const Owned<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(server(), xcb_get_input_focus(server()), nullptr));
}

bool isDown(Button button)
{
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(server())).data->root;
    const Owned<xcb_query_pointer_reply_t> answer(
        xcb_query_pointer_reply(server(), xcb_query_pointer(server(), root), nullptr));
    return answer && (answer->mask & (XCB_BUTTON_MASK_1 << (button - 1)));
}

xcb_keycode_t keyCodeOf(xcb_keysym_t symbol)
{
    const xcb_setup_t *setup = xcb_get_setup(server());
    const auto count = uint8_t(setup->max_keycode - setup->min_keycode + 1);
    const Owned<xcb_get_keyboard_mapping_reply_t> map(xcb_get_keyboard_mapping_reply(
        server(), xcb_get_keyboard_mapping(server(), setup->min_keycode, count), nullptr));
    if (map) {
        const xcb_keysym_t *const symbols = xcb_get_keyboard_mapping_keysyms(map.get());
        for (int i = 0; i < count * map->keysyms_per_keycode; ++i) {
            if (symbols[i] == symbol)
                return xcb_keycode_t(setup->min_keycode + i / map->keysyms_per_keycode);
        }
    }
    qFatal("the keyboard has no such key");
}

} // namespace

void moveTo(QPoint point)
{
    constexpr uint8_t absolute = 0;
    send(XCB_MOTION_NOTIFY, absolute, point);
}

void press(Button button) { send(XCB_BUTTON_PRESS, button); }

void release(Button button)
{
    send(XCB_BUTTON_RELEASE, button);
    // Until a window manager has looked at the press, the server keeps all that follows, and would
    // give it the keys that are down by then.
    (void)QTest::qWaitFor([button] { return !isDown(button); });
}

void click(QPoint point, Button button)
{
    moveTo(point);
    press(button);
    QTest::qWait(paceMs);
    release(button);
    QTest::qWait(paceMs);
}

void turnWheel(int notches)
{
    // X has buttons for the wheel: the fourth is a notch up, the fifth one down.
    const uint8_t button = notches > 0 ? XCB_BUTTON_INDEX_4 : XCB_BUTTON_INDEX_5;
    for (int i = 0; i < qAbs(notches); ++i) {
        send(XCB_BUTTON_PRESS, button);
        send(XCB_BUTTON_RELEASE, button);
    }
}

void drag(const QList<QPoint> &points, Button button)
{
    moveTo(points.first());
    press(button);
    for (const QPoint point : points)
        moveTo(point);
    release(button);
}

void type(Key key)
{
    {
        const HeldKey held(key);
        QTest::qWait(paceMs);
    }
    QTest::qWait(paceMs);
}

void hold(Key key) { send(XCB_KEY_PRESS, keyCodeOf(key)); }

void letGo(Key key) { send(XCB_KEY_RELEASE, keyCodeOf(key)); }

HeldKey::HeldKey(Key key)
    : m_key(key)
{
    hold(m_key);
}

HeldKey::~HeldKey() { letGo(m_key); }

} // namespace XInput
