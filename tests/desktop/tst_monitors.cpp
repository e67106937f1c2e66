// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Monitors that go and come back. There are two side by side, made of the one screen of the server.

#include "tests/desktop/runningclock.h"

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
const auto left = u"960/254x1080/286+0+0"_s;
const auto right = u"960/254x1080/286+960+0"_s;

bool callXrandr(const QStringList &arguments)
{
    QProcess xrandr;
    xrandr.start(u"xrandr"_s, arguments);
    return xrandr.waitForFinished() && xrandr.exitStatus() == QProcess::NormalExit
        && xrandr.exitCode() == 0;
}

bool waitForScreens(int count)
{
    return QTest::qWaitFor([count] { return QGuiApplication::screens().size() == count; });
}

bool removeSecondMonitor()
{
    return callXrandr({u"--delmonitor"_s, u"right"_s}) && waitForScreens(1);
}

bool addSecondMonitor()
{
    return callXrandr({u"--setmonitor"_s, u"right"_s, right, u"none"_s}) && waitForScreens(2);
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
    void stayingMonitorChangesNothing_data();
    void stayingMonitorChangesNothing();
    void savesItsPlaceWhileHidden();
    void startsOffEveryScreen_data();
    void startsOffEveryScreen();
};

void TestMonitors::initTestCase()
{
    const auto output = QGuiApplication::primaryScreen()->name();
    QVERIFY(callXrandr({u"--setmonitor"_s, u"left"_s, left, output}));
    QVERIFY(addSecondMonitor());
}

void TestMonitors::init()
{
    QTest::failOnWarning();
    QVERIFY(QGuiApplication::screens().size() == 2 || addSecondMonitor());
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
        QVERIFY(removeSecondMonitor());
        if (keepPosition)
            QTRY_VERIFY_WITH_TIMEOUT(!clock.window().isMapped(), limitMs);
        else
            QTRY_COMPARE_WITH_TIMEOUT(clock.window().geometry(), nearestPlace, limitMs);
        QVERIFY(addSecondMonitor());
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
    QVERIFY(removeSecondMonitor());
    QTRY_VERIFY_WITH_TIMEOUT(!clock.window().isMapped(), limitMs);
    QTest::qWait(3000); // nothing is to bring it back or end it
    QVERIFY(!clock.window().isMapped());
    QVERIFY(clock.isRunning());
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
    QVERIFY(removeSecondMonitor());
    QTest::qWait(2000); // nothing is to happen
    QVERIFY(clock.window().isMapped());
    QCOMPARE(clock.window().geometry(), here);
    QVERIFY(addSecondMonitor());
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
    clock.window().setGeometry(place);
    QTRY_COMPARE(clock.window().geometry(), place);
    QTest::qWait(1000); // it settles
    QVERIFY(removeSecondMonitor());
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

QTEST_MAIN(TestMonitors)
#include "tst_monitors.moc"
