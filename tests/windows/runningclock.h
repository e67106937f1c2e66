// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qjsonobject.h>
#include <QtCore/qlist.h>
#include <QtCore/qprocess.h>
#include <QtCore/qrect.h>
#include <QtCore/qstringlist.h>
#include <QtGui/qregion.h>

#include <optional>

#include <windows.h>

/// The settings of the clock under test, in the roaming folder of the Wine prefix, which belongs to
/// the tests.
namespace Settings
{

/// The folder of the maker, which holds that of the settings.
QString makerFolder();
QString folder();
/// Writes the configuration file; what \a settings does not name gets its default at start.
[[nodiscard]] bool write(const QJsonObject &settings);
/// The configuration file as it stands; empty without one.
QJsonObject read();
/// Settings with a place for the window, and whatever else \a others name.
QJsonObject geometry(int left, int top, int width, int height, const QJsonObject &others = {});
/// The window's geometry in the configuration file.
QRectF storedGeometry();

} // namespace Settings

/// The built program as a process of its own. The destructor ends it.
class RunningClock
{
public:
    explicit RunningClock(const QStringList &arguments = {});
    Q_DISABLE_COPY_MOVE(RunningClock)
    ~RunningClock();

    /// Waits until the clock window is on the screen. False if that never happens.
    [[nodiscard]] bool waitForWindow();
    /// Waits until the program ends by itself and returns its exit code; -1 if it goes on.
    [[nodiscard]] int waitForExit();
    bool isRunning();
    /// What the program has written since the last call.
    QByteArray output();

    HWND window() const { return m_window; }
    /// The visible windows of the program beside the clock, for example its menu.
    QList<HWND> otherWindows() const;
    /// Whether \a window is a menu or something like it.
    static bool isPopup(HWND window);
    /// The window of the program whose class has \a part in its name, visible or not; null without.
    HWND windowOfClass(QStringView part) const;

    /// The extended styles that the clock cares about.
    LONG_PTR styles() const;
    bool isVisible() const { return IsWindowVisible(m_window); }
    QRect geometry() const;
    /// Moves the window as another program does, with additional \a flags for SetWindowPos().
    void moveTo(QPoint position, UINT flags = 0) const;
    /// The window's mask, as much of it as lies in the window; none without a mask.
    std::optional<QRegion> mask() const;
    /// Sends a message to the window and returns what it answers.
    LRESULT send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;
    /// Posts a message to the window.
    void post(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const;

private:
    template <typename Wanted> QList<HWND> windows(Wanted wanted) const;

    QProcess m_process;
    HWND m_window = nullptr;
};
