// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The program, as it is, and its update service: a web server with a certificate of an authority
// that exists only here, in a network that has no other machine. Each case has a clock and a world
// of its own, and all run at once, since each waits ten seconds for its check.

#include "config/maker.h"
#include "tests/desktop/runningclock.h"

#include <QtCore/qdir.h>
#include <QtCore/qelapsedtimer.h>
#include <QtCore/qfile.h>
#include <QtCore/qprocess.h>
#include <QtTest/qtest.h>

#include <csignal>
#include <map>
#include <memory>

using namespace Qt::StringLiterals;

namespace
{

constexpr int side = 120;
constexpr int firstCheckMs = 10'000; // after the start
constexpr int checkLimitMs = 60'000; // for the largest answer on a busy machine

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

const QString worldScript = QStringLiteral(VESPER_SOURCE_FOLDER "/tests/desktop/update_world.py");
const QString silent = u"silent"_s;
constexpr auto checkThread = "QThread";

// How the services behave, and whether the question appears.
const std::map<QString, bool> services{
    {u"newer"_s, true},
    {u"equal"_s, false},
    {u"older"_s, false},
    {u"no release"_s, false},
    {u"no JSON"_s, false},
    {u"array"_s, false},
    {u"nothing written"_s, false},
    {u"not there"_s, false},
    {u"redirect"_s, true},
    {u"another authority"_s, false},
    {u"another host"_s, false},
    {u"half"_s, false},
    {u"huge"_s, false},
    {silent, false},
};

// A clock in a world with one service.
class World
{
public:
    World(const QString &folder, int index)
        : m_folder(folder)
        , m_place(40 + index % 5 * 300, 40 + index / 5 * 300, side, side)
    {
    }

    [[nodiscard]] bool make(const QString &service) const
    {
        return QDir().mkpath(m_folder)
            && QProcess::execute(worldScript,
                   {u"make"_s, m_folder, service, QStringLiteral(VESPER_UPDATE_SITE),
                       Maker::programVersion})
            == 0;
    }

    void start(const QString &program = QStringLiteral(VESPER_PROGRAM))
    {
        QVERIFY(m_home.writeSettings(settingsAt(m_place)));
        m_settings = m_home.settings();
        m_clock = std::make_unique<RunningClock>(m_home,
            ClockStart{.arguments = {u"enter"_s, m_folder, program}, .program = worldScript});
        m_sinceStart.start();
    }

    RunningClock &clock() const { return *m_clock; }
    qint64 msSinceStart() const { return m_sinceStart.elapsed(); }
    bool hasUntouchedSettings() const { return m_home.settings() == m_settings; }
    int windows() const { return int(XWindow::allOfProcess(m_clock->pid()).size()); }
    /// The names of the program's threads.
    QByteArrayList threads() const
    {
        QByteArrayList names;
        for (const QString &thread : QDir(process() + u"/task"_s).entryList({u"[1-9]*"_s}))
            names += read(process() + u"/task/"_s + thread + u"/comm"_s).trimmed();
        return names;
    }
    qint64 privateKiB() const { return m_clock->privateKiB(); }

private:
    QString process() const { return u"/proc/%1"_s.arg(m_clock->pid()); }

    QString m_folder;
    QRect m_place;
    ClockHome m_home;
    QJsonObject m_settings;
    std::unique_ptr<RunningClock> m_clock;
    QElapsedTimer m_sinceStart;
};

} // namespace

class TestUpdateService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }
    void initTestCase();
    void check_data();
    void check();
    void copyOfAPackageNeverChecks();
    void waitsInOneThread();
    void quitsAtOnce();

private:
    void startCopyOfAPackage(World &world);

    const QTemporaryDir m_folder;
    std::map<QString, std::unique_ptr<World>> m_worlds;
    std::unique_ptr<World> m_packaged;
    std::map<QString, qint64> m_privateBefore;
};

void TestUpdateService::initTestCase()
{
    int index = 0;
    for (const auto &[name, asks] : services) {
        auto world = std::make_unique<World>(m_folder.filePath(u"world%1"_s.arg(index)), index);
        QVERIFY(world->make(name));
        m_worlds[name] = std::move(world);
        ++index;
    }
    for (const auto &[name, world] : m_worlds) {
        world->start();
        if (QTest::currentTestFailed())
            return;
    }
    m_packaged = std::make_unique<World>(m_folder.filePath(u"packaged"_s), index);
    QVERIFY(m_packaged->make(u"newer"_s));
    startCopyOfAPackage(*m_packaged);
    for (const auto &[name, world] : m_worlds)
        QVERIFY(world->clock().waitForWindow());
    // Shortly before the first of them asks.
    const World &first = *m_worlds.begin()->second;
    QVERIFY(first.msSinceStart() < firstCheckMs - 2000);
    for (const auto &[name, world] : m_worlds) {
        QVERIFY(!world->threads().contains(checkThread));
        m_privateBefore[name] = world->privateKiB();
    }
    QVERIFY(first.msSinceStart() < firstCheckMs - 1000);
}

void TestUpdateService::check_data()
{
    QTest::addColumn<QString>("name");

    for (const auto &[name, asks] : services)
        QTest::addRow("%s", qPrintable(name)) << name;
}

void TestUpdateService::check()
{
    QFETCH(QString, name);

    const World &world = *m_worlds[name];
    QTRY_VERIFY_WITH_TIMEOUT(world.msSinceStart() > firstCheckMs + 2000, checkLimitMs);
    if (name != silent)
        QTRY_VERIFY_WITH_TIMEOUT(!world.threads().contains(checkThread), checkLimitMs);
    QTRY_COMPARE(world.windows(), services.at(name) ? 2 : 1);
    const QImage before = world.clock().picture();
    // It goes on ticking. How soon that is seen is a matter of a dozen desktops on one machine.
    QVERIFY(QTest::qWaitFor([&] { return world.clock().picture() != before; }, checkLimitMs));
    constexpr qint64 allowedKiB = 10'240;
    QTRY_COMPARE_LE_WITH_TIMEOUT(
        world.privateKiB(), m_privateBefore[name] + allowedKiB, checkLimitMs);
    QCOMPARE(world.windows(), services.at(name) ? 2 : 1);
    QVERIFY(world.hasUntouchedSettings());
    QVERIFY(world.clock().isRunning());
}

// As packages install it: with a marker beside the program.
void TestUpdateService::startCopyOfAPackage(World &world)
{
    const QString program = m_folder.filePath(u"installed/vesper"_s);
    QVERIFY(QDir().mkpath(m_folder.filePath(u"installed"_s)));
    QVERIFY(QFile::copy(QStringLiteral(VESPER_PROGRAM), program));
    QVERIFY(
        QFile(m_folder.filePath(u"installed/installed-by-package"_s)).open(QIODevice::WriteOnly));
    world.start(program);
}

void TestUpdateService::copyOfAPackageNeverChecks()
{
    QTRY_VERIFY_WITH_TIMEOUT(m_packaged->msSinceStart() > firstCheckMs + 5000, checkLimitMs);
    QCOMPARE(m_packaged->windows(), 1);
    QVERIFY(!m_packaged->threads().contains(checkThread));
}

// One thread of this program. Qt has another one for the connection.
void TestUpdateService::waitsInOneThread()
{
    const World &world = *m_worlds[silent];
    for (int i = 0; i < 10; ++i) {
        QCOMPARE(world.threads().count(checkThread), 1);
        QCOMPARE(world.threads().count("QNetworkAccessM"), 1);
        QTest::qWait(100);
    }
}

void TestUpdateService::quitsAtOnce()
{
    const World &world = *m_worlds[silent];
    QElapsedTimer timer;
    timer.start();
    world.clock().signal(SIGTERM);
    QCOMPARE(world.clock().waitForExit(), 0);
    QCOMPARE_LT(timer.elapsed(), 1000);
}

QTEST_MAIN(TestUpdateService)
#include "tst_updateservice.moc"
