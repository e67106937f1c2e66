// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGui/qwindow.h>

#include <functional>

// What the clock window needs of the window system and Qt does not offer. \a window is the native
// handle (QWindow::winId()). None of these reports a failure, and each does nothing where the
// window system has no such thing. They are no Qt window flags, so those keep their own values.

namespace WindowStyle
{

/// Keeps \a window above all normal windows, or no longer.
void setWindowTopmost(WId window, bool on);

/// Whether \a window is so now. False where the window system does not tell.
[[nodiscard]] bool isWindowTopmost(WId window);

/// Lets mouse input fall through \a window to whatever lies below it, or takes it back.
void setWindowTransparentForMouse(WId window, bool on);

/// With \a tool, takes \a window off the taskbar, else puts it there.
/// On Windows this drops what the two functions above have set, and shows the window anew.
void setWindowToolStyle(WId window, bool tool);

/// Makes \a window appear where a user can restore it from, now that it is minimised and its flags
/// are those of an ordinary window.
void offerForRestore(WId window);

/// To be called after a change of the flags of \a window: where a frame is the window manager's,
/// the clock gets none even by flags without Qt::FramelessWindowHint.
void keepFrameless(WId window);

/// Shows \a window if the native window is hidden while QWindow takes it for visible.
void showWindow(WId window);

/// Calls \a apply whenever \a window may have lost what these functions have set, until \a context
/// is gone: when Qt has recreated its native window and, on X11, before each show and once a window
/// manager manages the window. On X11 each show and hide also waits until the window manager has
/// carried out the one before, for a second at most.
void reapplyWhenLost(QWindow *window, QObject *context, std::function<void()> apply);

/// Leaves the thread's DPI awareness as it is, after having switched it to per-monitor once.
void touchThreadDpiAwareness();

} // namespace WindowStyle
