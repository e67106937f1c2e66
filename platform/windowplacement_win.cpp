// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Windows, where a request has been carried out when it returns.

#include "platform/windowplacement.h"

#include <algorithm>

#include <windows.h>

namespace
{

HWND handleOf(const QWindow &window) { return reinterpret_cast<HWND>(window.winId()); }

} // namespace

// What this thread asks for arrives inside the call; what arrives from another one is the doing of
// Windows or of another program.
void WindowPlacement::interpretNativeEvent(void *message)
{
    const auto *msg = static_cast<const MSG *>(message);
    if (msg->message == WM_WINDOWPOSCHANGED && m_window && m_window->handle()
        && msg->hwnd == handleOf(*m_window) && (InSendMessageEx(nullptr) & ISMEX_SEND) != 0)
        hearNextChange();
}

void WindowPlacement::setOnDisplay(bool on)
{
    ShowWindow(handleOf(*m_window), on ? SW_SHOW : SW_HIDE);
}

bool WindowPlacement::isOnDisplay() const
{
    return m_window->handle() && IsWindowVisible(handleOf(*m_window));
}

bool WindowPlacement::isAt(const QRect &geometry) const { return m_window->geometry() == geometry; }

void WindowPlacement::request(const QRect &geometry) { m_window->setGeometry(geometry); }

void WindowPlacement::reportPlace()
{
    // Qt knows it.
}

bool WindowPlacement::isUserHoldingInput()
{
    constexpr int firstKey = VK_LBUTTON; // the mouse buttons have codes of their own
    constexpr int lastKey = VK_OEM_CLEAR;
    for (int key = firstKey; key <= lastKey; ++key) {
        if (GetAsyncKeyState(key) < 0)
            return true;
    }
    return false;
}
