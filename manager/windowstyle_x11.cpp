// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "manager/windowstyle.h"

#include <QtCore/qabstractnativeeventfilter.h>
#include <QtCore/qdeadlinetimer.h>
#include <QtCore/qlist.h>
#include <QtCore/qpointer.h>
#include <QtCore/qtimer.h>
#include <QtGui/qevent.h>
#include <QtGui/qguiapplication.h>

#include <array>
#include <chrono>
#include <memory>
#include <optional>
#include <string_view>

#include <xcb/shape.h>
#include <xcb/xcb.h>
#include <xcb/xcb_ewmh.h>

using namespace std::chrono_literals;

namespace WindowStyle
{

namespace
{

struct FreeDeleter {
    void operator()(void *reply) const { free(reply); } // xcb hands replies out from malloc
};
template <typename Reply> using Owned = std::unique_ptr<Reply, FreeDeleter>;

// Null where the windows are not an X server's: under Wayland, offscreen.
xcb_connection_t *connection()
{
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

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

QList<xcb_atom_t> stateOf(xcb_ewmh_connection_t *ewmh, xcb_window_t window)
{
    xcb_ewmh_get_atoms_reply_t reply;
    if (!xcb_ewmh_get_wm_state_reply(ewmh, xcb_ewmh_get_wm_state(ewmh, window), &reply, nullptr))
        return {};
    const QList<xcb_atom_t> state(reply.atoms, reply.atoms + reply.atoms_len);
    xcb_ewmh_get_atoms_reply_wipe(&reply);
    return state;
}

xcb_atom_t atomOf(xcb_connection_t *xcb, std::string_view name)
{
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        xcb, xcb_intern_atom(xcb, 1, static_cast<uint16_t>(name.size()), name.data()), nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

// Whether a window manager has the window in its care: from the map request until it is withdrawn,
// and so while it is minimised as well.
bool isManaged(xcb_connection_t *xcb, xcb_window_t window)
{
    static const xcb_atom_t wmState = atomOf(xcb, "WM_STATE");
    const auto cookie = xcb_get_property(xcb, 0, window, wmState, XCB_GET_PROPERTY_TYPE_ANY, 0, 1);
    const Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(xcb, cookie, nullptr));
    if (!reply || xcb_get_property_value_length(reply.get()) < int(sizeof(uint32_t)))
        return false;
    constexpr uint32_t withdrawn = 0; // ICCCM 4.1.3.1
    return *static_cast<const uint32_t *>(xcb_get_property_value(reply.get())) != withdrawn;
}

void writeState(xcb_ewmh_connection_t *ewmh, xcb_window_t window,
    std::initializer_list<xcb_atom_t> atoms, bool on)
{
    QList<xcb_atom_t> state = stateOf(ewmh, window);
    for (const xcb_atom_t atom : atoms) {
        state.removeAll(atom);
        if (on)
            state.append(atom);
    }
    xcb_ewmh_set_wm_state(ewmh, window, static_cast<uint32_t>(state.size()), state.data());
}

// A window manager reads the property when it takes a window into its care, and only messages after
// that. Both are sent in the time between the map request and the manager's answer, which cannot be
// seen from here; a message about a window that is not in its care does nothing.
void setState(WId window, std::initializer_list<xcb_atom_t> atoms, bool on)
{
    auto *ewmh = hints();
    const auto xWindow = static_cast<xcb_window_t>(window);
    if (!isManaged(ewmh->connection, xWindow))
        writeState(ewmh, xWindow, atoms, on);
    const auto action = on ? XCB_EWMH_WM_STATE_ADD : XCB_EWMH_WM_STATE_REMOVE;
    for (const xcb_atom_t atom : atoms)
        xcb_ewmh_request_change_wm_state(
            ewmh, 0, xWindow, action, atom, XCB_ATOM_NONE, XCB_EWMH_CLIENT_SOURCE_TYPE_NORMAL);
    xcb_flush(ewmh->connection);
}

constexpr uint32_t allDesktops = 0xFFFFFFFF; // EWMH, _NET_WM_DESKTOP

uint32_t currentDesktop()
{
    auto *ewmh = hints();
    uint32_t desktop = 0; // what a window manager without virtual desktops has
    xcb_ewmh_get_current_desktop_reply(
        ewmh, xcb_ewmh_get_current_desktop(ewmh, 0), &desktop, nullptr);
    return desktop;
}

// Beside the sticky state: some window managers know only one of the two.
void setDesktop(WId window, uint32_t desktop)
{
    auto *ewmh = hints();
    const auto xWindow = static_cast<xcb_window_t>(window);
    if (!isManaged(ewmh->connection, xWindow))
        xcb_ewmh_set_wm_desktop(ewmh, xWindow, desktop);
    xcb_ewmh_request_change_wm_desktop(
        ewmh, 0, xWindow, desktop, XCB_EWMH_CLIENT_SOURCE_TYPE_NORMAL);
    xcb_flush(ewmh->connection);
}

// None of a window that is not there.
std::optional<uint8_t> mapStateOf(xcb_connection_t *xcb, xcb_window_t window)
{
    const Owned<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(xcb, xcb_get_window_attributes(xcb, window), nullptr));
    return reply ? std::optional(reply->map_state) : std::nullopt;
}

// Tells Qt once more where the window is. Qt asks the server each time that it moves the window,
// and may get its answer while the window is in its new frame already and the frame not yet in its
// place; not every window manager tells of the place later. The event is one that those do send.
void announcePlace(WId window)
{
    auto *xcb = connection();
    if (!xcb)
        return;
    const auto xWindow = static_cast<xcb_window_t>(window);
    const Owned<xcb_get_geometry_reply_t> size(
        xcb_get_geometry_reply(xcb, xcb_get_geometry(xcb, xWindow), nullptr));
    if (!size)
        return;
    const auto cookie = xcb_translate_coordinates(xcb, xWindow, size->root, 0, 0);
    const Owned<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(xcb, cookie, nullptr));
    if (!place)
        return;
    xcb_configure_notify_event_t event{};
    event.response_type = XCB_CONFIGURE_NOTIFY;
    event.event = xWindow;
    event.window = xWindow;
    event.x = place->dst_x;
    event.y = place->dst_y;
    event.width = size->width;
    event.height = size->height;
    xcb_send_event(xcb, 0, xWindow, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<char *>(&event));
    xcb_flush(xcb);
}

// Without a frame, also while Qt's flags ask for one.
void setFrameless(xcb_connection_t *xcb, xcb_window_t window)
{
    static const xcb_atom_t hints = atomOf(xcb, "_MOTIF_WM_HINTS");
    constexpr uint32_t decorationsCount = 2; // in the first field; the third one has them: none
    constexpr std::array<uint32_t, 5> values{decorationsCount, 0, 0, 0, 0};
    if (hints != XCB_ATOM_NONE) {
        xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window, hints, hints, 32,
            static_cast<uint32_t>(values.size()), values.data());
    }
}

// Qt notes in the hints that it has minimised a window itself, and leaves it there: the next show
// would be of an icon.
void startShown(xcb_connection_t *xcb, xcb_window_t window)
{
    constexpr uint32_t fields = 9; // ICCCM 4.1.2.4: flags, input, initial state and others
    const Owned<xcb_get_property_reply_t> reply(xcb_get_property_reply(xcb,
        xcb_get_property(xcb, 0, window, XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS, 0, fields),
        nullptr));
    if (!reply || xcb_get_property_value_length(reply.get()) != int(fields * sizeof(uint32_t)))
        return;
    constexpr uint32_t hasInitialState = 2;
    constexpr uint32_t normal = 1;
    auto *values = static_cast<uint32_t *>(xcb_get_property_value(reply.get()));
    values[0] |= hasInitialState;
    values[2] = normal;
    xcb_change_property(xcb, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_HINTS, XCB_ATOM_WM_HINTS,
        32, fields, values);
}

int typeOf(const xcb_generic_event_t &event)
{
    constexpr int sentByAClient = 0x80;
    return event.response_type & ~sentByAClient;
}

// The sign of a window manager that has just come (EWMH, _NET_SUPPORTING_WM_CHECK).
bool isNewWindowManager(const xcb_generic_event_t &event)
{
    if (typeOf(event) != XCB_PROPERTY_NOTIFY || !hints())
        return false;
    const auto &change = reinterpret_cast<const xcb_property_notify_event_t &>(event);
    return change.window == hints()->screens[0]->root
        && change.atom == hints()->_NET_SUPPORTING_WM_CHECK
        && change.state == XCB_PROPERTY_NEW_VALUE;
}

// The window has come onto the screen, whoever has brought it there.
bool isMapOf(const xcb_generic_event_t &event, const QWindow &window)
{
    return typeOf(event) == XCB_MAP_NOTIFY && window.handle()
        && reinterpret_cast<const xcb_map_notify_event_t &>(event).window == window.winId();
}

// A window manager takes the state away from a window that is withdrawn, at some time after the
// hide. So it is set before the show, for the manager to find, and again each time that the window
// comes onto the screen after it: a late manager may carry out a show, the hide and the next show
// after all three were asked for. One that takes the place of another may not understand what that
// has left: "on all desktops" has been taken for the last one, where nobody sees the clock.
class WindowKeeper : public QObject, public QAbstractNativeEventFilter
{
public:
    WindowKeeper(QWindow *window, QObject *context, std::function<void()> apply)
        : QObject(window)
        , m_window(window)
        , m_context(context)
        , m_apply(std::move(apply))
    {
        m_newManagerTimer.setSingleShot(true);
        m_newManagerTimer.setInterval(1s); // by then it has the windows in its care
        connect(&m_newManagerTimer, &QTimer::timeout, this, [this] {
            // What is minimised comes back by a show. What is on the taskbar, as its flags tell,
            // has a desktop, where it is to stay.
            if (!m_window->windowStates().testFlag(Qt::WindowMinimized)
                && !m_window->flags().testFlag(Qt::WindowSystemMenuHint))
                this->apply();
        });
        m_latePlaceTimer.setSingleShot(true);
        m_latePlaceTimer.setInterval(250ms);
        connect(&m_latePlaceTimer, &QTimer::timeout, this, [this] {
            // While it is dragged it may be on its way to another place already.
            if (QGuiApplication::mouseButtons() != Qt::NoButton)
                m_latePlaceTimer.start();
            else if (isSeen())
                announcePlace(m_window->winId());
        });
        QCoreApplication::instance()->installNativeEventFilter(this);
    }

    bool nativeEventFilter(
        const QByteArray &eventType, void *message, [[maybe_unused]] qintptr *result) override
    {
        if (eventType != "xcb_generic_event_t")
            return false;
        const auto &event = *static_cast<const xcb_generic_event_t *>(message);
        if (isNewWindowManager(event))
            m_newManagerTimer.start();
        else if (isMapOf(event, *m_window))
            m_dueWhenSeen = m_dueWhenSeen || !m_untilSettled.hasExpired();
        return false;
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Show || isNewSurface(event)) {
            prepareForShow();
            apply();
            m_untilSettled.setRemainingTime(10s);
        } else if (event->type() == QEvent::Expose && m_dueWhenSeen && isSeen()) {
            m_dueWhenSeen = false;
            apply();
            announcePlace(m_window->winId());
            m_latePlaceTimer.start(); // a busy window manager places the frame later still
        }
        return QObject::eventFilter(watched, event);
    }

private:
    static bool isNewSurface(const QEvent *event)
    {
        return event->type() == QEvent::PlatformSurface
            && static_cast<const QPlatformSurfaceEvent *>(event)->surfaceEventType()
            == QPlatformSurfaceEvent::SurfaceCreated;
    }

    // An exposure may be one of an earlier show. While the window is not on the screen again, the
    // window manager may have put it into a frame that has no place yet.
    bool isSeen() const
    {
        auto *xcb = connection();
        return m_window->isExposed()
            && (!xcb
                || mapStateOf(xcb, static_cast<xcb_window_t>(m_window->winId()))
                    == XCB_MAP_STATE_VIEWABLE);
    }

    void prepareForShow() const
    {
        keepFrameless(m_window->winId());
        if (connection() && !m_window->windowStates().testFlag(Qt::WindowMinimized))
            startShown(connection(), static_cast<xcb_window_t>(m_window->winId()));
    }

    void apply() const
    {
        if (m_context)
            m_apply();
    }

    QWindow *m_window; // the parent
    QPointer<QObject> m_context;
    std::function<void()> m_apply;
    bool m_dueWhenSeen = true;
    // Until then a map may be the late answer to a show, and afterwards it is the user's doing:
    // another desktop, what was set in the window manager's menu.
    QDeadlineTimer m_untilSettled;
    QTimer m_newManagerTimer;
    QTimer m_latePlaceTimer;
};

// A menu has no window manager that would keep it above what is raised.
bool hasOpenMenu()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    return std::any_of(windows.begin(), windows.end(),
        [](const QWindow *window) { return window->type() == Qt::Popup && window->isVisible(); });
}

// The window that is above all others in the window manager's care; none without such a list.
xcb_window_t topWindow()
{
    auto *ewmh = hints();
    xcb_ewmh_get_windows_reply_t reply;
    if (!xcb_ewmh_get_client_list_stacking_reply(
            ewmh, xcb_ewmh_get_client_list_stacking(ewmh, 0), &reply, nullptr))
        return XCB_NONE;
    const xcb_window_t top
        = reply.windows_len > 0 ? reply.windows[reply.windows_len - 1] : xcb_window_t(XCB_NONE);
    xcb_ewmh_get_windows_reply_wipe(&reply);
    return top;
}

// Above its like as well: the state alone says nothing about two windows that both have it. A
// request without a sibling is one for the focus, too, to some window managers. The sibling is none
// to the X server, which knows the frames around both, so the request goes to the window manager
// (ICCCM 4.1.5).
void raise(WId window)
{
    const auto xWindow = static_cast<xcb_window_t>(window);
    auto *ewmh = hints();
    const xcb_window_t top = topWindow();
    if (top == XCB_NONE || top == xWindow)
        return;
    const xcb_window_t root = ewmh->screens[0]->root;
    xcb_configure_request_event_t event{};
    event.response_type = XCB_CONFIGURE_REQUEST;
    event.stack_mode = XCB_STACK_MODE_ABOVE;
    event.parent = root;
    event.window = xWindow;
    event.sibling = top;
    event.value_mask = XCB_CONFIG_WINDOW_SIBLING | XCB_CONFIG_WINDOW_STACK_MODE;
    xcb_send_event(ewmh->connection, 0, root,
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
        reinterpret_cast<char *>(&event));
    xcb_flush(ewmh->connection);
}

} // namespace

void setWindowTopmost(WId window, bool on)
{
    if (!hints())
        return;
    setState(window, {hints()->_NET_WM_STATE_ABOVE}, on);
    if (on && !hasOpenMenu())
        raise(window);
}

bool isWindowTopmost(WId window)
{
    return hints()
        && stateOf(hints(), static_cast<xcb_window_t>(window))
               .contains(hints()->_NET_WM_STATE_ABOVE);
}

void setWindowTransparentForMouse(WId window, bool on)
{
    auto *xcb = connection();
    if (!xcb)
        return;
    const auto xWindow = static_cast<xcb_window_t>(window);
    if (on) {
        xcb_shape_rectangles(xcb, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, XCB_CLIP_ORDERING_UNSORTED,
            xWindow, 0, 0, 0, nullptr);
    } else {
        // No rectangle: that would keep its size when the window grows.
        xcb_shape_mask(xcb, XCB_SHAPE_SO_SET, XCB_SHAPE_SK_INPUT, xWindow, 0, 0, XCB_PIXMAP_NONE);
    }
    xcb_flush(xcb);
}

void setWindowToolStyle(WId window, bool tool)
{
    const auto *ewmh = hints();
    if (!ewmh)
        return;
    // On every virtual desktop, as Windows shows a tool window.
    setState(window,
        {ewmh->_NET_WM_STATE_SKIP_TASKBAR, ewmh->_NET_WM_STATE_SKIP_PAGER,
            ewmh->_NET_WM_STATE_STICKY},
        tool);
    setDesktop(window, tool ? allDesktops : currentDesktop());
}

void offerForRestore(WId window)
{
    if (const auto *ewmh = hints())
        setState(window, {ewmh->_NET_WM_STATE_SKIP_TASKBAR, ewmh->_NET_WM_STATE_SKIP_PAGER}, false);
}

void keepFrameless(WId window)
{
    auto *xcb = connection();
    if (!xcb)
        return;
    setFrameless(xcb, static_cast<xcb_window_t>(window));
    xcb_flush(xcb);
}

void showWindow([[maybe_unused]] WId window)
{
    // Nobody hides the native window behind Qt's back here.
}

bool isLost(WId window)
{
    auto *xcb = connection();
    return xcb && mapStateOf(xcb, static_cast<xcb_window_t>(window)) == XCB_MAP_STATE_UNMAPPED;
}

void reapplyWhenLost(QWindow *window, QObject *context, std::function<void()> apply)
{
    window->installEventFilter(new WindowKeeper(window, context, std::move(apply)));
}

void touchThreadDpiAwareness()
{
    // X11 has one scale for all threads.
}

} // namespace WindowStyle
