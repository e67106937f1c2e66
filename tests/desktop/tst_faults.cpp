// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// What the clock needs and does not get: a whole settings file, room on the disk, a home, a session
// bus, processor time, its X server. It says nothing of these and goes on as long as it can.
// VESPER_SUSPENDED_SECONDS is how long it is suspended.

#include "tests/desktop/clockmenu.h"
#include "tests/desktop/runningclock.h"

#include <QtCore/qdir.h>
#include <QtCore/qfile.h>
#include <QtCore/qjsondocument.h>
#include <QtTest/qtest.h>

#include <atomic>
#include <csignal>
#include <memory>
#include <thread>

#include <fcntl.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{

constexpr QRect place(420, 310, 240, 240);
constexpr QRect otherPlace(901, 203, 240, 240);
constexpr QSize ownSize(320, 320); // without settings
const QString nowhere = u"/dev/null/nowhere"_s;
const QString failingDisk = QStringLiteral(VESPER_SOURCE_FOLDER "/tests/desktop/failing_disk.py");

ClockStart startOnFailingDisk(const QString &failure, const QString &folder)
{
    return {.arguments = {failure, folder, QStringLiteral(VESPER_PROGRAM)}, .program = failingDisk};
}

bool writeText(const QString &path, const QByteArray &text)
{
    QFile file(path);
    return file.open(QFile::WriteOnly) && file.write(text) == text.size();
}

QByteArray textOf(const QString &path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

QRectF geometryIn(const QByteArray &settings)
{
    const QJsonObject group = QJsonDocument::fromJson(settings)["Geometry"_L1].toObject();
    return {group["Left"_L1].toDouble(), group["Top"_L1].toDouble(), group["Width"_L1].toDouble(),
        group["Height"_L1].toDouble()};
}

// A folder as a process sees it, which may have another disk there; also when the process is gone.
class FolderOfProcess
{
public:
    FolderOfProcess(qint64 pid, const QString &path)
        : m_folder(open(QFile::encodeName(u"/proc/%1/root%2"_s.arg(pid).arg(path)).constData(),
              O_PATH | O_DIRECTORY | O_CLOEXEC))
    {
    }
    ~FolderOfProcess() { close(m_folder); }
    Q_DISABLE_COPY_MOVE(FolderOfProcess)

    explicit operator bool() const { return m_folder >= 0; }
    QString path(const QString &name) const
    {
        return u"/proc/self/fd/%1/%2"_s.arg(m_folder).arg(name);
    }

private:
    int m_folder;
};

// Takes the room on a full disk whenever there is some.
class Greed
{
public:
    explicit Greed(const QString &path)
        : m_file(open(QFile::encodeName(path).constData(), O_WRONLY | O_CREAT | O_APPEND, 0600))
        , m_thread([this] {
            const QByteArray page(4096, 'x');
            while (!m_isOver)
                m_hasTaken = write(m_file, page.constData(), size_t(page.size())) > 0 || m_hasTaken;
        })
    {
    }
    ~Greed()
    {
        m_isOver = true;
        m_thread.join();
        close(m_file);
    }
    Q_DISABLE_COPY_MOVE(Greed)

    bool isWriting() const { return m_file >= 0; }
    bool hasTaken() const { return m_hasTaken; }

private:
    int m_file;
    std::atomic<bool> m_isOver = false;
    std::atomic<bool> m_hasTaken = false;
    std::jthread m_thread;
};

// An X server beside that of the test.
class OwnServer
{
public:
    OwnServer()
    {
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start(u"Xvfb"_s,
            {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"1200x900x24"_s, u"-nolisten"_s,
                u"tcp"_s, u"-noreset"_s});
        if (m_process.waitForReadyRead())
            m_display = u':' + QString::fromLatin1(m_process.readLine().trimmed());
    }
    ~OwnServer() { end(SIGKILL); }
    Q_DISABLE_COPY_MOVE(OwnServer)

    QString display() const { return m_display; }
    bool showsWindowOf(qint64 pid) const
    {
        QProcess xdotool;
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DISPLAY"_s, m_display);
        xdotool.setProcessEnvironment(environment);
        xdotool.start(
            u"xdotool"_s, {u"search"_s, u"--onlyvisible"_s, u"--pid"_s, QString::number(pid)});
        return xdotool.waitForFinished() && xdotool.exitStatus() == QProcess::NormalExit
            && xdotool.exitCode() == 0;
    }
    void end(int signal)
    {
        if (m_process.state() == QProcess::NotRunning)
            return;
        ::kill(pid_t(m_process.processId()), signal);
        m_process.waitForFinished();
    }

private:
    QProcess m_process;
    QString m_display;
};

} // namespace

class TestFaults : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }

    void brokenSettings_data();
    void brokenSettings();
    void homeThatCannotBeUsed_data();
    void homeThatCannotBeUsed();
    void readOnlySettings();
    void fullDisk_data();
    void fullDisk();
    void roomThatSomebodyElseTakes();
    void noBus_data();
    void noBus();
    void twoClocksAtOnce();
    void twoClocksThatEndTogether();
    void suspended();
    void xServerGone_data();
    void xServerGone();
};

void TestFaults::brokenSettings_data()
{
    QTest::addColumn<QByteArray>("text");

    // As a clock leaves it that is killed while it saves.
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("cut off") << QByteArray("{\n    \"AutoCheckUpdate\": true,\n    \"Disp");
}

void TestFaults::brokenSettings()
{
    QFETCH(QByteArray, text);

    const ClockHome home;
    const QString file = home.settingsFolder() + u"/config.json"_s;
    QVERIFY(QDir().mkpath(home.settingsFolder()) && writeText(file, text));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    QCOMPARE(clock.window().geometry().size(), ownSize);
    QVERIFY(clock.ticks());
    QCOMPARE(textOf(file), text);
    clock.signal(SIGTERM);
    QCOMPARE(clock.waitForExit(), 0);
    QCOMPARE(home.storedGeometry().size(), QSizeF(ownSize));
    QCOMPARE(clock.output(), QByteArray());
}

void TestFaults::homeThatCannotBeUsed_data()
{
    QTest::addColumn<QString>("variable"); // HOME; empty: not set

    QTest::newRow("read-only") << u"the home"_s;
    QTest::newRow("not set") << QString();
    QTest::newRow("that is nowhere") << nowhere;
    QTest::newRow("that is a file") << u"/dev/null"_s;
}

void TestFaults::homeThatCannotBeUsed()
{
    QFETCH(QString, variable);

    const ClockHome home;
    // Without a home the clock looks at the root of all files, which root could write.
    ClockStart start = startOnFailingDisk(
        u"read-only"_s, variable == "the home"_L1 ? home.path() : QDir::rootPath());
    if (variable != "the home"_L1)
        start.environment = {{u"HOME"_s, variable}};
    RunningClock clock(home, start);
    QVERIFY(clock.waitForWindow());
    QCOMPARE(clock.window().geometry().size(), ownSize);
    QVERIFY(clock.dragTo(otherPlace.topLeft()));
    QVERIFY(clock.ticks());
    QVERIFY(ClockMenu::choose(clock.window().geometry().center(), ClockMenu::Quit));
    QCOMPARE(clock.waitForExit(), 0);
    QCOMPARE(QDir(home.path()).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot),
        QStringList());
    QCOMPARE(clock.output(), QByteArray());
}

void TestFaults::readOnlySettings()
{
    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place)));
    RunningClock clock(home, startOnFailingDisk(u"read-only"_s, home.path()));
    QVERIFY(clock.waitForWindow());
    QCOMPARE(clock.window().geometry(), place);
    QVERIFY(clock.dragTo(otherPlace.topLeft()));
    clock.signal(SIGTERM);
    QCOMPARE(clock.waitForExit(), 0);
    QCOMPARE(home.settings(), settingsAt(place));
    QCOMPARE(clock.output(), QByteArray());
}

void TestFaults::fullDisk_data()
{
    QTest::addColumn<bool>("isFirstStart");

    QTest::newRow("with settings") << false;
    QTest::newRow("without") << true;
}

void TestFaults::fullDisk()
{
    QFETCH(bool, isFirstStart);

    const ClockHome home;
    QVERIFY(QDir().mkpath(home.settingsFolder()));
    QVERIFY(isFirstStart || home.writeSettings(settingsAt(place)));
    RunningClock clock(home, startOnFailingDisk(u"full"_s, home.makerFolder()));
    QVERIFY(clock.waitForWindow());
    if (!isFirstStart)
        QCOMPARE(clock.window().geometry(), place);
    const FolderOfProcess folder(clock.pid(), home.settingsFolder());
    QVERIFY(folder);
    QVERIFY(clock.dragTo(otherPlace.topLeft()));
    QVERIFY(clock.ticks());
    clock.signal(SIGTERM);
    QCOMPARE(clock.waitForExit(), 0);
    // What is overwritten gives its room back first. A new file finds none.
    QVERIFY(QFileInfo::exists(folder.path(u"config.json"_s)));
    if (isFirstStart)
        QCOMPARE(textOf(folder.path(u"config.json"_s)), QByteArray());
    else
        QCOMPARE(geometryIn(textOf(folder.path(u"config.json"_s))), QRectF(otherPlace));
    QCOMPARE(clock.output(), QByteArray());
}

void TestFaults::roomThatSomebodyElseTakes()
{
    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place)));
    RunningClock clock(home, startOnFailingDisk(u"full"_s, home.makerFolder()));
    QVERIFY(clock.waitForWindow());
    const FolderOfProcess folder(clock.pid(), home.settingsFolder());
    QVERIFY(folder);
    const Greed greed(folder.path(u"greed"_s));
    QVERIFY(greed.isWriting());
    QVERIFY(clock.dragTo(otherPlace.topLeft()));
    clock.signal(SIGTERM);
    QCOMPARE(clock.waitForExit(), 0);
    // The other program may also have been too slow.
    const QByteArray settings = textOf(folder.path(u"config.json"_s));
    qInfo("settings %s", greed.hasTaken() ? "lost" : "saved");
    if (greed.hasTaken())
        QCOMPARE(settings, QByteArray());
    else
        QCOMPARE(geometryIn(settings), QRectF(otherPlace));
    QCOMPARE(clock.output(), QByteArray());
}

void TestFaults::noBus_data()
{
    QTest::addColumn<QString>("address");

    QTest::newRow("no address") << QString();
    QTest::newRow("nobody there") << u"unix:path="_s + nowhere;
}

void TestFaults::noBus()
{
    QFETCH(QString, address);

    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place)));
    const QMap<QString, QString> environment{
        {u"DBUS_SESSION_BUS_ADDRESS"_s, address},
        {u"DBUS_SYSTEM_BUS_ADDRESS"_s, u"unix:path="_s + nowhere},
        {u"XDG_RUNTIME_DIR"_s, home.path()}, // where a bus without an address is looked for
    };
    RunningClock clock(home, {.environment = environment});
    QVERIFY(clock.waitForWindow());
    QCOMPARE(clock.window().geometry(), place);
    QVERIFY(clock.ticks());
    QVERIFY(clock.dragTo(otherPlace.topLeft()));
    QVERIFY(ClockMenu::choose(otherPlace.center(), ClockMenu::Quit));
    QCOMPARE(clock.waitForExit(), 0);
    QCOMPARE(home.storedGeometry(), QRectF(otherPlace));
    QCOMPARE(clock.output(), QByteArray());
}

void TestFaults::twoClocksAtOnce()
{
    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place)));
    RunningClock first(home);
    QVERIFY(first.waitForWindow());
    QCOMPARE(first.window().geometry(), place);
    QVERIFY(first.dragTo(otherPlace.topLeft()));
    RunningClock second(home);
    QVERIFY(second.waitForWindow());
    QCOMPARE(second.window().geometry(), place);
    QVERIFY(first.ticks());
    QVERIFY(second.ticks());
    // Whoever saves last has the last word.
    first.signal(SIGTERM);
    QCOMPARE(first.waitForExit(), 0);
    QCOMPARE(home.storedGeometry(), QRectF(otherPlace));
    QVERIFY(second.ticks());
    second.signal(SIGTERM);
    QCOMPARE(second.waitForExit(), 0);
    QCOMPARE(home.storedGeometry(), QRectF(place));
}

void TestFaults::twoClocksThatEndTogether()
{
    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place)));
    {
        RunningClock first(home);
        QVERIFY(first.waitForWindow());
        QVERIFY(first.dragTo(otherPlace.topLeft()));
        RunningClock second(home);
        QVERIFY(second.waitForWindow());
        first.signal(SIGTERM);
        second.signal(SIGTERM);
        QCOMPARE(first.waitForExit(), 0);
        QCOMPARE(second.waitForExit(), 0);
    }
    // Both may have written into one file at the same moment, which need not be JSON then.
    const QJsonObject settings = home.settings();
    const QRectF stored = home.storedGeometry();
    qInfo("settings %s", settings.isEmpty() ? "lost" : "saved");
    QVERIFY(settings.isEmpty() || stored == QRectF(place) || stored == QRectF(otherPlace));
    RunningClock next(home);
    QVERIFY(next.waitForWindow());
    if (settings.isEmpty())
        QCOMPARE(next.window().geometry().size(), ownSize);
    else
        QCOMPARE(QRectF(next.window().geometry()), stored);
}

void TestFaults::suspended()
{
    constexpr int lookMs = 2000;
    const QByteArray now = "+0";
    const QByteArray later = "+600"; // seconds, beside those that it is really suspended
    const int seconds = std::max(5, qEnvironmentVariableIntValue("VESPER_SUSPENDED_SECONDS"));
    const ClockHome home, otherHome;
    const QJsonObject nothingElse{{u"AutoCheckUpdate"_s, false}};
    QVERIFY(home.writeSettings(settingsAt(place, nothingElse)));
    QVERIFY(otherHome.writeSettings(settingsAt(otherPlace, nothingElse)));
    const QString time = home.path() + u"/time"_s;
    const QString otherTime = otherHome.path() + u"/time"_s;
    QVERIFY(writeText(time, now));
    QVERIFY(writeText(otherTime, now));
    RunningClock clock(home, {.environment = timeStandingIn(time)});
    // It shows what time it is.
    RunningClock other(otherHome, {.environment = timeStandingIn(otherTime)});
    QVERIFY(clock.waitForWindow());
    QVERIFY(other.waitForWindow());
    const auto areAlike = [&] { return clock.picture() == other.picture(); };
    QVERIFY(QTest::qWaitFor(areAlike));
    const auto restsInAWhile = [&clock] {
        const qint64 before = clock.rests();
        QTest::qWait(lookMs);
        return clock.rests() - before;
    };
    const qint64 usualRests = restsInAWhile();

    clock.signal(SIGSTOP);
    QTest::qWait(seconds * 1000);
    QVERIFY(!areAlike());
    QVERIFY(writeText(time, later));
    QVERIFY(writeText(otherTime, later));
    QTest::qWait(1500); // the other one ticks
    const qint64 restsBefore = clock.rests();
    clock.signal(SIGCONT);
    QVERIFY(QTest::qWaitFor(areAlike, 1000));
    QTest::qWait(lookMs - 500);
    const qint64 rests = clock.rests() - restsBefore;
    qInfo("rests in two seconds: usually %lld, after being suspended %lld", usualRests, rests);
    QVERIFY(QTest::qWaitFor(areAlike));
    QCOMPARE_LE(rests, usualRests + usualRests / 2 + 5);
    for (RunningClock *each : {&clock, &other}) {
        each->signal(SIGTERM);
        QCOMPARE(each->waitForExit(), 0);
        QCOMPARE(each->output(), QByteArray());
    }
}

void TestFaults::xServerGone_data()
{
    QTest::addColumn<int>("signal");

    QTest::newRow("killed") << SIGKILL;
    QTest::newRow("ended") << SIGTERM;
}

void TestFaults::xServerGone()
{
    QFETCH(int, signal);

    const ClockHome home;
    const QJsonObject settings = settingsAt(place, {{u"Opacity"_s, 0.75}});
    QVERIFY(home.writeSettings(settings));
    OwnServer server;
    QVERIFY(!server.display().isEmpty());
    RunningClock clock(home, {.environment = {{u"DISPLAY"_s, server.display()}}});
    QTRY_VERIFY_WITH_TIMEOUT(server.showsWindowOf(clock.pid()), 30'000);
    QTest::qWait(1500); // it ticks
    server.end(signal);
    // Not by a signal, so there is no core.
    QCOMPARE(clock.waitForExit(), 1);
    QCOMPARE(home.settings(), settings);
    QVERIFY(clock.output().contains("The X11 connection broke"));
}

QTEST_MAIN(TestFaults)
#include "tst_faults.moc"
