// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Moving the clock with the mouse, and clicks that are not meant for it.

#include "tests/desktop/runningclock.h"
#include "tests/desktop/xinput.h"

#include <QtGui/qevent.h>
#include <QtGui/qrasterwindow.h>
#include <QtTest/qtest.h>

using namespace Qt::StringLiterals;

namespace
{

const QRect place(420, 310, 240, 240);
const QPoint hold = place.center() + QPoint(31, -17);
constexpr int saveLimitMs = 15'000; // five seconds, on a machine that has more to do

// A window of some other program that lies below the clock.
class Underneath : public QRasterWindow
{
public:
    Underneath()
    {
        setGeometry(place.adjusted(-80, -80, 80, 80));
        show();
    }

    bool waitUntilShown() { return QTest::qWaitForWindowExposed(this); }

    int presses = 0;

protected:
    void mousePressEvent([[maybe_unused]] QMouseEvent *event) override { ++presses; }
};

} // namespace

class TestDragging : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }

    void followsTheMouse_data();
    void followsTheMouse();
    void savesItsNewPlace();
    void savesOnceForManyDrags();
    void staysWhereItIs_data();
    void staysWhereItIs();
    void rightDragBelongsToTheMenu();
    void clicksReachWhatLiesBelow_data();
    void clicksReachWhatLiesBelow();
    void becomesSquareByDoubleClick_data();
    void becomesSquareByDoubleClick();
};

void TestDragging::followsTheMouse_data()
{
    QTest::addColumn<QList<QPoint>>("steps");

    QTest::newRow("one step") << QList<QPoint>{{57, -33}};
    QTest::newRow("one pixel") << QList<QPoint>{{1, 1}};
    QTest::newRow("there and back") << QList<QPoint>{{90, 40}, {-30, 12}, {0, 0}};
    QList<QPoint> many;
    for (int i = 1; i <= 200; ++i)
        many.append({3 * i, i});
    QTest::newRow("many steps") << many;
    QTest::newRow("beyond the screen") << QList<QPoint>{{-200, -200}, {-450, -300}};
}

void TestDragging::followsTheMouse()
{
    QFETCH(QList<QPoint>, steps);

    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place)));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    QList<QPoint> way{hold};
    for (const QPoint step : steps)
        way.append(hold + step);
    XInput::drag(way);
    QTRY_COMPARE(clock.window().geometry(), place.translated(steps.last()));
    QTest::qWait(300); // nothing is to come after it
    QCOMPARE(clock.window().geometry(), place.translated(steps.last()));
    // Round again as well: while it is dragged it has no mask.
    QTRY_COMPARE(clock.window().shape() & QRect(QPoint(), place.size()), circle(place.width()));
}

void TestDragging::savesItsNewPlace()
{
    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place)));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    const QPoint way(123, 45);
    XInput::drag({hold, hold + way});
    QTRY_COMPARE(clock.window().geometry(), place.translated(way));
    QCOMPARE(home.storedGeometry(), QRectF(place)); // not at once
    QTRY_COMPARE_WITH_TIMEOUT(home.storedGeometry(), QRectF(place.translated(way)), saveLimitMs);
}

void TestDragging::savesOnceForManyDrags()
{
    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place)));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    const QPoint way(11, 7);
    for (int i = 0; i < 4; ++i) {
        XInput::drag({hold + i * way, hold + (i + 1) * way});
        QTRY_COMPARE(clock.window().geometry(), place.translated((i + 1) * way));
        QTest::qWait(2000); // in eight seconds the first drag alone would have been saved
        QCOMPARE(home.storedGeometry(), QRectF(place));
    }
    const QRectF last(place.translated(4 * way));
    QTRY_COMPARE_WITH_TIMEOUT(home.storedGeometry(), last, saveLimitMs);
}

void TestDragging::staysWhereItIs_data()
{
    QTest::addColumn<bool>("fixed");
    QTest::addColumn<bool>("control");

    QTest::newRow("fixed") << true << false;
    QTest::newRow("Control held") << false << true;
}

void TestDragging::staysWhereItIs()
{
    QFETCH(bool, fixed);
    QFETCH(bool, control);

    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place, {{u"Fixed"_s, fixed}})));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    {
        std::optional<XInput::ControlKey> key;
        if (control)
            key.emplace();
        XInput::moveTo(hold);
        XInput::press();
        // Without its mask: so it has seen the press.
        QTRY_VERIFY(!clock.window().isShaped());
        XInput::moveTo(hold + QPoint(40, 30));
        XInput::moveTo(hold + QPoint(80, 20));
        XInput::release();
        // And so it has seen the release, which comes after the moves.
        QTRY_VERIFY(clock.window().isShaped());
    }
    QCOMPARE(clock.window().geometry(), place);
    QCOMPARE(clock.window().shape() & QRect(QPoint(), place.size()), circle(place.width()));
}

void TestDragging::rightDragBelongsToTheMenu()
{
    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place)));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());

    // The menu opens with the press, below and to the right of it, and has the mouse from then on.
    const QPoint beside = hold + QPoint(-60, -35);
    XInput::moveTo(hold);
    XInput::press(XInput::RightButton);
    QTRY_COMPARE(XWindow::popups().size(), 1);
    XInput::moveTo(beside);
    XInput::release(XInput::RightButton);
    QTest::qWait(300);
    QCOMPARE(clock.window().geometry(), place);
    XInput::click(beside);
    QTRY_COMPARE(XWindow::popups().size(), 0);

    const QPoint way(100, 60);
    XInput::drag({hold, hold + way});
    QTRY_COMPARE(clock.window().geometry(), place.translated(way));
    QTRY_COMPARE(clock.window().shape() & QRect(QPoint(), place.size()), circle(place.width()));
}

void TestDragging::clicksReachWhatLiesBelow_data()
{
    QTest::addColumn<bool>("ignoreMouseEvent");
    QTest::addColumn<QPoint>("point");
    QTest::addColumn<bool>("below");

    const QPoint corner(place.topLeft() + QPoint(8, 8));
    QTest::newRow("on the clock") << false << hold << false;
    QTest::newRow("on the clock, click-through") << true << hold << true;
    QTest::newRow("top left of the circle") << false << corner << true;
    QTest::newRow("top right of it") << false << QPoint(place.right() - 8, place.top() + 8) << true;
    QTest::newRow("bottom right of it") << false << place.bottomRight() - QPoint(8, 8) << true;
    QTest::newRow("bottom left of it")
        << false << QPoint(place.left() + 8, place.bottom() - 8) << true;
    QTest::newRow("beside the circle, click-through") << true << corner << true;
}

void TestDragging::clicksReachWhatLiesBelow()
{
    QFETCH(bool, ignoreMouseEvent);
    QFETCH(QPoint, point);
    QFETCH(bool, below);

    Underneath underneath;
    QVERIFY(underneath.waitUntilShown());
    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place, {{u"IgnoreMouseEvent"_s, ignoreMouseEvent}})));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    // The window below is no wallpaper, so it passed for a painted clock: the window manager may
    // still be busy with the new window, and an input shape has to go round by it.
    QVERIFY(!clock.stillPicture().isNull());
    XInput::click(point);
    // A second click where the window below is bare: whatever the first one gave has come by then.
    XInput::click(place.topLeft() - QPoint(40, 40));
    const int expected = below ? 2 : 1;
    QTRY_VERIFY(underneath.presses >= expected);
    QTest::qWait(100);
    QCOMPARE(underneath.presses, expected);
}

void TestDragging::becomesSquareByDoubleClick_data()
{
    QTest::addColumn<QSize>("before");
    QTest::addColumn<int>("side");

    QTest::newRow("wide") << QSize(301, 200) << 250;
    QTest::newRow("even") << QSize(300, 200) << 250;
    QTest::newRow("tall") << QSize(200, 320) << 260;
}

void TestDragging::becomesSquareByDoubleClick()
{
    QFETCH(QSize, before);
    QFETCH(int, side);

    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place)));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    clock.window().setGeometry(QRect(place.topLeft(), before));
    QTRY_COMPARE(clock.window().geometry().size(), before);
    QTest::qWait(200); // the document learns of it, too
    const QPoint middle = place.topLeft() + QPoint(before.width() / 2, before.height() / 2);
    XInput::click(middle);
    XInput::click(middle);
    QTRY_COMPARE(clock.window().geometry(), QRect(place.topLeft(), QSize(side, side)));
    QTRY_COMPARE(clock.window().shape() & QRect(0, 0, side, side), circle(side));
}

QTEST_MAIN(TestDragging)
#include "tst_dragging.moc"
