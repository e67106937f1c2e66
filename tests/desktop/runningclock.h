// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/desktop/xwindow.h"

#include <QtCore/qdatetime.h>
#include <QtCore/qjsonobject.h>
#include <QtCore/qmap.h>
#include <QtCore/qprocess.h>
#include <QtCore/qstringlist.h>
#include <QtCore/qtemporarydir.h>
#include <QtGui/qimage.h>

#include <optional>

/// A home folder for the clock under test; gone with the object.
class ClockHome
{
public:
    QString path() const { return m_folder.path(); }
    /// The folder of the maker, which holds that of the settings.
    QString makerFolder() const;
    QString settingsFolder() const;
    /// Writes the configuration file; what \a settings does not name gets its default at start.
    bool writeSettings(const QJsonObject &settings) const;
    /// The configuration file as it stands; empty without one.
    QJsonObject settings() const;
    /// The window's geometry in that file.
    QRectF storedGeometry() const;

private:
    QTemporaryDir m_folder;
};

/// Settings with a place for the window, and whatever else \a others name.
QJsonObject settingsAt(QRectF geometry, const QJsonObject &others = {});

/// What a clock is started with beside its home.
struct ClockStart {
    QStringList arguments = {};
    /// Added to the environment of the test; an empty value takes a variable away.
    QMap<QString, QString> environment = {};
    /// Another one by the variable VESPER_PROGRAM, for example that of a build with the sanitizers.
    QString program = qEnvironmentVariable("VESPER_PROGRAM", QStringLiteral(VESPER_PROGRAM));
};

/// An environment in which the time stands still at \a dateTime, for example 2026-11-15 10:08:42.
QMap<QString, QString> timeStandingAt(const QString &dateTime);
/// The same, with the time in a file: writing another into it makes the clock step.
QMap<QString, QString> timeStandingIn(const QString &file);
/// An environment in which it is \a start at this moment, and time goes on from there.
QMap<QString, QString> timeRunningFrom(const QDateTime &start);

/// The built program as a process of its own. The destructor ends it.
class RunningClock
{
public:
    explicit RunningClock(const ClockHome &home, const ClockStart &start = {});
    Q_DISABLE_COPY_MOVE(RunningClock)
    ~RunningClock();

    /// Waits until the clock window is on the screen and painted. False if that never happens.
    [[nodiscard]] bool waitForWindow();
    /// The same for a window that lies on no screen, where nothing can be seen.
    [[nodiscard]] bool waitForMappedWindow();
    /// Waits until the program ends by itself and returns its exit code; none if it goes on or
    /// crashes.
    [[nodiscard]] std::optional<int> waitForExit();

    /// Drags the clock by its middle until its corner is at \a topLeft, as a user would. False if
    /// it does not get there.
    [[nodiscard]] bool dragTo(QPoint topLeft) const;
    /// Uses a control of its windows as a screen reader does. The program has to be started with
    /// QT_LINUX_ACCESSIBILITY_ALWAYS_ON=1.
    [[nodiscard]] bool pressControl(const QString &name) const;
    /// Sends \a signal to the program.
    void signal(int signal) const;

    bool isRunning() const { return m_process.state() == QProcess::Running; }
    XWindow window() const { return m_window; }
    qint64 pid() const { return m_process.processId(); }
    /// Everything that the program has written so far, but for what Qt says of every icon in a tray
    /// of the older kind: it shows the icon before it loads the picture.
    QByteArray output();
    /// Processor time that the program has used, in ms.
    qint64 processorTimeMs() const;
    /// How often its main thread has gone to sleep.
    qint64 rests() const;
    qsizetype openFiles() const;
    /// Memory that nobody shares with it and that it has written to.
    qint64 privateKiB() const;
    /// The screen at the place of the window.
    QImage picture() const;
    /// Whether the picture changes within the next three seconds.
    [[nodiscard]] bool ticks() const;
    /// The same, when it no longer changes: of a clock that stands still. Null if it goes on
    /// changing.
    QImage stillPicture() const;

private:
    bool hasMappedWindow();

    QProcess m_process;
    XWindow m_window;
    QByteArray m_output;
};

/// The mask of a round clock, as much of it as lies in the window.
QRegion circle(int side);

/// A part of the screen, in pixels of the screen.
QImage screenPicture(QRect rectangle);
