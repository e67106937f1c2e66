// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGui/qwindowdefs.h>

#include <initializer_list>

// A window of ours on an X server, in the care of a window manager or not: what the manager is told
// of it (EWMH, ICCCM) and what the server knows of it. \a window is QWindow::winId(). Where windows
// are not an X server's (Wayland, offscreen) each of these does nothing, and no question is
// answered with yes.

namespace ManagedWindow
{

enum class State { Above, SkipTaskbar, SkipPager, Sticky };

/// Sets or clears \a states, whether the window is on the screen, hidden or between both.
void setStates(WId window, std::initializer_list<State> states, bool on);
/// As the window manager tells.
[[nodiscard]] bool hasState(WId window, State state);

void showOnAllDesktops(WId window);
void showOnCurrentDesktop(WId window);

/// Brings it above all that have the same states, without the keyboard.
void raise(WId window);

/// Without a frame, also while Qt's flags ask for one.
void setFrameless(WId window);
/// Makes the next show one of a window, also after Qt has minimised it.
void startShown(WId window);
/// Lets the mouse fall through, or takes it again in the whole window.
void letMouseThrough(WId window, bool on);

/// Whether the server has it on the screen, with all around it.
[[nodiscard]] bool isViewable(WId window);
/// Whether the server has it off the screen. A window that is gone is neither.
[[nodiscard]] bool isUnmapped(WId window);

/// Whether \a event, an xcb_generic_event_t, says that a window manager has just come.
[[nodiscard]] bool isNewManager(const void *event);
/// Whether \a event, an xcb_generic_event_t, says that the window has come onto the screen, whoever
/// has brought it there.
[[nodiscard]] bool isMapOf(const void *event, WId window);

} // namespace ManagedWindow
