// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Windows tells every window that asks for it. A screen saver locks the session, or a touch ends
// it.

#include "platform/sessionlock.h"

#include <windows.h>
#include <wtsapi32.h>

/// A window of its own, never shown: that of the clock is made anew when Qt likes.
class SessionLockSource
{
public:
    explicit SessionLockSource(SessionLock *lock);
    Q_DISABLE_COPY_MOVE(SessionLockSource)
    ~SessionLockSource();

private:
    static LRESULT CALLBACK handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam);

    HWND m_window;
};

SessionLockSource::SessionLockSource(SessionLock *lock)
{
    constexpr const wchar_t *name = L"VesperSessionLock";
    WNDCLASSW windowClass{};
    windowClass.lpfnWndProc = handle;
    windowClass.hInstance = GetModuleHandleW(nullptr);
    windowClass.lpszClassName = name;
    RegisterClassW(&windowClass);
    m_window = CreateWindowExW(
        0, name, nullptr, WS_POPUP, 0, 0, 0, 0, nullptr, nullptr, windowClass.hInstance, nullptr);
    SetWindowLongPtrW(m_window, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(lock));
    WTSRegisterSessionNotification(m_window, NOTIFY_FOR_THIS_SESSION);
}

SessionLockSource::~SessionLockSource()
{
    WTSUnRegisterSessionNotification(m_window);
    DestroyWindow(m_window);
}

LRESULT CALLBACK SessionLockSource::handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam)
{
    auto *const lock = reinterpret_cast<SessionLock *>(GetWindowLongPtrW(window, GWLP_USERDATA));
    if (lock && message == WM_WTSSESSION_CHANGE) {
        if (wParam == WTS_SESSION_LOCK)
            lock->setLocked(true);
        else if (wParam == WTS_SESSION_UNLOCK)
            lock->setLocked(false);
    }
    return DefWindowProcW(window, message, wParam, lParam);
}

SessionLock::SessionLock(QObject *parent)
    : QObject(parent)
    , m_source(std::make_unique<SessionLockSource>(this))
{
}

SessionLock::~SessionLock() = default;
