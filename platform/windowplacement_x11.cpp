// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// X11, where every request is one to the window manager and is answered some time later.

#include "platform/windowplacement.h"

#include "platform/xcbreply.h"

#include <QtGui/qguiapplication.h>
#include <QtGui/qscreen.h>

#include <algorithm>
#include <array>

#include <xcb/xcb.h>

namespace
{

constexpr uint8_t sentByAClient = 0x80;

xcb_window_t idOf(const QWindow &window) { return static_cast<xcb_window_t>(window.winId()); }

// Qt keeps the corner of each screen and scales the distance from it.
QRect nativeGeometry(const QWindow &window, const QRect &geometry)
{
    const QScreen *screen = QGuiApplication::screenAt(geometry.center());
    if (!screen)
        screen = window.screen();
    const QPoint origin = screen ? screen->geometry().topLeft() : QPoint();
    const double ratio = screen ? screen->devicePixelRatio() : window.devicePixelRatio();
    return {(geometry.topLeft() - origin) * ratio + origin, geometry.size() * ratio};
}

// In pixels of the server; null for a window that is gone.
QRect serverGeometry(xcb_connection_t *xcb, xcb_window_t window)
{
    const Xcb::Owned<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(xcb, xcb_get_geometry(xcb, window), nullptr));
    if (!size)
        return {};
    const auto cookie = xcb_translate_coordinates(xcb, window, size->root, 0, 0);
    const Xcb::Owned<xcb_translate_coordinates_reply_t> place(
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
    endCorrectionIfInPlace();
    if (m_isAnswerDue)
        writeGeometry(*event, nativeGeometry(*m_window, m_asked));
    else
        expectSystemChange();
}

void WindowPlacement::showWindow(bool on)
{
    if (!on && !m_hiddenLock) // replacing it would release the first one
        m_hiddenLock.emplace();
    m_window->setVisible(on);
}

bool WindowPlacement::isShown() const { return m_window->isVisible(); }

bool WindowPlacement::isAt(const QRect &geometry) const
{
    auto *xcb = Xcb::connection();
    if (!xcb)
        return m_window->geometry() == geometry;
    const auto cookie = xcb_get_window_attributes(xcb, idOf(*m_window));
    const Xcb::Owned<xcb_get_window_attributes_reply_t> attributes(
        xcb_get_window_attributes_reply(xcb, cookie, nullptr));
    return attributes && attributes->map_state == XCB_MAP_STATE_VIEWABLE
        && serverGeometry(xcb, idOf(*m_window)) == nativeGeometry(*m_window, geometry);
}

void WindowPlacement::request(const QRect &geometry)
{
    auto *xcb = Xcb::connection();
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
    auto *xcb = Xcb::connection();
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
    m_isReporting = true;
    xcb_send_event(xcb, 0, event.window, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<char *>(&event));
    xcb_flush(xcb);
}

// Qt knows nothing of input that the window manager has grabbed.
bool WindowPlacement::isHeldByButton() const
{
    auto *xcb = Xcb::connection();
    if (!xcb || !m_window->handle())
        return false;
    const xcb_window_t window = idOf(*m_window);
    const Xcb::Owned<xcb_query_pointer_reply_t> pointer(
        xcb_query_pointer_reply(xcb, xcb_query_pointer(xcb, window), nullptr));
    constexpr uint16_t anyButton = XCB_BUTTON_MASK_1 | XCB_BUTTON_MASK_2 | XCB_BUTTON_MASK_3;
    return pointer && (pointer->mask & anyButton) != 0
        && serverGeometry(xcb, window).contains(pointer->root_x, pointer->root_y);
}

bool WindowPlacement::isAnyKeyHeld()
{
    auto *xcb = Xcb::connection();
    if (!xcb)
        return false;
    const Xcb::Owned<xcb_query_keymap_reply_t> keys(
        xcb_query_keymap_reply(xcb, xcb_query_keymap(xcb), nullptr));
    return keys && std::ranges::any_of(keys->keys, [](uint8_t eight) { return eight != 0; });
}
