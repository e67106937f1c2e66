// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/events/drivenclock.h"

#include "tests/windows/runningclock.h"
#include "tests/windows/windowsinput.h"

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

constexpr int answerMs = 1000;

WindowsInput::Button buttonOf(Hands::Button button)
{
    return button == Hands::Button::Left ? WindowsInput::Button::Left : WindowsInput::Button::Right;
}

WORD keyOf(Hands::Key key)
{
    switch (key) {
    case Hands::Key::Return:
        return VK_RETURN;
    case Hands::Key::Escape:
        return VK_ESCAPE;
    case Hands::Key::Left:
        return VK_LEFT;
    case Hands::Key::Right:
        return VK_RIGHT;
    case Hands::Key::Up:
        return VK_UP;
    case Hands::Key::Down:
        return VK_DOWN;
    case Hands::Key::Tab:
        return VK_TAB;
    case Hands::Key::Space:
        return VK_SPACE;
    case Hands::Key::M:
        return 'M';
    case Hands::Key::F5:
        return VK_F5;
    case Hands::Key::Menu:
        return VK_APPS;
    case Hands::Key::Control:
        return VK_CONTROL;
    }
    Q_UNREACHABLE_RETURN(VK_ESCAPE);
}

GUITHREADINFO threadOf(HWND window)
{
    GUITHREADINFO info = {};
    info.cbSize = sizeof(info);
    GetGUIThreadInfo(GetWindowThreadProcessId(window, nullptr), &info);
    return info;
}

QPoint pointer()
{
    POINT point = {};
    GetCursorPos(&point);
    return {point.x, point.y};
}

HWND windowUnderPointer() { return WindowFromPoint({pointer().x(), pointer().y()}); }

// Faster, presses and turns of the wheel get lost: it seems that Wine remembers for 50 ms which
// buttons and keys are down, for a program that asks.
void waitAsAHand() { QTest::qWait(60); }

// As Windows does with a window that is pressed. Wine does it only when the program does not take the
// window for active; when a dialog closes, the keyboard may go to Wine's own tray, and the program
// never gets to know. A drag would end where the pointer leaves the clock.
void makeForeground(HWND window)
{
    const auto isForeground = [window] {
        SetForegroundWindow(window);
        return GetForegroundWindow() == window;
    };
    if (threadOf(window).hwndActive == window && !QTest::qWaitFor(isForeground, answerMs))
        qInfo("Wine keeps the keyboard.");
}

bool isOfAProgram(HWND window) { return window != GetDesktopWindow(); }

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

DrivenClock::~DrivenClock()
{
    m_program.reset();
    QDir(Settings::makerFolder()).removeRecursively();
}

bool DrivenClock::start()
{
    constexpr int styleMs = 500; // with some to spare
    m_program->clock = std::make_unique<RunningClock>();
    if (!m_program->clock->waitForWindow())
        return false;
    QTest::qWait(styleMs);
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

// It seems that Wine hears late from the X server that a window has lost the keyboard.
void DrivenClock::settleFocus()
{
    constexpr int focusMs = 500;
    QTest::qWait(focusMs);
}

namespace Hands
{

namespace
{

std::optional<Key> heldKey;
bool isDragging = false;

// As a key that is held does. Wine seems to take it for released whenever a window comes to the
// pointer, because the X server has never seen it pressed.
void repeatHeldKey()
{
    if (heldKey)
        WindowsInput::hold(keyOf(*heldKey));
}

} // namespace

void moveTo(QPoint point)
{
    repeatHeldKey();
    WindowsInput::moveTo(point);
    // A window that belongs on the taskbar hears from the X server where it was, and Wine moves it
    // back there when that comes after the next move.
    if (isDragging)
        waitAsAHand();
}

// Wine gives input to a window when it is sent: what follows a press reaches the window that has
// been pressed only once that has taken the mouse. Not every window does.
void press(Button button)
{
    const HWND window = windowUnderPointer();
    const auto isTaken = [window] { return threadOf(window).hwndCapture != nullptr; };
    waitAsAHand();
    makeForeground(window);
    repeatHeldKey();
    WindowsInput::press(buttonOf(button));
    isDragging = true;
    if (isOfAProgram(window) && !QTest::qWaitFor(isTaken, answerMs))
        qInfo("A press has no effect.");
}

void release(Button button)
{
    WindowsInput::release(buttonOf(button));
    isDragging = false;
    waitAsAHand();
}

void click(QPoint point, Button button)
{
    moveTo(point);
    press(button);
    release(button);
}

void turnWheel(int notches)
{
    repeatHeldKey();
    WindowsInput::turnWheel(notches);
    waitAsAHand();
}

void type(Key key) { WindowsInput::type(keyOf(key)); }

// Windows gives the wheel to the window under the pointer, Wine to the active one, which alone gets
// to know of the key, too. Now and then Wine does not heed the wish, but a click always works.
void hold(Key key)
{
    const HWND window = windowUnderPointer();
    const auto hasFocus = [window] {
        SetForegroundWindow(window);
        return GetForegroundWindow() == window && threadOf(window).hwndFocus == window;
    };
    if (isOfAProgram(window) && !QTest::qWaitFor(hasFocus, answerMs))
        click(pointer());
    heldKey = key;
    repeatHeldKey();
    waitAsAHand();
}

void letGo(Key key)
{
    heldKey.reset();
    WindowsInput::letGo(keyOf(key));
}

} // namespace Hands
