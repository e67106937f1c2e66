// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Monitors that go and come back. There are two side by side, made of the one screen of the server.
// VESPER_MONITOR_SECONDS is how long they do so every second.

#include "tests/desktop/clockmenu.h"
#include "tests/desktop/monitors.h"
#include "tests/desktop/runningclock.h"

#include <QtCore/qrandom.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qscreen.h>
#include <QtTest/qtest.h>

#include <csignal>

using namespace Qt::StringLiterals;

namespace
{

constexpr int limitMs = 10'000;
constexpr QRect place(1300, 410, 240, 240); // on the second monitor
constexpr QRect nearestPlace(720, 410, 240, 240); // the same, on the first one alone

// What the second monitor can become: gone, farther to the left, smaller, lower, or as it was.
const QList<QRect> changes{QRect(), QRect(700, 0, 960, 1080), QRect(960, 0, 640, 480),
    QRect(960, 300, 960, 780), Monitors::right};

// A monitor goes and comes as another, which a program sees as one change.
bool changeSecondMonitor(QRect to)
{
    return (!Monitors::has(u"right"_s) || Monitors::removeRight())
        && (to.isNull() || Monitors::addRight(to));
}

} // namespace

class TestMonitors : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void comesBackWithItsMonitor_data();
    void comesBackWithItsMonitor();
    void livesOnAfterTheFirstLoss();
    void livesOnWhenItsOtherWindowCloses();
    void stayingMonitorChangesNothing_data();
    void stayingMonitorChangesNothing();
    void savesItsPlaceWhileHidden();
    void startsOffEveryScreen_data();
    void startsOffEveryScreen();
    void monitorsThatNeverRest_data();
    void monitorsThatNeverRest();
};

void TestMonitors::initTestCase()
{
    QVERIFY(Monitors::divide());
    QVERIFY(Monitors::addRight());
}

void TestMonitors::init()
{
    QTest::failOnWarning();
    QVERIFY(Monitors::has(u"right"_s) || Monitors::addRight());
}

void TestMonitors::comesBackWithItsMonitor_data()
{
    QTest::addColumn<bool>("keepPosition");
    QTest::addColumn<bool>("ignoreMouseEvent");

    QTest::newRow("hidden meanwhile") << true << false;
    QTest::newRow("hidden meanwhile, click-through") << true << true;
    QTest::newRow("on the other one meanwhile") << false << false;
}

void TestMonitors::comesBackWithItsMonitor()
{
    QFETCH(bool, keepPosition);
    QFETCH(bool, ignoreMouseEvent);

    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place,
        {{u"KeepPositionWhenMonitorDetatched"_s, keepPosition},
            {u"IgnoreMouseEvent"_s, ignoreMouseEvent}})));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    QCOMPARE(clock.window().geometry(), place);

    for (int i = 0; i < 10; ++i) {
        QVERIFY(Monitors::removeRight());
        if (keepPosition)
            QTRY_VERIFY_WITH_TIMEOUT(!clock.window().isMapped(), limitMs);
        else
            QTRY_COMPARE_WITH_TIMEOUT(clock.window().geometry(), nearestPlace, limitMs);
        QVERIFY(Monitors::addRight());
        const auto isBack
            = [&] { return clock.window().isMapped() && clock.window().geometry() == place; };
        QVERIFY(QTest::qWaitFor(isBack, limitMs));
        QTest::qWait(300); // for whatever comes late
        QCOMPARE(clock.window().geometry(), place);
        QTRY_VERIFY(clock.window().states().contains("ABOVE"));
        QTRY_VERIFY(clock.window().states().contains("SKIP_TASKBAR"));
        QCOMPARE(clock.window().shape() & QRect(QPoint(), place.size()), circle(place.width()));
        QCOMPARE(XWindow::under(place.center()), ignoreMouseEvent ? XWindow() : clock.window());
    }
}

void TestMonitors::livesOnAfterTheFirstLoss()
{
    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place, {{u"KeepPositionWhenMonitorDetatched"_s, true}})));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    QVERIFY(Monitors::removeRight());
    QTRY_VERIFY_WITH_TIMEOUT(!clock.window().isMapped(), limitMs);
    QTest::qWait(3000); // nothing is to bring it back or end it
    QVERIFY(!clock.window().isMapped());
    QVERIFY(clock.isRunning());
}

void TestMonitors::livesOnWhenItsOtherWindowCloses()
{
    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place, {{u"KeepPositionWhenMonitorDetatched"_s, true}})));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    QVERIFY(ClockMenu::choose(place.center(), ClockMenu::About));
    const auto others = [&clock] {
        QList<XWindow> windows = XWindow::allOfProcess(clock.pid());
        windows.removeOne(clock.window());
        return windows;
    };
    QTRY_COMPARE(others().size(), 1);
    QTRY_VERIFY(others().first().isMapped());
    QVERIFY(Monitors::removeRight());
    QTRY_VERIFY_WITH_TIMEOUT(!clock.window().isMapped(), limitMs);
    others().first().close();
    QTRY_VERIFY(others().isEmpty());
    QTest::qWait(2000); // the program is not to end with what seems to be its last window
    QVERIFY(clock.isRunning());
    QVERIFY(Monitors::addRight());
    QTRY_VERIFY_WITH_TIMEOUT(clock.window().isMapped(), limitMs);
}

void TestMonitors::stayingMonitorChangesNothing_data()
{
    QTest::addColumn<bool>("keepPosition");

    QTest::newRow("kept") << true;
    QTest::newRow("not kept") << false;
}

void TestMonitors::stayingMonitorChangesNothing()
{
    QFETCH(bool, keepPosition);

    const QRect here(300, 200, 240, 240); // on the first monitor
    const ClockHome home;
    QVERIFY(home.writeSettings(
        settingsAt(here, {{u"KeepPositionWhenMonitorDetatched"_s, keepPosition}})));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    QVERIFY(Monitors::removeRight());
    QTest::qWait(2000); // nothing is to happen
    QVERIFY(clock.window().isMapped());
    QCOMPARE(clock.window().geometry(), here);
    QVERIFY(Monitors::addRight());
    QTest::qWait(1000);
    QVERIFY(clock.window().isMapped());
    QCOMPARE(clock.window().geometry(), here);
}

void TestMonitors::savesItsPlaceWhileHidden()
{
    const ClockHome home;
    QVERIFY(home.writeSettings(
        settingsAt(place.translated(-50, 20), {{u"KeepPositionWhenMonitorDetatched"_s, true}})));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    QVERIFY(clock.dragTo(place.topLeft()));
    QVERIFY(Monitors::removeRight());
    QTRY_VERIFY_WITH_TIMEOUT(!clock.window().isMapped(), limitMs);
    clock.signal(SIGTERM);
    QCOMPARE(clock.waitForExit(), 0);
    QCOMPARE(home.storedGeometry(), QRectF(place));
}

void TestMonitors::startsOffEveryScreen_data()
{
    QTest::addColumn<QRect>("stored");
    QTest::addColumn<bool>("keepPosition");
    QTest::addColumn<QRect>("nearest");

    const QRect beyond(5000, 3000, 240, 240);
    const QRect nearestToBeyond(1680, 840, 240, 240);
    QTest::newRow("beyond") << beyond << false << nearestToBeyond;
    QTest::newRow("beyond, kept") << beyond << true << nearestToBeyond;
    const QRect before(-700, 100, 240, 240);
    const QRect nearestToBefore(0, 100, 240, 240);
    QTest::newRow("before") << before << false << nearestToBefore;
    QTest::newRow("before, kept") << before << true << nearestToBefore;
    const QRect partly(-200, 100, 240, 240);
    QTest::newRow("partly") << partly << false << partly;
}

void TestMonitors::startsOffEveryScreen()
{
    QFETCH(QRect, stored);
    QFETCH(bool, keepPosition);
    QFETCH(QRect, nearest);

    const QJsonObject settings
        = settingsAt(stored, {{u"KeepPositionWhenMonitorDetatched"_s, keepPosition}});
    const ClockHome home;
    QVERIFY(home.writeSettings(settings));
    RunningClock clock(home);
    QVERIFY(clock.waitForMappedWindow());
    if (!keepPosition)
        QTRY_COMPARE(clock.window().geometry(), nearest);
    QTest::qWait(1500); // nothing is to come after it
    const QRect now = clock.window().geometry();
    if (keepPosition) {
        // A window manager may insist on a rim in sight; the clock itself does not move.
        constexpr int rim = 32;
        QVERIFY((now & nearest).width() <= rim || (now & nearest).height() <= rim);
    } else {
        QCOMPARE(now, nearest);
    }
    QCOMPARE(home.settings(), settings);
}

void TestMonitors::monitorsThatNeverRest_data()
{
    QTest::addColumn<bool>("keepPosition");

    QTest::newRow("not kept") << false;
    QTest::newRow("kept") << true;
}

void TestMonitors::monitorsThatNeverRest()
{
    QFETCH(bool, keepPosition);

    constexpr quint32 seed = 20261122;
    constexpr int warmUp = 2; // changes, until every cache has what it needs
    constexpr qint64 allowedKiB = 512;
    const int seconds = std::max(5, qEnvironmentVariableIntValue("VESPER_MONITOR_SECONDS"));
    const ClockHome home;
    // The first check for an update takes some memory for good.
    QVERIFY(home.writeSettings(settingsAt(place,
        {{u"KeepPositionWhenMonitorDetatched"_s, keepPosition}, {u"AutoCheckUpdate"_s, false}})));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    QRandomGenerator random(seed);
    qint64 privateKiB = 0;
    for (int second = 0; second < seconds; ++second) {
        QVERIFY(changeSecondMonitor(changes.at(random.bounded(int(changes.size())))));
        QTest::qWait(1000);
        QVERIFY(clock.isRunning());
        QCOMPARE(clock.window().geometry().size(), place.size());
        if (second == warmUp)
            privateKiB = clock.privateKiB();
    }
    QVERIFY(changeSecondMonitor(Monitors::right));
    QTest::qWait(3000); // it settles and is moved, if need be
    QVERIFY(clock.isRunning());
    QTRY_VERIFY(clock.window().isMapped());
    const QRect last = clock.window().geometry();
    QCOMPARE(last.size(), place.size());
    QVERIFY(QGuiApplication::screenAt(last.center()));
    qInfo("%d seconds, %lld KiB more", seconds, clock.privateKiB() - privateKiB);
    QCOMPARE_LE(clock.privateKiB(), privateKiB + allowedKiB);
}

QTEST_MAIN(TestMonitors)
#include "tst_monitors.moc"
