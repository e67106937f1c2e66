// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The messages of Windows and what the filter does to its windows.

#include "platform/vsnativeeventfilter.h"

#include "config/vsconfig.h"

#include <QtCore/qdebug.h>

#include <windows.h>

namespace
{

HWND handleOf(WId window) { return reinterpret_cast<HWND>(window); }

} // namespace

bool VsNativeEventFilter::nativeEventFilter(
    [[maybe_unused]] const QByteArray &eventType, void *message, qintptr *result)
{
    m_placement.interpretNativeEvent(message);
    const auto *msg = static_cast<const MSG *>(message);
    const auto window = reinterpret_cast<WId>(msg->hwnd);
    bool consumed = false;
    switch (msg->message) {
    case WM_DISPLAYCHANGE: // goes to every top-level window and counts for whichever has it
        consumed = handleDisplayChange(window);
        break;
    case WM_DPICHANGED: // the clock keeps its size: neither Qt nor Windows gets to see it
        qDebug() << "DPI Changed";
        consumed = window == m_mainWindowId;
        break;
    case WM_QUERYENDSESSION:
        Q_EMIT requestToSaveConfig();
        break;
    case WM_SYSCOMMAND:
        if (msg->wParam == SC_MINIMIZE)
            Q_EMIT aboutToMinimize();
        break;
    case WM_SIZE: // the desktop key minimises without a command, and Qt hides a command that is
                  // sent
        if (window == m_mainWindowId && msg->wParam == SIZE_MINIMIZED && m_mainWindow
            && m_mainWindow->windowState() != Qt::WindowMinimized)
            Q_EMIT aboutToMinimize();
        break;
    default:
        break;
    }
    if (consumed && result) // there is none for a posted message
        *result = 1;
    return consumed;
}

void VsNativeEventFilter::startWatching()
{
    // The messages come by themselves.
}

QRect VsNativeEventFilter::windowRectangle(WId window) const
{
    RECT rect{};
    GetWindowRect(handleOf(window), &rect);
    return {QPoint(rect.left, rect.top), QPoint(rect.right, rect.bottom)};
}

bool VsNativeEventFilter::hasMonitor(WId window)
{
    return MonitorFromWindow(handleOf(window), MONITOR_DEFAULTTONULL) != nullptr;
}

// With the setting off the window's own geometry may be one that Windows chose before the rescue,
// which must not be restored as the user's.
QRect VsNativeEventFilter::clockGeometry()
{
    const bool keepsPlace = m_config && m_config->keepPositionWhenMonitorDetatched();
    return keepsPlace ? m_mainWindow->geometry() : m_placement.wanted();
}

void VsNativeEventFilter::showWindow(WId window) { ShowWindow(handleOf(window), SW_SHOW); }

void VsNativeEventFilter::hideWindow(WId window) { ShowWindow(handleOf(window), SW_HIDE); }

void VsNativeEventFilter::moveByOneAndBack(WId window, QPoint topLeft)
{
    constexpr UINT flags = SWP_NOSIZE | SWP_ASYNCWINDOWPOS;
    const HWND hwnd = handleOf(window);
    SetWindowPos(hwnd, nullptr, topLeft.x() + 1, topLeft.y() + 1, 0, 0, flags);
    SetWindowPos(hwnd, nullptr, topLeft.x(), topLeft.y(), 0, 0, flags);
}
