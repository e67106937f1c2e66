// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qbytearray.h>
#include <QtCore/qlist.h>
#include <QtCore/qmap.h>
#include <QtCore/qmargins.h>
#include <QtCore/qpoint.h>
#include <QtCore/qrect.h>
#include <QtGui/qimage.h>
#include <QtGui/qregion.h>

#include <cstdint>

struct xcb_connection_t;

/// A window as the X server and the window manager tell of it, whatever program it belongs to.
/// Every question goes to the server at once; a window that is gone answers with nothing.
class XWindow
{
public:
    XWindow() = default;
    explicit XWindow(uint32_t id)
        : m_id(id)
    {
    }

    /// The windows that the window manager has in its care, from the lowest to the topmost.
    static QList<XWindow> clients();
    /// The only such window of a process; none if it has no window or more than one. Where no
    /// window manager has been yet, what is on the screen and would be in its care.
    static XWindow ofProcess(qint64 pid);
    /// All such windows of a process.
    static QList<XWindow> allOfProcess(qint64 pid);
    /// What is on the screen without the window manager's care: menus and tool tips, the oldest
    /// first.
    static QList<XWindow> popups();
    /// The window that has the keyboard.
    static XWindow active();
    /// The client below the pointer if that stood at \a point of the screen: shapes count. None
    /// over the bare desktop.
    static XWindow under(QPoint point);

    uint32_t id() const { return m_id; }
    explicit operator bool() const { return m_id != 0; }
    bool operator==(const XWindow &other) const = default;

    bool isMapped() const;
    /// Without a frame, in pixels of the screen.
    QRect geometry() const;
    /// Instance and class name.
    QByteArrayList classNames() const;
    /// The value of a text property.
    QByteArray text(const QByteArray &property) const;
    /// The window that this one belongs to and stays above.
    XWindow owner() const;
    /// The icon, in each size that the window offers.
    QList<QImage> icons() const;
    /// The names of the states that hold, without the prefix _NET_WM_STATE_; sorted.
    QByteArrayList states() const;
    bool isOnAllDesktops() const;
    /// How much of each kind the server keeps for the window's program: windows, pixmaps, ...
    QMap<QByteArray, uint32_t> resourcesOfProgram() const;
    /// Whether the window asks not to get the keyboard when it appears.
    bool wantsNoFocus() const;
    /// Whether it is drawn in a shape of its own.
    bool isShaped() const;
    QRegion shape() const;
    QRegion inputShape() const;
    /// The child of the root that contains it: the window manager's frame, even an invisible one,
    /// or the window itself.
    XWindow outermost() const;
    /// What the window manager has put around it; null for a window without decorations.
    QMargins frame() const;

    // What other programs may ask of it; the window manager decides and the answer comes later.
    void setGeometry(QRect rectangle) const;
    void minimize() const;
    void close() const;
    /// Hides it as its own program would (ICCCM 4.1.4).
    void withdraw() const;
    /// Asks for it to be on the screen again.
    void map() const;
    /// As a pager or a taskbar does, which brings back a minimised window as well.
    void activate() const;
    /// Asks for a place above all windows that are topmost, too.
    void raise() const;

private:
    QRegion region(int kind) const;

    uint32_t m_id = 0;
};

/// Notices every window that comes to the screen, framed or not.
class XWindowWatch
{
public:
    XWindowWatch();
    Q_DISABLE_COPY_MOVE(XWindowWatch)
    ~XWindowWatch();

    /// How many windows have been put on the screen since the start of the watch.
    int mappedWindows() const;

private:
    xcb_connection_t *m_xcb;
    mutable int m_mapped = 0;
};

/// Records every geometry that a window gets.
class XGeometryWatch
{
public:
    /// Watches the frame if there is one: it has the same geometry, as the clock has no
    /// decorations.
    explicit XGeometryWatch(XWindow window);
    Q_DISABLE_COPY_MOVE(XGeometryWatch)
    ~XGeometryWatch();

    /// All since the start of the watch, in pixels of the screen.
    QList<QRect> geometries() const;

private:
    xcb_connection_t *m_xcb;
    uint32_t m_window;
    mutable QList<QRect> m_geometries;
};
