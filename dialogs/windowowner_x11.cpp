// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "dialogs/windowowner.h"

#include <QtGui/qguiapplication.h>

#include <xcb/xcb.h>

void setWindowOwner(WId window, WId owner)
{
    const auto *const x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    xcb_connection_t *const connection = x11 ? x11->connection() : nullptr;
    if (!connection)
        return;
    const auto id = xcb_window_t(owner);
    xcb_change_property(connection, XCB_PROP_MODE_REPLACE, xcb_window_t(window),
        XCB_ATOM_WM_TRANSIENT_FOR, XCB_ATOM_WINDOW, 32, 1, &id);
    xcb_flush(connection);
}
