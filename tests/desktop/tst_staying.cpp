// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The clock stays what and where it is: above its like, through being minimised, beyond the
// session.

#include "tests/desktop/runningclock.h"

#include <QtGui/qrasterwindow.h>
#include <QtTest/qtest.h>

#include <csignal>

using namespace Qt::StringLiterals;

namespace
{

const QRect place(420, 310, 240, 240);
const QRect otherPlace(901, 203, 240, 240);

} // namespace

class TestStaying : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }

    void staysAboveAnotherTopmostWindow_data();
    void staysAboveAnotherTopmostWindow();
    void comesBackFromBeingMinimized_data();
    void comesBackFromBeingMinimized();
    void savesItsPlaceWhileMinimized();
    void savesItsPlaceAtTheEnd_data();
    void savesItsPlaceAtTheEnd();
};

void TestStaying::staysAboveAnotherTopmostWindow_data()
{
    QTest::addColumn<bool>("raisePriority");

    QTest::newRow("again and again") << true;
    QTest::newRow("only topmost") << false;
}

void TestStaying::staysAboveAnotherTopmostWindow()
{
    QFETCH(bool, raisePriority);

    const ClockHome home;
    QVERIFY(home.writeSettings(
        settingsAt(place, {{u"Topmost"_s, true}, {u"RaisePriorityOfTopmost"_s, raisePriority}})));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());

    QRasterWindow other;
    other.setFlag(Qt::WindowStaysOnTopHint);
    other.setGeometry(place.adjusted(-60, -60, 60, 60));
    other.show();
    const XWindow otherWindow(uint32_t(other.winId()));
    QTRY_COMPARE(XWindow::active(), otherWindow);
    QVERIFY(otherWindow.states().contains("ABOVE"));
    for (int i = 0; i < 3; ++i) {
        otherWindow.raise();
        if (raisePriority) {
            // Long enough for a raise that has not been carried out yet.
            QTest::qWait(500);
            QTRY_COMPARE_WITH_TIMEOUT(XWindow::clients().last(), clock.window(), 500);
            QCOMPARE(XWindow::under(place.center()), clock.window());
        } else {
            QTRY_COMPARE(XWindow::clients().last(), otherWindow);
            QTest::qWait(1000); // nothing is to happen
            QCOMPARE(XWindow::clients().last(), otherWindow);
        }
        QCOMPARE(XWindow::active(), otherWindow);
    }
}

void TestStaying::comesBackFromBeingMinimized_data()
{
    QTest::addColumn<bool>("topmost");
    QTest::addColumn<bool>("ignoreMouseEvent");

    QTest::newRow("topmost") << true << false;
    QTest::newRow("click-through") << true << true;
    QTest::newRow("not topmost") << false << false;
}

void TestStaying::comesBackFromBeingMinimized()
{
    QFETCH(bool, topmost);
    QFETCH(bool, ignoreMouseEvent);

    const ClockHome home;
    QVERIFY(home.writeSettings(
        settingsAt(place, {{u"Topmost"_s, topmost}, {u"IgnoreMouseEvent"_s, ignoreMouseEvent}})));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    const XWindow window = clock.window();
    QCOMPARE(window.geometry(), place);

    for (int i = 0; i < 10; ++i) {
        window.minimize();
        QTRY_VERIFY(!window.isMapped());
        // There must be something to bring it back with.
        QTRY_VERIFY(!window.states().contains("SKIP_TASKBAR"));
        QTest::qWait(250); // no hand is faster
        window.activate();
        // It leaves the taskbar by one more hide and show: each of these comes, goes and comes.
        const auto isBack = [&] {
            return window.isMapped() && window.states().contains("SKIP_TASKBAR")
                && window.geometry() == place;
        };
        QVERIFY(QTest::qWaitFor(isBack));
        QTest::qWait(300); // for whatever comes late
        QVERIFY(window.isMapped());
        QCOMPARE(window.geometry(), place);
        QCOMPARE(window.frame(), QMargins());
        QVERIFY(window.states().contains("SKIP_TASKBAR"));
        QCOMPARE(window.states().contains("ABOVE"), topmost);
        QVERIFY(!window.states().contains("HIDDEN"));
        QCOMPARE(window.shape() & QRect(QPoint(), place.size()), circle(place.width()));
        QCOMPARE(window.inputShape().isEmpty(), ignoreMouseEvent);
        QCOMPARE(XWindow::under(place.center()), ignoreMouseEvent ? XWindow() : window);
    }
}

void TestStaying::savesItsPlaceWhileMinimized()
{
    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place)));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    QVERIFY(clock.dragTo(otherPlace.topLeft()));
    clock.window().minimize();
    QTRY_VERIFY(!clock.window().isMapped());
    QTRY_VERIFY(!clock.window().states().contains("SKIP_TASKBAR"));
    QCOMPARE(home.storedGeometry(), QRectF(place));
    clock.signal(SIGTERM);
    QCOMPARE(clock.waitForExit(), 0);
    QCOMPARE(home.storedGeometry(), QRectF(otherPlace));
}

void TestStaying::savesItsPlaceAtTheEnd_data()
{
    QTest::addColumn<int>("signal");

    QTest::newRow("end of the session") << SIGTERM;
    QTest::newRow("Control and C") << SIGINT;
    QTest::newRow("end of the terminal") << SIGHUP;
}

void TestStaying::savesItsPlaceAtTheEnd()
{
    QFETCH(int, signal);

    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place)));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    QVERIFY(clock.dragTo(otherPlace.topLeft()));
    QCOMPARE(home.storedGeometry(), QRectF(place));
    clock.signal(signal);
    QCOMPARE(clock.waitForExit(), 0);
    QCOMPARE(home.storedGeometry(), QRectF(otherPlace));
}

QTEST_MAIN(TestStaying)
#include "tst_staying.moc"
