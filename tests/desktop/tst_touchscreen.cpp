// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Fingers on a touch screen, and a wheel that reports parts of a notch.

#include "tests/desktop/inputtestdevice.h"
#include "tests/desktop/runningclock.h"
#include "tests/desktop/xinput.h"

#include <QtTest/qtest.h>

#include <csignal>
#include <memory>

using namespace Qt::StringLiterals;

namespace
{

constexpr QRect place(620, 410, 240, 240);
constexpr QPoint middle(740, 530); // of it
constexpr int opaque = 8; // of a grip, along its diagonal from the corner of the window

constexpr int stepMs = 30; // the clock has followed before the finger goes on
constexpr int pressMs = 150; // and the window manager has let the press through
constexpr int quietMs = 300; // in which whatever is still to come has come

// Fingers come in fractions of a pixel, and a move is cut to whole ones.
bool isNear(QRect one, QRect other)
{
    const auto differ = [](int a, int b) { return qAbs(a - b) > 1; };
    return !differ(one.x(), other.x()) && !differ(one.y(), other.y())
        && !differ(one.width(), other.width()) && !differ(one.height(), other.height());
}

QByteArray textOf(QRect rectangle)
{
    return QByteArray::number(rectangle.width()) + 'x' + QByteArray::number(rectangle.height())
        + " at " + QByteArray::number(rectangle.x()) + ',' + QByteArray::number(rectangle.y());
}

QByteArray difference(QRect actual, QRect expected)
{
    return textOf(actual) + " instead of " + textOf(expected);
}

#define TRY_NEAR(window, expected)                                                                 \
    QTRY_VERIFY2(isNear((window).geometry(), expected),                                            \
        difference((window).geometry(), expected).constData())

QRect grown(QRect rectangle, int growth)
{
    const int half = growth / 2;
    return rectangle.adjusted(-half, -half, growth - half, growth - half);
}

} // namespace

class TestTouchScreen : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void oneFingerMovesTheClock_data();
    void oneFingerMovesTheClock();
    void fixedClockStays();
    void twoFingersResize_data();
    void twoFingersResize();
    void liftingTheSecondFingerMovesNothing_data();
    void liftingTheSecondFingerMovesNothing();
    void liftingTheFirstFingerMovesNothing();
    void cornersFollowTheFinger_data();
    void cornersFollowTheFinger();
    void bottomRightCornerGrows();
    void partsOfANotchAddUp_data();
    void partsOfANotchAddUp();
    void partOfANotchIsForgotten_data();
    void partOfANotchIsForgotten();
    void wholeNotchesCount();

private:
    [[nodiscard]] bool start(const QJsonObject &settings = {});
    void press(int finger, QPointF point);
    void slide(int finger, QPointF from, QPointF to, int steps, int pauseMs = stepMs);
    // Where the clock is when nothing has happened to it for a while.
    QRect rest() const;
    // What is stored when the program has been told to end.
    QRectF storedAtTheEnd();

    // For the whole of the test: a device takes one connection in the life of its server.
    TouchScreen m_touch;
    SmoothWheel m_wheel;
    std::unique_ptr<ClockHome> m_home;
    std::unique_ptr<RunningClock> m_clock;
};

void TestTouchScreen::init()
{
    QTest::failOnWarning();
    m_home = std::make_unique<ClockHome>();
}

void TestTouchScreen::cleanup()
{
    m_touch.liftAll();
    m_clock.reset();
    m_home.reset();
}

bool TestTouchScreen::start(const QJsonObject &settings)
{
    if (!m_home->writeSettings(settingsAt(place, settings)))
        return false;
    m_clock = std::make_unique<RunningClock>(*m_home);
    return m_clock->waitForWindow();
}

void TestTouchScreen::press(int finger, QPointF point)
{
    m_touch.press(finger, point);
    QTest::qWait(pressMs);
}

void TestTouchScreen::slide(int finger, QPointF from, QPointF to, int steps, int pauseMs)
{
    for (int step = 1; step <= steps; ++step) {
        m_touch.move(finger, from + (to - from) * step / steps);
        QTest::qWait(pauseMs);
    }
}

QRect TestTouchScreen::rest() const
{
    QTest::qWait(quietMs);
    return m_clock->window().geometry();
}

QRectF TestTouchScreen::storedAtTheEnd()
{
    m_clock->signal(SIGTERM);
    return m_clock->waitForExit() ? m_home->storedGeometry() : QRectF();
}

void TestTouchScreen::oneFingerMovesTheClock_data()
{
    QTest::addColumn<QPointF>("by");
    QTest::addColumn<int>("steps");
    QTest::addColumn<int>("pauseMs");

    QTest::newRow("even steps") << QPointF(200, 0) << 20 << stepMs;
    QTest::newRow("even steps, aslant") << QPointF(-260, 140) << 20 << stepMs;
    QTest::newRow("two even steps") << QPointF(30, 30) << 2 << stepMs;
    QTest::newRow("fractions of a pixel") << QPointF(97.4, -61.7) << 23 << stepMs;
    QTest::newRow("fast") << QPointF(600, 300) << 200 << 2;
    QTest::newRow("at once") << QPointF(-350, -250) << 1 << stepMs;
}

void TestTouchScreen::oneFingerMovesTheClock()
{
    QFETCH(QPointF, by);
    QFETCH(int, steps);
    QFETCH(int, pauseMs);

    QVERIFY(start());
    press(0, middle);
    QCOMPARE(m_clock->window().geometry(), place);
    slide(0, middle, middle + by, steps, pauseMs);
    TRY_NEAR(m_clock->window(), place.translated(by.toPoint()));
    const QRect after = rest();
    QVERIFY(isNear(after, place.translated(by.toPoint())));
    m_touch.lift(0);
    QCOMPARE(rest(), after);
    QCOMPARE(storedAtTheEnd(), QRectF(after));
}

void TestTouchScreen::fixedClockStays()
{
    QVERIFY(start({{u"Fixed"_s, true}}));
    press(0, middle);
    slide(0, middle, middle + QPointF(80, 40), 8);
    m_touch.lift(0);
    QCOMPARE(rest(), place);
}

void TestTouchScreen::twoFingersResize_data()
{
    QTest::addColumn<QPointF>("first"); // from the middle
    QTest::addColumn<QPointF>("second");
    QTest::addColumn<QPointF>("moveFirst");
    QTest::addColumn<QPointF>("moveSecond");
    QTest::addColumn<int>("growth");

    const QPointF left(-40, 0), right(40, 0), none;
    QTest::newRow("second away") << left << right << none << QPointF(60, 0) << 60;
    QTest::newRow("first away") << left << right << QPointF(-60, 0) << none << 60;
    QTest::newRow("both away") << left << right << QPointF(-50, 0) << QPointF(50, 0) << 100;
    QTest::newRow("both together") << left << right << QPointF(30, 0) << QPointF(-30, 0) << -60;
    QTest::newRow("aslant") << QPointF(-30, -40) << QPointF(30, 40) << QPointF(-30, -40)
                            << QPointF(30, 40) << 100;
    QTest::newRow("one after the other") << left << right << QPointF(20, 0) << QPointF(20, 0) << 0;
    QTest::newRow("upright") << QPointF(0, 40) << QPointF(0, -40) << QPointF(0, 20)
                             << QPointF(0, -40) << 60;
}

void TestTouchScreen::twoFingersResize()
{
    QFETCH(QPointF, first);
    QFETCH(QPointF, second);
    QFETCH(QPointF, moveFirst);
    QFETCH(QPointF, moveSecond);
    QFETCH(int, growth);

    QVERIFY(start());
    press(0, middle + first);
    press(1, middle + second);
    QCOMPARE(m_clock->window().geometry(), place);
    constexpr int steps = 10;
    for (int step = 1; step <= steps; ++step) {
        if (!moveFirst.isNull())
            m_touch.move(0, middle + first + moveFirst * step / steps);
        if (!moveSecond.isNull())
            m_touch.move(1, middle + second + moveSecond * step / steps);
        QTest::qWait(stepMs);
    }
    TRY_NEAR(m_clock->window(), grown(place, growth));
    const QRect after = rest();
    QVERIFY(isNear(after, grown(place, growth)));
    QCOMPARE(after.width(), after.height());
    m_touch.lift(1);
    m_touch.lift(0);
    QCOMPARE(rest(), after);
    QCOMPARE(storedAtTheEnd(), QRectF(after));
}

void TestTouchScreen::liftingTheSecondFingerMovesNothing_data()
{
    QTest::addColumn<QPointF>("drag"); // of the first one, before the second touches
    QTest::addColumn<QPointF>("pinch"); // of the first one, while both touch

    QTest::newRow("first one still") << QPointF() << QPointF();
    QTest::newRow("first one pinches") << QPointF() << QPointF(-52, 13);
    QTest::newRow("first one drags before") << QPointF(90, 45) << QPointF();
    QTest::newRow("first one drags and pinches") << QPointF(-70, 60) << QPointF(-30, 10);
}

void TestTouchScreen::liftingTheSecondFingerMovesNothing()
{
    QFETCH(QPointF, drag);
    QFETCH(QPointF, pinch);

    QVERIFY(start());
    QPointF first = middle - QPointF(40, 0);
    press(0, first);
    if (!drag.isNull()) {
        slide(0, first, first + drag, 10);
        first += drag;
        TRY_NEAR(m_clock->window(), place.translated(drag.toPoint()));
    }
    const QPointF second = first + QPointF(80, 0);
    const QRect dragged = rest();
    press(1, second);
    QCOMPARE(m_clock->window().geometry(), dragged);
    if (!pinch.isNull()) {
        slide(0, first, first + pinch, 10);
        first += pinch;
    }
    slide(1, second, second + QPointF(50, 0), 10);
    const QRect pinched = rest();
    QVERIFY(pinched.width() > dragged.width());
    m_touch.lift(1);
    QCOMPARE(rest(), pinched);

    const QPointF by(-64, 48);
    slide(0, first, first + by, 16);
    TRY_NEAR(m_clock->window(), pinched.translated(by.toPoint()));
    const QRect after = rest();
    QCOMPARE(after.size(), pinched.size());
    m_touch.lift(0);
    QCOMPARE(rest(), after);
    QCOMPARE(storedAtTheEnd(), QRectF(after));
}

void TestTouchScreen::liftingTheFirstFingerMovesNothing()
{
    QVERIFY(start());
    const QPointF first = middle - QPointF(40, 0);
    QPointF second = middle + QPointF(40, 0);
    press(0, first);
    press(1, second);
    for (int step = 1; step <= 10; ++step) {
        m_touch.move(0, first - QPointF(3 * step, 0));
        m_touch.move(1, second + QPointF(3 * step, 0));
        QTest::qWait(stepMs);
    }
    second += QPointF(30, 0);
    TRY_NEAR(m_clock->window(), grown(place, 60));
    const QRect pinched = rest();
    m_touch.lift(0);
    QCOMPARE(rest(), pinched);
    slide(1, second, second + QPointF(40, -30), 10);
    QCOMPARE(rest(), pinched);
    m_touch.lift(1);
    QCOMPARE(rest(), pinched);
    QCOMPARE(storedAtTheEnd(), QRectF(pinched));
}

namespace
{

struct Corner {
    const char *name;
    int growX; // +1 where a finger that goes right makes the clock larger
    int growY;

    QPointF grip() const
    {
        return QPoint(growX > 0 ? place.right() - opaque : place.left() + opaque,
            growY > 0 ? place.bottom() - opaque : place.top() + opaque);
    }
    QPointF outward(QPointF by) const { return {by.x() * growX, by.y() * growY}; }
    // The clock when only this corner has moved.
    QRect grown(int growth) const
    {
        return place.adjusted(growX < 0 ? -growth : 0, growY < 0 ? -growth : 0,
            growX > 0 ? growth : 0, growY > 0 ? growth : 0);
    }
};

} // namespace

void TestTouchScreen::cornersFollowTheFinger_data()
{
    QTest::addColumn<Corner>("corner");
    QTest::addColumn<QPointF>("by"); // outward

    constexpr Corner corners[] = {
        {"top left", -1, -1},
        {"top right", 1, -1},
        {"bottom left", -1, 1},
    };
    for (const Corner &corner : corners) {
        QTest::addRow("%s, outward", corner.name) << corner << QPointF(60, 40);
        QTest::addRow("%s, inward", corner.name) << corner << QPointF(-60, -20);
        QTest::addRow("%s, rather along an edge", corner.name) << corner << QPointF(80, -20);
        QTest::addRow("%s, almost across", corner.name) << corner << QPointF(-40, 80);
    }
}

void TestTouchScreen::cornersFollowTheFinger()
{
    QFETCH(Corner, corner);
    QFETCH(QPointF, by);

    QVERIFY(start({{u"ResizeEnabled"_s, true}}));
    press(0, corner.grip());
    QCOMPARE(m_clock->window().geometry(), place);
    slide(0, corner.grip(), corner.grip() + corner.outward(by), 10);
    const QRect expected = corner.grown(int(by.x() + by.y()) / 2); // the mean of both directions
    TRY_NEAR(m_clock->window(), expected);
    const QRect after = rest();
    QVERIFY(isNear(after, expected));
    m_touch.lift(0);
    QCOMPARE(rest(), after);
    QCOMPARE(storedAtTheEnd(), QRectF(after));
}

// It adds what the finger has done so far at each step.
void TestTouchScreen::bottomRightCornerGrows()
{
    QVERIFY(start({{u"ResizeEnabled"_s, true}}));
    constexpr Corner corner = {"bottom right", 1, 1};
    press(0, corner.grip());
    slide(0, corner.grip(), corner.grip() + QPointF(30, 20), 5);
    QTRY_VERIFY(m_clock->window().geometry().width() > place.width());
    const QRect after = rest();
    QCOMPARE(after.topLeft(), place.topLeft());
    QCOMPARE(after.width(), after.height());
    m_touch.lift(0);
    QCOMPARE(rest(), after);
    QCOMPARE(storedAtTheEnd(), QRectF(after));
}

void TestTouchScreen::partsOfANotchAddUp_data()
{
    QTest::addColumn<int>("pauseMs");
    QTest::addColumn<bool>("resizeEnabled");

    QTest::newRow("as a finger turns it") << 40 << false;
    QTest::newRow("as fast as can be") << 0 << false;
    QTest::newRow("resizable") << 40 << true;
}

void TestTouchScreen::partsOfANotchAddUp()
{
    QFETCH(int, pauseMs);
    QFETCH(bool, resizeEnabled);

    QVERIFY(start({{u"ResizeEnabled"_s, resizeEnabled}}));
    m_wheel.moveTo(middle);
    QTest::qWait(pressMs);
    const auto turn = [&](int times, double notches) {
        for (int i = 0; i < times; ++i) {
            m_wheel.turn(notches);
            QTest::qWait(pauseMs);
        }
    };
    {
        const XInput::ControlKey control;
        QTest::qWait(pressMs);
        turn(40, 1 / 8.0);
        QTRY_COMPARE(m_clock->window().geometry(), grown(place, 60));
        QCOMPARE(rest(), grown(place, 60));
        turn(40, -1 / 8.0);
        QTRY_COMPARE(m_clock->window().geometry(), place);
        QCOMPARE(rest(), place);
    }
    QCOMPARE(storedAtTheEnd(), QRectF(place));
}

void TestTouchScreen::partOfANotchIsForgotten_data()
{
    QTest::addColumn<int>("pauseMs");
    QTest::addColumn<QPoint>("drag");
    QTest::addColumn<int>("growth");

    // An eighth of a notch is one and a half pixels.
    QTest::newRow("not at once") << 300 << QPoint() << 3;
    QTest::newRow("after a second") << 1500 << QPoint() << 2;
    QTest::newRow("after a drag") << 0 << QPoint(40, 20) << 2;
}

void TestTouchScreen::partOfANotchIsForgotten()
{
    QFETCH(int, pauseMs);
    QFETCH(QPoint, drag);
    QFETCH(int, growth);

    QVERIFY(start());
    m_wheel.moveTo(middle);
    QTest::qWait(pressMs);
    const auto turn = [&] {
        const XInput::ControlKey control;
        QTest::qWait(pressMs);
        m_wheel.turn(1 / 8.0);
        QTest::qWait(pressMs);
    };
    turn();
    QTest::qWait(pauseMs);
    if (!drag.isNull()) {
        QTest::qWait(pressMs); // as long as a hand takes
        const QPoint corner = m_clock->window().geometry().topLeft();
        m_wheel.press();
        m_wheel.moveTo(middle + drag);
        m_wheel.release();
        QTRY_COMPARE(m_clock->window().geometry().topLeft(), corner + drag);
    }
    turn();
    QTRY_COMPARE(m_clock->window().geometry().width(), place.width() + growth);
    QCOMPARE(rest().width(), place.width() + growth);
}

void TestTouchScreen::wholeNotchesCount()
{
    QVERIFY(start());
    m_wheel.moveTo(middle);
    QTest::qWait(pressMs);
    const XInput::ControlKey control;
    QTest::qWait(pressMs);
    int growth = 0;
    for (const int notches : {1, 1, -1, 2, -3, -1}) {
        m_wheel.turn(notches);
        growth += 12 * notches;
        QTRY_COMPARE(m_clock->window().geometry(), grown(place, growth));
    }
    QCOMPARE(rest(), grown(place, growth));
}

QTEST_MAIN(TestTouchScreen)
#include "tst_touchscreen.moc"
