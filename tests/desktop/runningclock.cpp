// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/desktop/runningclock.h"

#include "tests/desktop/xinput.h"

#include "config/maker.h"
#include "tests/desktop/processmemory.h"

#include <QtCore/qdir.h>
#include <QtCore/qelapsedtimer.h>
#include <QtCore/qfile.h>
#include <QtCore/qjsondocument.h>
#include <QtCore/qregularexpression.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qpixmap.h>
#include <QtGui/qscreen.h>
#include <QtTest/qtestsystem.h>

#include <csignal>

#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{

constexpr int limitMs = 30'000; // for a machine that has more to do
constexpr int pollMs = 20;
constexpr int endMs = 5'000;

QProcessEnvironment environmentIn(const ClockHome &home, const QMap<QString, QString> &additions)
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"HOME"_s, home.path());
    for (const QString &name : {u"XDG_DATA_HOME"_s, u"XDG_CONFIG_HOME"_s, u"XDG_CACHE_HOME"_s,
             u"LANGUAGE"_s, u"LC_ALL"_s, u"LC_TIME"_s, u"LC_MESSAGES"_s})
        environment.remove(name);
    environment.insert(u"LANG"_s, u"C.UTF-8"_s);
    environment.insert(u"TZ"_s, u"UTC"_s);
    for (const auto &[name, value] : additions.asKeyValueRange()) {
        if (value.isEmpty())
            environment.remove(name);
        else
            environment.insert(name, value);
    }
    return environment;
}

// A number of a file that proc(5) describes, in its unit; -1 where it has none.
qint64 numberOf(const QString &path, const QString &name)
{
    QFile file(path);
    if (!file.open(QFile::ReadOnly))
        return -1;
    const QRegularExpression line(
        u'^' + name + u":\\s+(\\d+)"_s, QRegularExpression::MultilineOption);
    const auto match = line.match(QString::fromLatin1(file.readAll()));
    return match.hasMatch() ? match.captured(1).toLongLong() : -1;
}

// The variables of libfaketime, which comes before the library of the address sanitizer. By hand
// and not by the faketime command, which would stand between the test and the program.
QMap<QString, QString> fakeTime(const QString &variable, const QString &value)
{
    return {
        {u"LD_PRELOAD"_s, u"/usr/$LIB/faketime/libfaketime.so.1"_s},
        {variable, value},
        {u"FAKETIME_DONT_FAKE_MONOTONIC"_s, u"1"_s}, // timers run by the real time
        {u"NO_FAKE_STAT"_s, u"1"_s},
        {u"ASAN_OPTIONS"_s, qEnvironmentVariable("ASAN_OPTIONS") + u":verify_asan_link_order=0"_s},
    };
}

} // namespace

QString ClockHome::makerFolder() const
{
    return path() + u"/.local/share/"_s + Maker::organizationDomain;
}

QString ClockHome::settingsFolder() const { return makerFolder() + u"/Vesper"_s; }

bool ClockHome::writeSettings(const QJsonObject &settings) const
{
    QFile file(settingsFolder() + u"/config.json"_s);
    return QDir().mkpath(settingsFolder()) && file.open(QFile::WriteOnly)
        && file.write(QJsonDocument(settings).toJson()) > 0;
}

QJsonObject ClockHome::settings() const
{
    QFile file(settingsFolder() + u"/config.json"_s);
    return file.open(QFile::ReadOnly) ? QJsonDocument::fromJson(file.readAll()).object()
                                      : QJsonObject();
}

QRectF ClockHome::storedGeometry() const
{
    const QJsonObject group = settings()[u"Geometry"_s].toObject();
    return {group[u"Left"_s].toDouble(), group[u"Top"_s].toDouble(), group[u"Width"_s].toDouble(),
        group[u"Height"_s].toDouble()};
}

QJsonObject settingsAt(QRectF geometry, const QJsonObject &others)
{
    QJsonObject settings = others;
    settings.insert(u"Geometry"_s,
        QJsonObject{{u"Left"_s, geometry.x()}, {u"Top"_s, geometry.y()},
            {u"Width"_s, geometry.width()}, {u"Height"_s, geometry.height()}});
    return settings;
}

QMap<QString, QString> timeStandingAt(const QString &dateTime)
{
    return fakeTime(u"FAKETIME"_s, dateTime);
}

QMap<QString, QString> timeStandingIn(const QString &file)
{
    auto environment = fakeTime(u"FAKETIME_TIMESTAMP_FILE"_s, file);
    environment.insert(u"FAKETIME_NO_CACHE"_s, u"1"_s);
    return environment;
}

QMap<QString, QString> timeRunningFrom(const QDateTime &start)
{
    // As a difference: a local time can mean two instants.
    const double seconds = double(QDateTime::currentDateTimeUtc().msecsTo(start)) / 1000.0;
    return fakeTime(
        u"FAKETIME"_s, (seconds < 0 ? u""_s : u"+"_s) + QString::number(seconds, 'f', 3));
}

RunningClock::RunningClock(const ClockHome &home, const ClockStart &start)
{
    m_process.setProcessEnvironment(environmentIn(home, start.environment));
    m_process.setProcessChannelMode(QProcess::MergedChannels);
    m_process.start(start.program, start.arguments);
}

RunningClock::~RunningClock()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.terminate();
    if (!m_process.waitForFinished(endMs)) {
        m_process.kill();
        m_process.waitForFinished(endMs);
    }
}

bool RunningClock::hasMappedWindow()
{
    if (!m_window)
        m_window = XWindow::ofProcess(m_process.processId());
    return m_window && m_window.isMapped();
}

bool RunningClock::waitForMappedWindow()
{
    return QTest::qWaitFor([this] { return hasMappedWindow(); }, limitMs) && isRunning();
}

bool RunningClock::waitForWindow()
{
    const auto isPainted = [this] {
        if (!hasMappedWindow())
            return false;
        // The wallpaper is one plain colour, so whatever differs from its pixel is painted.
        const QImage here = picture();
        QImage bare(here.size(), here.format());
        bare.fill(screenPicture(QRect(0, 0, 1, 1)).pixelColor(0, 0));
        return here != bare;
    };
    const auto isOver = [this] { return m_process.state() == QProcess::NotRunning; };
    return QTest::qWaitFor([&] { return isOver() || isPainted(); }, limitMs) && !isOver();
}

std::optional<int> RunningClock::waitForExit()
{
    if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(limitMs))
        return std::nullopt;
    if (m_process.error() == QProcess::FailedToStart
        || m_process.exitStatus() != QProcess::NormalExit)
        return std::nullopt;
    return m_process.exitCode();
}

bool RunningClock::dragTo(QPoint topLeft) const
{
    const QRect from = m_window.geometry();
    XInput::drag({from.center(), from.center() + topLeft - from.topLeft()});
    return QTest::qWaitFor(
        [&] { return m_window.geometry() == QRect(topLeft, from.size()); }, limitMs);
}

bool RunningClock::pressControl(const QString &name) const
{
    QProcess script;
    script.setProcessChannelMode(QProcess::ForwardedChannels);
    script.start(u"python3"_s,
        {u"-B"_s, u"-Wignore"_s,
            QStringLiteral(VESPER_SOURCE_FOLDER "/tests/desktop/accessible_press.py"),
            QString::number(pid()), name});
    return script.waitForFinished() && script.exitStatus() == QProcess::NormalExit
        && script.exitCode() == 0;
}

void RunningClock::signal(int signal) const { ::kill(pid_t(pid()), signal); }

QByteArray RunningClock::output()
{
    m_output += m_process.readAll();
    return m_output.replace("QSystemTrayIcon::setVisible: No Icon set\n", "");
}

qint64 RunningClock::processorTimeMs() const
{
    QFile file(u"/proc/%1/stat"_s.arg(pid()));
    if (!file.open(QFile::ReadOnly))
        return 0;
    // proc(5): utime and stime are fields 14 and 15, and the second field ends with the last ')'.
    const QByteArray line = file.readAll();
    const QByteArrayList fields = line.mid(line.lastIndexOf(')') + 2).split(' ');
    return (fields.value(11).toLongLong() + fields.value(12).toLongLong()) * 1000
        / sysconf(_SC_CLK_TCK);
}

qint64 RunningClock::rests() const
{
    return numberOf(u"/proc/%1/status"_s.arg(pid()), u"voluntary_ctxt_switches"_s);
}

qint64 RunningClock::privateKiB() const { return qint64(privateMiB(pid()) * 1024); }

qsizetype RunningClock::openFiles() const
{
    return QDir(u"/proc/%1/fd"_s.arg(pid()))
        .entryList(QDir::AllEntries | QDir::System | QDir::NoDotAndDotDot)
        .size();
}

QImage RunningClock::picture() const { return screenPicture(m_window.geometry()); }

QImage RunningClock::stillPicture() const
{
    constexpr int stillMs = 300;
    QImage last = picture();
    QElapsedTimer still, total;
    still.start();
    total.start();
    while (still.elapsed() < stillMs) {
        if (total.elapsed() > limitMs)
            return {};
        QTest::qWait(pollMs);
        if (QImage next = picture(); next != last) {
            last = next;
            still.restart();
        }
    }
    return last;
}

bool RunningClock::ticks() const
{
    const QImage before = picture();
    return QTest::qWaitFor([&] { return picture() != before; }, 3000);
}

QRegion circle(int side)
{
    // The ellipse begins one pixel to the left of the window and above it.
    return QRegion(-1, -1, side + 1, side + 1, QRegion::Ellipse) & QRect(0, 0, side, side);
}

QImage screenPicture(QRect rectangle)
{
    return QGuiApplication::primaryScreen()
        ->grabWindow(0, rectangle.x(), rectangle.y(), rectangle.width(), rectangle.height())
        .toImage()
        .convertToFormat(QImage::Format_RGB32);
}
