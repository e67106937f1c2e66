// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Resizing the clock with the wheel and at its corners.

#include "tests/desktop/corners.h"
#include "tests/desktop/runningclock.h"
#include "tests/desktop/xinput.h"

#include <QtTest/qtest.h>

#include <tuple>

using namespace Qt::StringLiterals;

namespace
{

constexpr int saveLimitMs = 15'000; // five seconds, on a machine that has more to do

constexpr QRect place(620, 410, 240, 240);
// Along the diagonal of a grip, from the corner of the window.
constexpr int opaque = 8;
constexpr int transparent = 29;

// As hands do it: the key goes down before the wheel turns and up when the clock has followed. A
// window manager that looks at every turn first hands it on with the keys that are down by then.
void turnWheelWithControl(int notches, const RunningClock &clock, QRect after)
{
    constexpr int handMs = 100;
    const XInput::ControlKey control;
    QTest::qWait(handMs);
    XInput::turnWheel(notches);
    QTest::qWait(handMs);
    QTRY_COMPARE(clock.window().geometry(), after);
}

bool isRound(XWindow window, int side)
{
    return (window.shape() & QRect(0, 0, side, side)) == circle(side);
}

} // namespace

class TestWheelAndGrips : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }

    void turningTheWheelResizes_data();
    void turningTheWheelResizes();
    void wheelStepsAreNotLost();
    void wheelAloneDoesNothing();
    void cornersFollowThePointer_data();
    void cornersFollowThePointer();
    void cornersTakeManySteps_data();
    void cornersTakeManySteps();
    void cornersReachTheSmallestSide_data();
    void cornersReachTheSmallestSide();
    void newSizeIsSaved();
    void transparentPartOfAGripMovesTheClock_data();
    void transparentPartOfAGripMovesTheClock();
    void cornersOfAClockThatCannotBeResizedAreNotThere();

private:
    static void addCorners();
};

void TestWheelAndGrips::addCorners()
{
    QTest::addColumn<Corner>("corner");
    for (const Corner &corner : corners)
        QTest::newRow(corner.name) << corner;
}

void TestWheelAndGrips::turningTheWheelResizes_data()
{
    QTest::addColumn<int>("side");
    QTest::addColumn<int>("notches");
    QTest::addColumn<int>("growth");
    QTest::addColumn<bool>("resizeEnabled");

    QTest::newRow("up") << 240 << 1 << 12 << false;
    QTest::newRow("down") << 240 << -1 << -12 << false;
    QTest::newRow("up, resizable") << 240 << 1 << 12 << true;
    QTest::newRow("80, down") << 80 << -1 << 0 << false;
    QTest::newRow("80, up") << 80 << 1 << 12 << false;
    QTest::newRow("84, down") << 84 << -1 << 0 << false; // the limit itself is not reached
    QTest::newRow("84, up") << 84 << 1 << 12 << false;
    QTest::newRow("85, down") << 85 << -1 << -12 << false;
    QTest::newRow("as fast as can be") << 240 << 10 << 120 << false;
}

void TestWheelAndGrips::turningTheWheelResizes()
{
    QFETCH(int, side);
    QFETCH(int, notches);
    QFETCH(int, growth);
    QFETCH(bool, resizeEnabled);

    if (notches > 1 && qEnvironmentVariable("VESPER_WM") == u"xfwm4")
        QSKIP("this window manager keeps turns that come while it looks at an earlier one");
    const QRect before(place.topLeft(), QSize(side, side));
    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(before, {{u"ResizeEnabled"_s, resizeEnabled}})));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    XInput::moveTo(before.center());
    const int half = growth / 2;
    const QRect after = before.adjusted(-half, -half, half, half);
    turnWheelWithControl(notches, clock, after);
    QTest::qWait(300); // nothing is to come after it
    QCOMPARE(clock.window().geometry(), after);
    if (resizeEnabled)
        QVERIFY(!clock.window().isShaped());
    else
        QVERIFY(isRound(clock.window(), after.width()));
}

void TestWheelAndGrips::wheelStepsAreNotLost()
{
    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place)));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    XInput::moveTo(place.center());
    {
        const XInput::ControlKey control;
        int side = place.width();
        for (const int notches : {1, 1, 1, 1, 1, 1, 1, 1, 1, 1, -1, -1, -1}) {
            XInput::turnWheel(notches);
            side += 12 * notches;
            QTRY_COMPARE(clock.window().geometry().width(), side);
        }
    }
    const QRect after = place.adjusted(-42, -42, 42, 42);
    QTRY_COMPARE(clock.window().geometry(), after);
    QTRY_VERIFY(isRound(clock.window(), after.width()));
    QTRY_COMPARE_WITH_TIMEOUT(home.storedGeometry(), QRectF(after), saveLimitMs);
}

void TestWheelAndGrips::wheelAloneDoesNothing()
{
    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place)));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    XInput::moveTo(place.center());
    XInput::turnWheel(3);
    // One that counts, when the others have been seen.
    QTest::qWait(500);
    turnWheelWithControl(-1, clock, place.adjusted(6, 6, -6, -6));
}

void TestWheelAndGrips::cornersFollowThePointer_data()
{
    QTest::addColumn<Corner>("corner");
    QTest::addColumn<QPoint>("by"); // outward
    QTest::addColumn<int>("growth");

    constexpr std::tuple<const char *, int, int, int> moves[] = {
        {"outward, flat", 70, 30, 30},
        {"outward, steep", 20, 90, 20},
        {"outward, diagonal", 55, 55, 55},
        {"inward, flat", -80, -25, -25},
        {"inward, diagonal", -60, -60, -60},
        {"off, to one side", 40, -15, 0},
        {"off, to the other side", -15, 40, 0},
    };
    for (const Corner &corner : corners) {
        for (const auto &[name, x, y, growth] : moves)
            QTest::addRow("%s, %s", corner.name, name) << corner << QPoint(x, y) << growth;
    }
}

void TestWheelAndGrips::cornersFollowThePointer()
{
    QFETCH(Corner, corner);
    QFETCH(QPoint, by);
    QFETCH(int, growth);

    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place, {{u"ResizeEnabled"_s, true}})));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    const QPoint from = corner.inside(place, opaque);
    XInput::drag({from, from + corner.outward(by.x(), by.y())});
    QTRY_COMPARE(clock.window().geometry(), corner.grown(place, growth));
    QTest::qWait(200); // nothing is to come after it
    QCOMPARE(clock.window().geometry(), corner.grown(place, growth));
    QVERIFY(!clock.window().isShaped());
    // All of it takes the mouse.
    const QRect now = clock.window().geometry();
    QCOMPARE(XWindow::under(now.bottomRight()), clock.window());
    QCOMPARE(XWindow::under(now.topLeft()), clock.window());
}

void TestWheelAndGrips::cornersTakeManySteps_data() { addCorners(); }

void TestWheelAndGrips::cornersTakeManySteps()
{
    QFETCH(Corner, corner);

    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place, {{u"ResizeEnabled"_s, true}})));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    const QPoint from = corner.inside(place, opaque);
    QList<QPoint> way{from};
    for (int i = 1; i <= 120; ++i)
        way.append(from + corner.outward(i, i + 3));
    for (int i = 119; i >= 77; --i)
        way.append(from + corner.outward(i + 2, i));
    XInput::drag(way);
    QTRY_COMPARE(clock.window().geometry(), corner.grown(place, 77));
    QTest::qWait(200); // nothing is to come after it
    QCOMPARE(clock.window().geometry(), corner.grown(place, 77));
}

void TestWheelAndGrips::cornersReachTheSmallestSide_data() { addCorners(); }

void TestWheelAndGrips::cornersReachTheSmallestSide()
{
    QFETCH(Corner, corner);

    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place, {{u"ResizeEnabled"_s, true}})));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    const auto sideAt = [&](int inward) {
        XInput::moveTo(corner.inside(place, opaque) + corner.outward(-inward, -inward));
    };
    XInput::moveTo(corner.inside(place, opaque));
    XInput::press();
    sideAt(240 - 80);
    QTRY_COMPARE(clock.window().geometry(), corner.grown(place, 80 - 240));
    sideAt(240 - 71); // refused
    sideAt(240 - 10); // far beyond
    sideAt(240 - 72);
    QTRY_COMPARE(clock.window().geometry(), corner.grown(place, 72 - 240));
    sideAt(240 - 71);
    QTest::qWait(200); // nothing is to happen
    QCOMPARE(clock.window().geometry(), corner.grown(place, 72 - 240));
    XInput::release();
}

void TestWheelAndGrips::newSizeIsSaved()
{
    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place, {{u"ResizeEnabled"_s, true}})));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    const QPoint from = corners[0].inside(place, opaque);
    XInput::drag({from, from - QPoint(31, 31)});
    const QRect after = corners[0].grown(place, 31);
    QTRY_COMPARE(clock.window().geometry(), after);
    QCOMPARE(home.storedGeometry(), QRectF(place)); // not at once
    QTRY_COMPARE_WITH_TIMEOUT(home.storedGeometry(), QRectF(after), saveLimitMs);
}

void TestWheelAndGrips::transparentPartOfAGripMovesTheClock_data() { addCorners(); }

void TestWheelAndGrips::transparentPartOfAGripMovesTheClock()
{
    QFETCH(Corner, corner);

    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place, {{u"ResizeEnabled"_s, true}})));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    const QPoint from = corner.inside(place, transparent);
    XInput::drag({from, from + QPoint(35, 21)});
    QTRY_COMPARE(clock.window().geometry(), place.translated(35, 21));
}

void TestWheelAndGrips::cornersOfAClockThatCannotBeResizedAreNotThere()
{
    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place)));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    const QPoint from = corners[2].inside(place, opaque);
    XInput::drag({from, from + QPoint(40, 40)});
    QTest::qWait(300); // xfwm4 keeps the press of a drag that follows faster than a hand can
    // A drag that counts, so that the other would have been seen before.
    XInput::drag({place.center(), place.center() + QPoint(3, 4)});
    QTRY_COMPARE(clock.window().geometry(), place.translated(3, 4));
}

QTEST_MAIN(TestWheelAndGrips)
#include "tst_wheelandgrips.moc"
