// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Windows, where a request has been carried out when it returns.

#include "platform/windowplacement.h"

#include <algorithm>

#include <windows.h>

namespace
{

HWND handleOf(const QWindow &window) { return reinterpret_cast<HWND>(window.winId()); }

bool isDown(int key) { return GetAsyncKeyState(key) < 0; }

} // namespace

// What this thread asks for arrives inside the call. What Windows or another program does arrives
// from another thread, inside a sent message or, with SWP_ASYNCWINDOWPOS, inside a notification
// (seen under Wine).
void WindowPlacement::interpretNativeEvent(void *message)
{
    const auto *msg = static_cast<const MSG *>(message);
    if (msg->message == WM_WINDOWPOSCHANGED && m_window && m_window->handle()
        && msg->hwnd == handleOf(*m_window) && InSendMessageEx(nullptr) != ISMEX_NOSEND)
        expectSystemChange();
}

void WindowPlacement::showWindow(bool on)
{
    ShowWindow(handleOf(*m_window), on ? SW_SHOW : SW_HIDE);
}

bool WindowPlacement::isShown() const
{
    return m_window->handle() && IsWindowVisible(handleOf(*m_window));
}

bool WindowPlacement::isAt(const QRect &geometry) const { return m_window->geometry() == geometry; }

void WindowPlacement::request(const QRect &geometry) { m_window->setGeometry(geometry); }

void WindowPlacement::reportPlace()
{
    // Qt knows it.
}

bool WindowPlacement::isHeldByButton() const
{
    constexpr int buttons[] = {VK_LBUTTON, VK_RBUTTON, VK_MBUTTON};
    POINT pointer{};
    RECT window{};
    return m_window->handle() && GetCursorPos(&pointer)
        && GetWindowRect(handleOf(*m_window), &window) && PtInRect(&window, pointer)
        && std::ranges::any_of(buttons, isDown);
}

bool WindowPlacement::isAnyKeyHeld()
{
    for (int key = VK_BACK; key <= VK_OEM_CLEAR; ++key) { // the mouse buttons come before these
        if (isDown(key))
            return true;
    }
    return false;
}
