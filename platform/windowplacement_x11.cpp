// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// X11, where every request is one to the window manager and is answered some time later.

#include "platform/windowplacement.h"

#include <QtGui/qguiapplication.h>
#include <QtGui/qscreen.h>

#include <algorithm>
#include <array>
#include <memory>

#include <xcb/xcb.h>

namespace
{

struct FreeDeleter {
    void operator()(void *reply) const { free(reply); } // xcb hands replies out from malloc
};
template <typename Reply> using Owned = std::unique_ptr<Reply, FreeDeleter>;

constexpr uint8_t sentByAClient = 0x80;

// Null where the windows are not an X server's: under Wayland, offscreen.
xcb_connection_t *connection()
{
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

xcb_window_t idOf(const QWindow &window) { return static_cast<xcb_window_t>(window.winId()); }

// Qt keeps the corner of each screen and scales the distance from it.
QRect nativeGeometry(const QWindow &window, const QRect &geometry)
{
    const QScreen *screen = QGuiApplication::screenAt(geometry.center());
    if (!screen)
        screen = window.screen();
    const QPoint origin = screen ? screen->geometry().topLeft() : QPoint();
    const double ratio = window.devicePixelRatio();
    return {(geometry.topLeft() - origin) * ratio + origin, geometry.size() * ratio};
}

// In pixels of the server; null for a window that is gone.
QRect serverGeometry(xcb_connection_t *xcb, xcb_window_t window)
{
    const Owned<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(xcb, xcb_get_geometry(xcb, window), nullptr));
    if (!size)
        return {};
    const auto cookie = xcb_translate_coordinates(xcb, window, size->root, 0, 0);
    const Owned<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(xcb, cookie, nullptr));
    return place ? QRect(place->dst_x, place->dst_y, size->width, size->height) : QRect();
}

void writeGeometry(xcb_configure_notify_event_t &event, const QRect &geometry)
{
    event.response_type |= sentByAClient; // such an event has the place on the screen
    event.x = static_cast<int16_t>(geometry.x());
    event.y = static_cast<int16_t>(geometry.y());
    event.width = static_cast<uint16_t>(geometry.width());
    event.height = static_cast<uint16_t>(geometry.height());
}

} // namespace

// The server reports every step on the way to what was asked for, and each would take Qt back to
// where the window has been. Qt still has to get each event, since it draws only what it was told.
void WindowPlacement::interpretNativeEvent(void *message)
{
    auto *event = static_cast<xcb_configure_notify_event_t *>(message);
    if ((event->response_type & ~sentByAClient) != XCB_CONFIGURE_NOTIFY || !m_window
        || !m_window->handle() || event->window != idOf(*m_window))
        return;
    noteChange();
    lookIfInPlace();
    if (m_isAnswerDue)
        writeGeometry(*event, nativeGeometry(*m_window, m_asked));
    else
        hearNextChange();
}

void WindowPlacement::setOnDisplay(bool on)
{
    if (!on && !m_hiddenLock) // replacing it would release the first one
        m_hiddenLock.emplace();
    m_window->setVisible(on);
}

bool WindowPlacement::isOnDisplay() const { return m_window->isVisible(); }

bool WindowPlacement::isAt(const QRect &geometry) const
{
    auto *xcb = connection();
    if (!xcb)
        return m_window->geometry() == geometry;
    const auto cookie = xcb_get_window_attributes(xcb, idOf(*m_window));
    const Owned<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(xcb, cookie, nullptr));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE
        && serverGeometry(xcb, idOf(*m_window)) == nativeGeometry(*m_window, geometry);
}

void WindowPlacement::request(const QRect &geometry)
{
    auto *xcb = connection();
    if (!xcb || m_window->geometry() != geometry) {
        m_window->setGeometry(geometry);
        return;
    }
    // Qt believes that it is there and would not ask again.
    const QRect native = nativeGeometry(*m_window, geometry);
    const std::array<uint32_t, 4> values{uint32_t(native.x()), uint32_t(native.y()),
        uint32_t(native.width()), uint32_t(native.height())};
    xcb_configure_window(xcb, idOf(*m_window),
        XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH
            | XCB_CONFIG_WINDOW_HEIGHT,
        values.data());
    xcb_flush(xcb);
}

// What has been settled for in the end may never be reported again.
void WindowPlacement::reportPlace()
{
    auto *xcb = connection();
    if (!xcb || isAt(m_asked))
        return;
    const QRect native = serverGeometry(xcb, idOf(*m_window));
    if (native.isNull())
        return;
    xcb_configure_notify_event_t event{};
    event.response_type = XCB_CONFIGURE_NOTIFY;
    event.event = idOf(*m_window);
    event.window = event.event;
    writeGeometry(event, native);
    xcb_send_event(xcb, 0, event.window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<char *>(&event));
    xcb_flush(xcb);
}

// Qt knows nothing of input that the window manager has grabbed.
bool WindowPlacement::isUserHoldingButton()
{
    auto *xcb = connection();
    if (!xcb)
        return false;
    const xcb_window_t root = xcb_setup_roots_iterator(xcb_get_setup(xcb)).data->root;
    const Owned<xcb_query_pointer_reply_t> pointer(
        xcb_query_pointer_reply(xcb, xcb_query_pointer(xcb, root), nullptr));
    constexpr uint16_t anyButton = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;
    return pointer && (pointer->mask & anyButton) != 0;
}

bool WindowPlacement::isUserHoldingKey()
{
    auto *xcb = connection();
    if (!xcb)
        return false;
    const Owned<xcb_query_keymap_reply_t> keys(
        xcb_query_keymap_reply(xcb, xcb_query_keymap(xcb), nullptr));
    return keys && std::ranges::any_of(keys->keys, [](uint8_t eight) { return eight != 0; });
}
