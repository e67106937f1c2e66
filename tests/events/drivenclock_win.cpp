// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/events/drivenclock.h"

#include "tests/windows/runningclock.h"

#include <QtCore/qdir.h>
#include <QtCore/qfileinfo.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qpixmap.h>
#include <QtGui/qscreen.h>
#include <QtTest/qtestsystem.h>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace
{

// What Qt says of Wine, and of its own style on this system alone.
bool isKnown(QByteArrayView line)
{
    static const std::array parts{"Unable to open monitor interface"_ba,
        "EnableNonClientDpiScaling() failed"_ba,
        "qrc:/qt-project.org/imports/QtQuick/Controls/FluentWinUI3/"_ba};
    return std::ranges::any_of(
        parts, [line](const QByteArray &part) { return line.contains(part); });
}

QRect geometryOf(HWND window)
{
    RECT rect = {};
    GetWindowRect(window, &rect);
    return QRect(QPoint(rect.left, rect.top), QPoint(rect.right - 1, rect.bottom - 1));
}

// Without a host for tray icons Wine shows them in a window of its own, which lies over a part of
// the screen and gets the keyboard when another window closes.
void hideWinesTray()
{
    const HWND tray = FindWindowW(L"Shell_TrayWnd", nullptr);
    if (tray && DrivenClock::losesInput())
        ShowWindow(tray, SW_HIDE);
}

} // namespace

struct DrivenClock::Program {
    std::unique_ptr<RunningClock> clock;

    HWND window() const { return clock->window(); }
    // The oldest first: the later one lies above.
    QList<HWND> menus() const
    {
        QList<HWND> windows = clock->otherWindows();
        windows.removeIf([](HWND window) { return !RunningClock::isPopup(window); });
        std::reverse(windows.begin(), windows.end());
        return windows;
    }
    QList<HWND> dialogs() const
    {
        QList<HWND> windows = clock->otherWindows();
        windows.removeIf(RunningClock::isPopup);
        return windows;
    }
};

DrivenClock::DrivenClock(const QJsonObject &settings)
    : m_program(std::make_unique<Program>())
{
    qputenv("QT_FORCE_STDERR_LOGGING", "1"); // and not to the debugger
    QDir(Settings::makerFolder()).removeRecursively();
    if (!Settings::write(settings))
        qWarning("The settings cannot be written.");
}

// Wine has a managed window of what belongs on the taskbar, which the window manager moves back.
bool DrivenClock::canHangOverTheEdge() { return false; }

// By the function that Wine adds to this library.
bool DrivenClock::losesInput()
{
    return GetProcAddress(GetModuleHandleW(L"ntdll.dll"), "wine_get_version") != nullptr;
}

bool DrivenClock::mayHaveFrame() { return true; }

bool DrivenClock::hasTwoMonitors() { return false; }

bool DrivenClock::setUpMonitors() { return true; }

bool DrivenClock::isMonitorConnected() { return false; }

bool DrivenClock::connectMonitor([[maybe_unused]] bool on) { return false; }

DrivenClock::~DrivenClock()
{
    m_program.reset();
    QDir(Settings::makerFolder()).removeRecursively();
}

bool DrivenClock::start()
{
    m_program->clock = std::make_unique<RunningClock>();
    if (!m_program->clock->waitForWindow())
        return false;
    QTest::qWait(styleMs);
    hideWinesTray();
    return true;
}

std::optional<int> DrivenClock::waitForExit()
{
    const int code = m_program->clock->waitForExit();
    if (code != 0)
        qWarning("code %d", code);
    return code < 0 ? std::nullopt : std::optional(code); // that of a crash is negative as well
}

bool DrivenClock::isRunning() const { return m_program->clock->isRunning(); }

QByteArray DrivenClock::output()
{
    QByteArrayList lines = m_program->clock->output().replace('\r', "").split('\n');
    lines.removeIf(isKnown);
    return lines.join('\n');
}

QJsonObject DrivenClock::settings() const { return Settings::read(); }

QDateTime DrivenClock::settingsTime() const
{
    return QFileInfo(Settings::folder() + u"/config.json"_s).lastModified();
}

bool DrivenClock::isSeen() const
{
    return m_program->clock->isVisible() && !IsIconic(m_program->window());
}

// Without the frame for resizing that a clock has which was restored from the taskbar: Windows cuts
// it off together with the corners.
QRect DrivenClock::geometry() const
{
    RECT rect = {};
    GetClientRect(m_program->window(), &rect);
    POINT place = {};
    ClientToScreen(m_program->window(), &place);
    return QRect(place.x, place.y, rect.right, rect.bottom);
}

bool DrivenClock::isMasked() const { return m_program->clock->mask().has_value(); }

bool DrivenClock::isTopmost() const { return m_program->clock->styles() & WS_EX_TOPMOST; }

bool DrivenClock::isOnTaskbar() const { return m_program->clock->styles() & WS_EX_APPWINDOW; }

bool DrivenClock::hasKeyboard() const { return GetForegroundWindow() == m_program->window(); }

void DrivenClock::restore() const
{
    PostMessageW(m_program->window(), WM_SYSCOMMAND, SC_RESTORE, 0);
}

QList<QRect> DrivenClock::menus() const
{
    QList<QRect> result;
    const QList<HWND> menus = m_program->menus();
    for (const HWND menu : menus)
        result.append(geometryOf(menu));
    return result;
}

// Not that of the screen, where something else may lie above. The menu has see-through parts, and X
// ends a program that copies it at the moment in which Wine makes them so.
QImage DrivenClock::menuPicture() const
{
    constexpr int settleMs = 100;
    QTest::qWait(settleMs);
    const QList<HWND> menus = m_program->menus();
    return menus.isEmpty()
        ? QImage()
        : QGuiApplication::primaryScreen()->grabWindow(WId(menus.last())).toImage();
}

int DrivenClock::dialogs() const { return int(m_program->dialogs().size()); }

bool DrivenClock::dialogHasKeyboard() const
{
    return m_program->dialogs().contains(GetForegroundWindow());
}

void DrivenClock::closeDialogs() const
{
    const QList<HWND> dialogs = m_program->dialogs();
    for (const HWND dialog : dialogs)
        PostMessageW(dialog, WM_CLOSE, 0, 0);
}

bool DrivenClock::pressControl([[maybe_unused]] const QString &name) const { return false; }

bool DrivenClock::chooseInTray([[maybe_unused]] const QString &text) const { return false; }

// It seems that Wine hears late from the X server that a window has lost the keyboard. Nothing
// tells when it has.
void DrivenClock::settleFocus()
{
    constexpr int focusMs = 500;
    QTest::qWait(focusMs);
}
