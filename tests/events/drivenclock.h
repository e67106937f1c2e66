// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qbytearray.h>
#include <QtCore/qdatetime.h>
#include <QtCore/qjsonobject.h>
#include <QtCore/qlist.h>
#include <QtCore/qrect.h>
#include <QtGui/qimage.h>

#include <memory>
#include <optional>

/// The built program as a person at the screen has it: what can be seen of it, and what a taskbar
/// or a title bar may ask of it. Every system has its own file for this and for the hands.
class DrivenClock
{
public:
    /// Writes \a settings into a home that goes with this object. Nothing is started.
    explicit DrivenClock(const QJsonObject &settings);
    Q_DISABLE_COPY_MOVE(DrivenClock)
    ~DrivenClock();

    /// Whether a clock that lies on the screen only in part stays there, whatever else happens.
    static bool canHangOverTheEdge();
    /// Whether an input gets lost now and then, whatever the program does (Wine).
    static bool losesInput();
    /// Whether a clock on the taskbar may have a frame, with which it is kept on the screen (Wine).
    static bool mayHaveFrame();

    /// Whether there are two monitors side by side, of which the right one can be taken away. If
    /// so, a tray is there, too.
    static bool hasTwoMonitors();
    /// To be called once, before the first of them. False if the system has no room for them.
    [[nodiscard]] static bool setUpMonitors();
    static bool isMonitorConnected();
    /// Takes the right monitor away or brings it back, and waits until this program knows it.
    [[nodiscard]] static bool connectMonitor(bool on);

    /// Starts the program, and waits until the clock is seen, its menu has its style and its icon
    /// is in the tray if there is one. False if that never happens.
    [[nodiscard]] bool start();
    /// Waits until the program ends by itself and returns its exit code; none if it goes on or
    /// crashes.
    [[nodiscard]] std::optional<int> waitForExit();
    bool isRunning() const;
    /// What the program has written on its standard output and its error output.
    QByteArray output();
    /// The settings file as it stands; empty without one.
    QJsonObject settings() const;
    /// When that was written.
    QDateTime settingsTime() const;

    /// Whether the clock is on the screen and not minimised.
    bool isSeen() const;
    /// In pixels of the screen.
    QRect geometry() const;
    /// Whether its corners are cut off.
    bool isMasked() const;
    bool isTopmost() const;
    /// Whether it has an entry on the taskbar.
    bool isOnTaskbar() const;
    bool hasKeyboard() const;
    /// What a click on the entry of a minimised clock does.
    void restore() const;

    /// The open menus, the oldest first, in pixels of the screen.
    QList<QRect> menus() const;
    /// The menu that was opened last, as the program has painted it.
    QImage menuPicture() const;

    /// How many windows of the program are seen beside the clock and its menus.
    int dialogs() const;
    /// Whether one of them has the keyboard.
    bool dialogHasKeyboard() const;
    /// As the button of a title bar does.
    void closeDialogs() const;
    /// Uses a control of theirs, as a screen reader does.
    [[nodiscard]] bool pressControl(const QString &name) const;
    /// Chooses an entry of the icon's menu.
    [[nodiscard]] bool chooseInTray(const QString &text) const;
    /// To be called when one has gone: until the system knows where the keyboard is.
    static void settleFocus();

private:
    static constexpr int styleMs = 500; // from the window to the menu's style, with some to spare

    struct Program;
    std::unique_ptr<Program> m_program;
};
