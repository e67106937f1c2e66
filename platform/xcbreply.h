// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGui/qguiapplication.h>

#include <cstdlib>
#include <memory>

#include <xcb/xcb.h>

namespace Xcb
{

struct FreeDeleter {
    void operator()(void *reply) const { free(reply); } // xcb hands replies out from malloc
};

/// A reply of the X server, freed with the object.
template <typename Reply> using Owned = std::unique_ptr<Reply, FreeDeleter>;

/// Qt's connection. Null where the windows are not an X server's: under Wayland, offscreen.
inline xcb_connection_t *connection()
{
    const auto *x11 = qGuiApp->nativeInterface<QNativeInterface::QX11Application>();
    return x11 ? x11->connection() : nullptr;
}

} // namespace Xcb
