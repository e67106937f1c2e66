// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "manager/windowstyle.h"

#include <windows.h>

namespace WindowStyle
{

namespace
{

// Replaces the whole extended style: a window that is not layered could not be see-through.
constexpr LONG_PTR toolStyle = WS_EX_LAYERED | WS_EX_TOOLWINDOW;
constexpr LONG_PTR taskbarStyle = WS_EX_LAYERED | WS_EX_APPWINDOW;

HWND handleOf(WId window) { return reinterpret_cast<HWND>(window); }

void setExtendedStyleBit(HWND hwnd, LONG_PTR bit, bool on)
{
    const LONG_PTR style = GetWindowLongPtrW(hwnd, GWL_EXSTYLE);
    SetWindowLongPtrW(hwnd, GWL_EXSTYLE, on ? style | bit : style & ~bit);
}

} // namespace

void setWindowTopmost(WId window, bool on)
{
    const HWND hwnd = handleOf(window);
    setExtendedStyleBit(hwnd, WS_EX_TOPMOST, on);
    SetWindowPos(hwnd, on ? HWND_TOPMOST : HWND_NOTOPMOST, 0, 0, 0, 0, SWP_NOMOVE | SWP_NOSIZE);
}

bool isWindowTopmost(WId window)
{
    return (GetWindowLongPtrW(handleOf(window), GWL_EXSTYLE) & WS_EX_TOPMOST) != 0;
}

void setWindowTransparentForMouse(WId window, bool on)
{
    setExtendedStyleBit(handleOf(window), WS_EX_TRANSPARENT, on);
}

void setWindowToolStyle(WId window, bool tool)
{
    const HWND hwnd = handleOf(window);
    SetWindowLongPtrW(hwnd, GWL_EXSTYLE, tool ? toolStyle : taskbarStyle);
    // The shell looks at the style only when a window appears.
    ShowWindowAsync(hwnd, SW_HIDE);
    ShowWindowAsync(hwnd, SW_SHOW);
}

void offerForRestore([[maybe_unused]] WId window)
{
    // The window flags alone put it on the taskbar.
}

void keepFrameless([[maybe_unused]] WId window)
{
    // The flags alone decide.
}

void showWindow(WId window) { ShowWindow(handleOf(window), SW_SHOW); }

void reapplyWhenLost([[maybe_unused]] QWindow *window, [[maybe_unused]] QObject *context,
    [[maybe_unused]] std::function<void()> apply)
{
    // A hidden window keeps its style, and none of the flags that change makes a new native window.
}

void touchThreadDpiAwareness()
{
    const auto before = SetThreadDpiAwarenessContext(DPI_AWARENESS_CONTEXT_PER_MONITOR_AWARE);
    SetThreadDpiAwarenessContext(before);
}

} // namespace WindowStyle
