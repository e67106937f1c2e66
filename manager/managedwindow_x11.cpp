// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "manager/managedwindow_x11.h"

#include "platform/xcbreply.h"

#include <QtCore/qbytearray.h>
#include <QtCore/qdeadlinetimer.h>
#include <QtCore/qlist.h>
#include <QtCore/qthread.h>

#include <array>
#include <chrono>
#include <memory>
#include <string_view>

#include <xcb/shape.h>
#include <xcb/xcb.h>
#include <xcb/xcb_ewmh.h>

using namespace std::chrono_literals;
using Xcb::connection;
using Xcb::Owned;

namespace
{

struct HintsDeleter {
    void operator()(xcb_ewmh_connection_t *hints) const
    {
        xcb_ewmh_connection_wipe(hints);
        delete hints;
    }
};
using OwnedHints = std::unique_ptr<xcb_ewmh_connection_t, HintsDeleter>;

// The atoms of the extended window manager hints, asked for once. Null without an X server.
xcb_ewmh_connection_t *hints()
{
    static const auto atoms = []() -> OwnedHints {
        if (!connection())
            return nullptr;
        auto result = std::make_unique<xcb_ewmh_connection_t>();
        auto *cookie = xcb_ewmh_init_atoms(connection(), result.get());
        // What fails has been wiped already.
        return OwnedHints(xcb_ewmh_init_atoms_replies(result.get(), cookie, nullptr)
                ? result.release()
                : nullptr);
    }();
    return atoms.get();
}

xcb_window_t idOf(WId window) { return static_cast<xcb_window_t>(window); }

xcb_atom_t atomOf(ManagedWindow::State state)
{
    switch (state) {
    case ManagedWindow::State::Above:
        return hints()->_NET_WM_STATE_ABOVE;
    case ManagedWindow::State::SkipTaskbar:
        return hints()->_NET_WM_STATE_SKIP_TASKBAR;
    case ManagedWindow::State::SkipPager:
        return hints()->_NET_WM_STATE_SKIP_PAGER;
    case ManagedWindow::State::Sticky:
        return hints()->_NET_WM_STATE_STICKY;
    }
    return XCB_ATOM_NONE;
}

xcb_atom_t atomOf(xcb_connection_t *xcb, std::string_view name)
{
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        xcb, xcb_intern_atom(xcb, 1, static_cast<uint16_t>(name.size()), name.data()), nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

QList<xcb_atom_t> statesOf(xcb_window_t window)
{
    auto *ewmh = hints();
    xcb_ewmh_get_atoms_reply_t reply;
    if (!xcb_ewmh_get_wm_state_reply(ewmh, xcb_ewmh_get_wm_state(ewmh, window), &reply, nullptr))
        return {};
    const QList<xcb_atom_t> states(reply.atoms, reply.atoms + reply.atoms_len);
    xcb_ewmh_get_atoms_reply_wipe(&reply);
    return states;
}

xcb_atom_t wmStateAtom()
{
    static const xcb_atom_t atom = atomOf(hints()->connection, "WM_STATE");
    return atom;
}

bool isManaged(WId window)
{
    return ManagedWindow::wmState(window) != ManagedWindow::WmState::Withdrawn;
}

// EWMH, _NET_SUPPORTING_WM_CHECK: the window that the root names names itself, unless it has
// outlived its window manager.
bool hasManager()
{
    auto *ewmh = hints();
    const auto namedBy = [ewmh](xcb_window_t window) {
        xcb_window_t named = XCB_NONE;
        xcb_ewmh_get_supporting_wm_check_reply(
            ewmh, xcb_ewmh_get_supporting_wm_check(ewmh, window), &named, nullptr);
        return named;
    };
    const xcb_window_t check = namedBy(ewmh->screens[0]->root);
    return check != XCB_NONE && namedBy(check) == check;
}

void writeStates(xcb_window_t window, std::initializer_list<ManagedWindow::State> changed, bool on)
{
    QList<xcb_atom_t> states = statesOf(window);
    for (const ManagedWindow::State state : changed) {
        states.removeAll(atomOf(state));
        if (on)
            states.append(atomOf(state));
    }
    xcb_ewmh_set_wm_state(hints(), window, static_cast<uint32_t>(states.size()), states.data());
}

uint32_t currentDesktop()
{
    auto *ewmh = hints();
    uint32_t desktop = 0; // what a window manager without virtual desktops has
    xcb_ewmh_get_current_desktop_reply(
        ewmh, xcb_ewmh_get_current_desktop(ewmh, 0), &desktop, nullptr);
    return desktop;
}

// Beside the sticky state: some window managers know only one of the two.
void setDesktop(xcb_window_t window, uint32_t desktop)
{
    auto *ewmh = hints();
    if (!isManaged(window))
        xcb_ewmh_set_wm_desktop(ewmh, window, desktop);
    xcb_ewmh_request_change_wm_desktop(
        ewmh, 0, window, desktop, XCB_EWMH_CLIENT_SOURCE_TYPE_NORMAL);
    xcb_flush(ewmh->connection);
}

QByteArray classOf(xcb_connection_t *xcb, xcb_window_t window)
{
    constexpr uint32_t longest = 64; // in units of four bytes
    const auto cookie
        = xcb_get_property(xcb, 0, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 0, longest);
    const Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(xcb, cookie, nullptr));
    return reply ? QByteArray(static_cast<const char *>(xcb_get_property_value(reply.get())),
                       xcb_get_property_value_length(reply.get()))
                 : QByteArray();
}

// The topmost window above this one; none without a list of them. Another clock is no rival: two
// that raise themselves would change places for ever.
xcb_window_t rivalOf(xcb_window_t window)
{
    auto *ewmh = hints();
    xcb_ewmh_get_windows_reply_t reply;
    if (!xcb_ewmh_get_client_list_stacking_reply(
            ewmh, xcb_ewmh_get_client_list_stacking(ewmh, 0), &reply, nullptr))
        return XCB_NONE;
    QList<xcb_window_t> above(reply.windows, reply.windows + reply.windows_len);
    xcb_ewmh_get_windows_reply_wipe(&reply);
    const QByteArray ownClass = classOf(ewmh->connection, window);
    while (!above.isEmpty() && above.constLast() != window
        && classOf(ewmh->connection, above.constLast()) == ownClass)
        above.removeLast();
    return above.isEmpty() || above.constLast() == window ? xcb_window_t(XCB_NONE)
                                                          : above.constLast();
}

int typeOf(const xcb_generic_event_t &event)
{
    constexpr int sentByAClient = 0x80;
    return event.response_type & ~sentByAClient;
}

} // namespace

// A window manager reads the property when it takes a window into its care, and only messages after
// that. Both are sent in the time between the map request and the manager's answer, which cannot be
// seen from here; a message about a window that is not in its care does nothing.
void ManagedWindow::setStates(WId window, std::initializer_list<State> states, bool on)
{
    auto *ewmh = hints();
    if (!ewmh)
        return;
    if (!isManaged(window))
        writeStates(idOf(window), states, on);
    const auto action = on ? XCB_EWMH_WM_STATE_ADD : XCB_EWMH_WM_STATE_REMOVE;
    for (const State state : states)
        xcb_ewmh_request_change_wm_state(ewmh, 0, idOf(window), action, atomOf(state),
            XCB_ATOM_NONE, XCB_EWMH_CLIENT_SOURCE_TYPE_NORMAL);
    xcb_flush(ewmh->connection);
}

bool ManagedWindow::hasState(WId window, State state)
{
    return hints() && statesOf(idOf(window)).contains(atomOf(state));
}

void ManagedWindow::showOnAllDesktops(WId window)
{
    constexpr uint32_t allDesktops = 0xFFFFFFFF; // EWMH, _NET_WM_DESKTOP
    if (hints())
        setDesktop(idOf(window), allDesktops);
}

void ManagedWindow::showOnCurrentDesktop(WId window)
{
    if (hints())
        setDesktop(idOf(window), currentDesktop());
}

// The state alone says nothing about two windows that both have it. A request without a sibling is
// one for the focus, too, to some window managers. The sibling is none to the X server, which knows
// the frames around both, so the request goes to the window manager (ICCCM 4.1.5).
void ManagedWindow::raise(WId window)
{
    auto *ewmh = hints();
    const xcb_window_t rival = ewmh ? rivalOf(idOf(window)) : xcb_window_t(XCB_NONE);
    if (rival == XCB_NONE)
        return;
    const xcb_window_t root = ewmh->screens[0]->root;
    xcb_configure_request_event_t event{};
    event.response_type = XCB_CONFIGURE_REQUEST;
    event.stack_mode = XCB_STACK_MODE_ABOVE;
    event.parent = root;
    event.window = idOf(window);
    event.sibling = rival;
    event.value_mask = XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE;
    xcb_send_event(ewmh->connection, 0, root,
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
        reinterpret_cast<char *>(&event));
    xcb_flush(ewmh->connection);
}

void ManagedWindow::setFrameless(WId window)
{
    auto *xcb = connection();
    if (!xcb)
        return;
    static const xcb_atom_t frame = atomOf(xcb, "_MOTIF_WM_HINTS");
    constexpr uint32_t decorationsCount = 2; // in the first field; the third one has them: none
    constexpr std::array<uint32_t, 5> values{decorationsCount, 0, 0, 0, 0};
    if (frame != XCB_ATOM_NONE) {
        xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, idOf(window), frame, frame, 32,
            static_cast<uint32_t>(values.size()), values.data());
    }
    xcb_flush(xcb);
}

// Qt notes in the hints that it has minimised a window itself, and leaves it there: the next show
// would be of an icon.
void ManagedWindow::startShown(WId window)
{
    auto *xcb = connection();
    if (!xcb)
        return;
    constexpr uint32_t fields = 9; // ICCCM 4.1.2.4: flags, input, initial state and others
    const auto cookie
        = xcb_get_property(xcb, 0, idOf(window), XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, 0, fields);
    const Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(xcb, cookie, nullptr));
    if (!reply || xcb_get_property_value_length(reply.get()) != int(fields * sizeof(uint32_t)))
        return;
    constexpr uint32_t hasInitialState = 2;
    constexpr uint32_t normal = 1;
    auto *values = static_cast<uint32_t *>(xcb_get_property_value(reply.get()));
    values[0] |= hasInitialState;
    values[2] = normal;
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, idOf(window), XCB_ATOM_WM_HINTS,
        XCB_ATOM_WM_HINTS, 32, fields, values);
}

void ManagedWindow::letMouseThrough(WId window, bool on)
{
    auto *xcb = connection();
    if (!xcb)
        return;
    if (on) {
        xcb_shape_rectangles(xcb, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
            idOf(window), 0, 0, 0, nullptr);
    } else {
        // No rectangle: that would keep its size when the window grows.
        xcb_shape_mask(
            xcb, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, idOf(window), 0, 0, XCB_PIXMAP_NONE);
    }
    xcb_flush(xcb);
}

ManagedWindow::WmState ManagedWindow::wmState(WId window)
{
    if (!hints())
        return WmState::Withdrawn;
    auto *xcb = hints()->connection;
    const auto cookie
        = xcb_get_property(xcb, 0, idOf(window), wmStateAtom(), XCB_GET_PROPERTY_TYPE_ANY, 0, 1);
    const Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(xcb, cookie, nullptr));
    if (!reply || xcb_get_property_value_length(reply.get()) < int(sizeof(uint32_t)))
        return WmState::Withdrawn;
    return WmState(*static_cast<const uint32_t *>(xcb_get_property_value(reply.get())));
}

void ManagedWindow::awaitManaged(WId window, bool managed)
{
    const auto isDone = [=] { return isManaged(window) == managed; };
    if (!hints() || isDone() || !hasManager())
        return;
    const QDeadlineTimer limit(1s);
    while (!isDone() && !limit.hasExpired())
        QThread::sleep(1ms);
}

// EWMH, _NET_SUPPORTING_WM_CHECK.
bool ManagedWindow::isNewManager(const void *event)
{
    if (typeOf(*static_cast<const xcb_generic_event_t *>(event)) != XCB_PROPERTY_NOTIFY || !hints())
        return false;
    const auto *change = static_cast<const xcb_property_notify_event_t *>(event);
    return change->window == hints()->screens[0]->root
        && change->atom == hints()->_NET_SUPPORTING_WM_CHECK
        && change->state == XCB_PROPERTY_NEW_VALUE;
}

bool ManagedWindow::isWmStateChange(const void *event, WId window)
{
    if (typeOf(*static_cast<const xcb_generic_event_t *>(event)) != XCB_PROPERTY_NOTIFY || !hints())
        return false;
    const auto *change = static_cast<const xcb_property_notify_event_t *>(event);
    return change->window == idOf(window) && change->atom == wmStateAtom();
}

bool ManagedWindow::isUnmapOf(const void *event, WId window)
{
    return typeOf(*static_cast<const xcb_generic_event_t *>(event)) == XCB_UNMAP_NOTIFY
        && static_cast<const xcb_unmap_notify_event_t *>(event)->window == idOf(window);
}
