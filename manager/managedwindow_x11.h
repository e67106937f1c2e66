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

/// Its WM_STATE (ICCCM 4.1.3.1). Withdrawn also before a window manager has set one, Iconic also
/// while it is on another desktop.
enum class WmState { Withdrawn = 0, Normal = 1, Iconic = 3 };
[[nodiscard]] WmState wmState(WId window);
/// Blocks, for a second at most, until it is managed, or with \a managed false until it is
/// withdrawn. Returns at once without a window manager.
void awaitManaged(WId window, bool managed);

/// Whether \a event, an xcb_generic_event_t, says that a window manager has just come.
[[nodiscard]] bool isNewManager(const void *event);
/// Whether \a event, an xcb_generic_event_t, says that WM_STATE has been written, even with the
/// same value.
[[nodiscard]] bool isWmStateChange(const void *event, WId window);
/// Whether \a event, an xcb_generic_event_t, says that the window has left the screen.
[[nodiscard]] bool isUnmapOf(const void *event, WId window);

} // namespace ManagedWindow
