// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/desktop/xwindow.h"

#include <algorithm>
#include <array>
#include <cstdlib>
#include <memory>
#include <span>

#include <xcb/shape.h>
#include <xcb/xcb.h>
#include <xcb/xcb_ewmh.h>
#include <xcb/xcbext.h>

namespace
{

struct FreeDeleter {
    void operator()(void *reply) const { std::free(reply); } // xcb hands out memory of malloc
};
template <typename Reply> using Owned = std::unique_ptr<Reply, FreeDeleter>;

// A connection beside Qt's, so that no question depends on what Qt knows or has flushed.
struct Server {
    xcb_connection_t *xcb = xcb_connect(nullptr, nullptr);
    xcb_ewmh_connection_t ewmh = {};

    Server()
    {
        if (!xcb_ewmh_init_atoms_replies(&ewmh, xcb_ewmh_init_atoms(xcb, &ewmh), nullptr))
            qFatal("no X server");
    }
    Q_DISABLE_COPY_MOVE(Server)
    ~Server()
    {
        xcb_ewmh_connection_wipe(&ewmh);
        xcb_disconnect(xcb);
    }

    xcb_window_t root() { return ewmh.screens[0]->root; }
};

Server &server()
{
    static Server instance;
    return instance;
}

xcb_atom_t atomOf(const QByteArray &name)
{
    auto *xcb = server().xcb;
    const Owned<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(
        xcb, xcb_intern_atom(xcb, 0, uint16_t(name.size()), name.constData()), nullptr));
    return reply ? reply->atom : xcb_atom_t(XCB_ATOM_NONE);
}

QByteArray nameOf(xcb_atom_t atom)
{
    auto *xcb = server().xcb;
    const Owned<xcb_get_atom_name_reply_t> reply(
        xcb_get_atom_name_reply(xcb, xcb_get_atom_name(xcb, atom), nullptr));
    return reply ? QByteArray(xcb_get_atom_name_name(reply.get()),
                       xcb_get_atom_name_name_length(reply.get()))
                 : QByteArray();
}

Owned<xcb_get_property_reply_t> propertyOf(uint32_t window, const QByteArray &name)
{
    auto *xcb = server().xcb;
    constexpr uint32_t maximumLength = 1024;
    return Owned<xcb_get_property_reply_t>(xcb_get_property_reply(xcb,
        xcb_get_property(xcb, 0, window, atomOf(name), XCB_GET_PROPERTY_TYPE_ANY, 0, maximumLength),
        nullptr));
}

// One kind of a program's resources, as the extension X-Resource counts them.
struct ResourceCount {
    xcb_atom_t kind;
    uint32_t count;
};

// What the extension answers to QueryClientResources. By hand: it is one request, and no other
// needs the library for it.
struct ResourceCounts {
    uint8_t response;
    uint8_t unused;
    uint16_t sequence;
    uint32_t length;
    uint32_t kinds;
    uint32_t padding[5];
    // and the counts
};

Owned<ResourceCounts> resourceCounts(uint32_t window)
{
    static xcb_extension_t extension{"X-Resource", 0};
    struct {
        uint8_t major = 0; // these two and the length are xcb's to fill in
        uint8_t minor = 0;
        uint16_t length = 0;
        uint32_t window;
    } request{.window = window};
    constexpr uint8_t queryClientResources = 2;
    const xcb_protocol_request_t protocol{
        .count = 1, .ext = &extension, .opcode = queryClientResources, .isvoid = 0};
    iovec parts[3] = {}; // two in front are xcb's
    parts[2] = {.iov_base = &request, .iov_len = sizeof request};
    const unsigned sequence = xcb_send_request(server().xcb, 0, parts + 2, &protocol);
    return Owned<ResourceCounts>(
        static_cast<ResourceCounts *>(xcb_wait_for_reply(server().xcb, sequence, nullptr)));
}

// The window under \a point among the children of \a parent.
xcb_window_t childAt(xcb_window_t parent, QPoint point)
{
    auto *xcb = server().xcb;
    const Owned<xcb_translate_coordinates_reply_t> reply(xcb_translate_coordinates_reply(xcb,
        xcb_translate_coordinates(
            xcb, server().root(), parent, int16_t(point.x()), int16_t(point.y())),
        nullptr));
    return reply ? reply->child : xcb_window_t(XCB_WINDOW_NONE);
}

} // namespace

QList<XWindow> XWindow::clients()
{
    QList<XWindow> result;
    auto &ewmh = server().ewmh;
    xcb_ewmh_get_windows_reply_t reply;
    if (xcb_ewmh_get_client_list_stacking_reply(
            &ewmh, xcb_ewmh_get_client_list_stacking(&ewmh, 0), &reply, nullptr)) {
        for (uint32_t i = 0; i < reply.windows_len; ++i)
            result.append(XWindow(reply.windows[i]));
        xcb_ewmh_get_windows_reply_wipe(&reply);
    }
    return result;
}

// What a window manager would have in its care.
static QList<XWindow> unmanagedWindows()
{
    QList<XWindow> result;
    auto *xcb = server().xcb;
    const Owned<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(xcb, xcb_query_tree(xcb, server().root()), nullptr));
    for (int i = 0; tree && i < xcb_query_tree_children_length(tree.get()); ++i) {
        const XWindow window(xcb_query_tree_children(tree.get())[i]);
        const Owned<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
            xcb, xcb_get_window_attributes(xcb, window.id()), nullptr));
        if (attributes && !attributes->override_redirect
            && attributes->map_state == XCB_MAP_STATE_VIEWABLE)
            result.append(window);
    }
    return result;
}

// Whatever their order: not every window manager tells that before there is more than one.
static QList<XWindow> managedWindows()
{
    QList<XWindow> result;
    auto &ewmh = server().ewmh;
    xcb_ewmh_get_windows_reply_t reply;
    if (!xcb_ewmh_get_client_list_reply(&ewmh, xcb_ewmh_get_client_list(&ewmh, 0), &reply, nullptr))
        return unmanagedWindows();
    for (uint32_t i = 0; i < reply.windows_len; ++i)
        result.append(XWindow(reply.windows[i]));
    xcb_ewmh_get_windows_reply_wipe(&reply);
    return result;
}

XWindow XWindow::ofProcess(qint64 pid)
{
    const QList<XWindow> found = allOfProcess(pid);
    return found.size() == 1 ? found.first() : XWindow();
}

QList<XWindow> XWindow::allOfProcess(qint64 pid)
{
    auto &ewmh = server().ewmh;
    QList<XWindow> found;
    const QList<XWindow> managed = managedWindows();
    for (const XWindow client : managed) {
        uint32_t owner = 0;
        if (xcb_ewmh_get_wm_pid_reply(
                &ewmh, xcb_ewmh_get_wm_pid(&ewmh, client.m_id), &owner, nullptr)
            && owner == pid)
            found.append(client);
    }
    return found;
}

QList<XWindow> XWindow::popups()
{
    QList<XWindow> found;
    auto *xcb = server().xcb;
    const QRect screen = XWindow(server().root()).geometry(); // window managers keep some beside it
    const Owned<xcb_query_tree_reply_t> tree(
        xcb_query_tree_reply(xcb, xcb_query_tree(xcb, server().root()), nullptr));
    for (int i = 0; tree && i < xcb_query_tree_children_length(tree.get()); ++i) {
        const XWindow window(xcb_query_tree_children(tree.get())[i]);
        const Owned<xcb_get_window_attributes_reply_t> attributes(xcb_get_window_attributes_reply(
            xcb, xcb_get_window_attributes(xcb, window.m_id), nullptr));
        if (attributes && attributes->override_redirect && screen.intersects(window.geometry())
            && attributes->map_state == XCB_MAP_STATE_VIEWABLE
            && xcb_get_property_value_length(propertyOf(window.m_id, "_NET_WM_WINDOW_TYPE").get())
                > 0)
            found.append(window);
    }
    return found;
}

XWindow XWindow::owner() const
{
    const auto reply = propertyOf(m_id, "WM_TRANSIENT_FOR");
    if (!reply || xcb_get_property_value_length(reply.get()) != sizeof(uint32_t))
        return {};
    return XWindow(*static_cast<const uint32_t *>(xcb_get_property_value(reply.get())));
}

XWindow XWindow::active()
{
    auto &ewmh = server().ewmh;
    xcb_window_t window = XCB_WINDOW_NONE;
    xcb_ewmh_get_active_window_reply(&ewmh, xcb_ewmh_get_active_window(&ewmh, 0), &window, nullptr);
    return XWindow(window);
}

XWindow XWindow::under(QPoint point)
{
    // A window manager may have put the client into a frame, so the way down is searched.
    const QList<XWindow> all = managedWindows();
    xcb_window_t window = childAt(server().root(), point);
    while (window != XCB_WINDOW_NONE && !all.contains(XWindow(window)))
        window = childAt(window, point);
    return XWindow(window);
}

bool XWindow::isMapped() const
{
    auto *xcb = server().xcb;
    const Owned<xcb_get_window_attributes_reply_t> reply(
        xcb_get_window_attributes_reply(xcb, xcb_get_window_attributes(xcb, m_id), nullptr));
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

QRect XWindow::geometry() const
{
    auto *xcb = server().xcb;
    const auto sizeCookie = xcb_get_geometry(xcb, m_id);
    const auto placeCookie = xcb_translate_coordinates(xcb, m_id, server().root(), 0, 0);
    const Owned<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(xcb, sizeCookie, nullptr));
    const Owned<xcb_translate_coordinates_reply_t> place(
        xcb_translate_coordinates_reply(xcb, placeCookie, nullptr));
    return size && place ? QRect(place->dst_x, place->dst_y, size->width, size->height) : QRect();
}

QByteArrayList XWindow::classNames() const
{
    QByteArrayList names = text("WM_CLASS").split('\0');
    if (names.last().isEmpty())
        names.removeLast(); // each name ends with a zero
    return names;
}

QByteArray XWindow::text(const QByteArray &property) const
{
    const auto reply = propertyOf(m_id, property);
    return reply ? QByteArray(static_cast<const char *>(xcb_get_property_value(reply.get())),
                       xcb_get_property_value_length(reply.get()))
                 : QByteArray();
}

QList<QImage> XWindow::icons() const
{
    QList<QImage> result;
    auto &ewmh = server().ewmh;
    xcb_ewmh_get_wm_icon_reply_t reply;
    if (!xcb_ewmh_get_wm_icon_reply(&ewmh, xcb_ewmh_get_wm_icon(&ewmh, m_id), &reply, nullptr))
        return result;
    for (auto icon = xcb_ewmh_get_wm_icon_iterator(&reply); icon.rem > 0;
        xcb_ewmh_get_wm_icon_next(&icon)) {
        const QImage view(reinterpret_cast<const uchar *>(icon.data), int(icon.width),
            int(icon.height), QImage::Format_ARGB32);
        result.append(view.copy());
    }
    xcb_ewmh_get_wm_icon_reply_wipe(&reply);
    return result;
}

QByteArrayList XWindow::states() const
{
    QByteArrayList names;
    auto &ewmh = server().ewmh;
    xcb_ewmh_get_atoms_reply_t reply;
    if (xcb_ewmh_get_wm_state_reply(&ewmh, xcb_ewmh_get_wm_state(&ewmh, m_id), &reply, nullptr)) {
        for (uint32_t i = 0; i < reply.atoms_len; ++i)
            names.append(nameOf(reply.atoms[i]).replace("_NET_WM_STATE_", ""));
        xcb_ewmh_get_atoms_reply_wipe(&reply);
    }
    std::sort(names.begin(), names.end());
    return names;
}

QMap<QByteArray, uint32_t> XWindow::resourcesOfProgram() const
{
    QMap<QByteArray, uint32_t> result;
    const Owned<ResourceCounts> reply = resourceCounts(m_id);
    if (!reply)
        return result;
    const std::span counts(reinterpret_cast<const ResourceCount *>(reply.get() + 1), reply->kinds);
    for (const ResourceCount &row : counts)
        result.insert(nameOf(row.kind), row.count);
    return result;
}

bool XWindow::isOnAllDesktops() const
{
    constexpr uint32_t allDesktops = 0xFFFFFFFF; // EWMH, _NET_WM_DESKTOP
    auto &ewmh = server().ewmh;
    uint32_t desktop = 0;
    return xcb_ewmh_get_wm_desktop_reply(
               &ewmh, xcb_ewmh_get_wm_desktop(&ewmh, m_id), &desktop, nullptr)
        && desktop == allDesktops;
}

bool XWindow::wantsNoFocus() const
{
    // EWMH, _NET_WM_USER_TIME: zero says so.
    const auto reply = propertyOf(m_id, "_NET_WM_USER_TIME");
    return reply && xcb_get_property_value_length(reply.get()) == int(sizeof(uint32_t))
        && *static_cast<const uint32_t *>(xcb_get_property_value(reply.get())) == 0;
}

bool XWindow::isShaped() const
{
    auto *xcb = server().xcb;
    const Owned<xcb_shape_query_extents_reply_t> reply(
        xcb_shape_query_extents_reply(xcb, xcb_shape_query_extents(xcb, m_id), nullptr));
    return reply && reply->bounding_shaped;
}

QRegion XWindow::shape() const { return region(XCB_SHAPE_SK_BOUNDING); }

QRegion XWindow::inputShape() const { return region(XCB_SHAPE_SK_INPUT); }

QMargins XWindow::frame() const
{
    auto &ewmh = server().ewmh;
    xcb_ewmh_get_extents_reply_t extents = {};
    xcb_ewmh_get_frame_extents_reply(
        &ewmh, xcb_ewmh_get_frame_extents(&ewmh, m_id), &extents, nullptr);
    return {int(extents.left), int(extents.top), int(extents.right), int(extents.bottom)};
}

XWindow XWindow::outermost() const
{
    auto *xcb = server().xcb;
    for (xcb_window_t window = m_id;;) {
        const Owned<xcb_query_tree_reply_t> tree(
            xcb_query_tree_reply(xcb, xcb_query_tree(xcb, window), nullptr));
        if (!tree)
            return {};
        if (tree->parent == tree->root || tree->parent == XCB_WINDOW_NONE)
            return XWindow(window);
        window = tree->parent;
    }
}

void XWindow::setGeometry(QRect rectangle) const
{
    const std::array values{uint32_t(rectangle.x()), uint32_t(rectangle.y()),
        uint32_t(rectangle.width()), uint32_t(rectangle.height())};
    xcb_configure_window(server().xcb, m_id,
        XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH
            | XCB_CONFIG_WINDOW_HEIGHT,
        values.data());
    xcb_flush(server().xcb);
}

void XWindow::minimize() const
{
    constexpr uint32_t iconicState = 3; // ICCCM 4.1.4
    xcb_client_message_event_t event = {};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = m_id;
    event.type = atomOf("WM_CHANGE_STATE");
    event.data.data32[0] = iconicState;
    xcb_send_event(server().xcb, 0, server().root(),
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
        reinterpret_cast<const char *>(&event));
    xcb_flush(server().xcb);
}

void XWindow::close() const
{
    xcb_ewmh_request_close_window(
        &server().ewmh, 0, m_id, XCB_CURRENT_TIME, XCB_EWMH_CLIENT_SOURCE_TYPE_OTHER);
    xcb_flush(server().xcb);
}

void XWindow::withdraw() const
{
    xcb_unmap_window(server().xcb, m_id);
    xcb_unmap_notify_event_t event = {};
    event.response_type = XCB_UNMAP_NOTIFY;
    event.event = server().root();
    event.window = m_id;
    xcb_send_event(server().xcb, 0, server().root(),
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
        reinterpret_cast<const char *>(&event));
    xcb_flush(server().xcb);
}

void XWindow::map() const
{
    xcb_map_window(server().xcb, m_id);
    xcb_flush(server().xcb);
}

void XWindow::activate() const
{
    auto &ewmh = server().ewmh;
    xcb_ewmh_request_change_active_window(
        &ewmh, 0, m_id, XCB_EWMH_CLIENT_SOURCE_TYPE_OTHER, XCB_CURRENT_TIME, XCB_WINDOW_NONE);
    xcb_flush(server().xcb);
}

void XWindow::raise() const
{
    const uint32_t above = XCB_STACK_MODE_ABOVE;
    xcb_configure_window(server().xcb, m_id, XCB_CONFIG_WINDOW_STACK_MODE, &above);
    xcb_flush(server().xcb);
}

QRegion XWindow::region(int kind) const
{
    auto *xcb = server().xcb;
    const Owned<xcb_shape_get_rectangles_reply_t> reply(xcb_shape_get_rectangles_reply(
        xcb, xcb_shape_get_rectangles(xcb, m_id, xcb_shape_kind_t(kind)), nullptr));
    QRegion result;
    if (reply) {
        const xcb_rectangle_t *const rectangles = xcb_shape_get_rectangles_rectangles(reply.get());
        for (int i = 0; i < xcb_shape_get_rectangles_rectangles_length(reply.get()); ++i)
            result += QRect(
                rectangles[i].x, rectangles[i].y, rectangles[i].width, rectangles[i].height);
    }
    return result;
}

// Everything that has been sent to a connection when the server answers it.
template <typename Handle> static void takeEvents(xcb_connection_t *xcb, Handle handle)
{
    const Owned<xcb_get_input_focus_reply_t> reply(
        xcb_get_input_focus_reply(xcb, xcb_get_input_focus(xcb), nullptr));
    while (const Owned<xcb_generic_event_t> event{xcb_poll_for_event(xcb)})
        handle(*event);
}

constexpr int sentByAClient = 0x80; // a mark in an event's type

XWindowWatch::XWindowWatch()
    : m_xcb(xcb_connect(nullptr, nullptr))
{
    const uint32_t events = XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_xcb, server().root(), XCB_CW_EVENT_MASK, &events);
    xcb_flush(m_xcb);
    mappedWindows(); // waits for the server
}

XWindowWatch::~XWindowWatch() { xcb_disconnect(m_xcb); }

int XWindowWatch::mappedWindows() const
{
    takeEvents(m_xcb, [this](const xcb_generic_event_t &event) {
        m_mapped += (event.response_type & ~sentByAClient) == XCB_MAP_NOTIFY;
    });
    return m_mapped;
}

XGeometryWatch::XGeometryWatch(XWindow window)
    : m_xcb(xcb_connect(nullptr, nullptr))
    , m_window(window.outermost().id())
{
    const uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
    xcb_change_window_attributes(m_xcb, m_window, XCB_CW_EVENT_MASK, &events);
    geometries(); // waits for the server
}

XGeometryWatch::~XGeometryWatch() { xcb_disconnect(m_xcb); }

QList<QRect> XGeometryWatch::geometries() const
{
    takeEvents(m_xcb, [this](const xcb_generic_event_t &event) {
        // One that a client has sent is not what the server did.
        if (event.response_type != XCB_CONFIGURE_NOTIFY)
            return;
        const auto &notify = reinterpret_cast<const xcb_configure_notify_event_t &>(event);
        const QRect geometry(notify.x, notify.y, notify.width, notify.height);
        if (m_geometries.isEmpty() || m_geometries.last() != geometry) // else only restacked
            m_geometries.append(geometry);
    });
    return m_geometries;
}
