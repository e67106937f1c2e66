// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/qml/clockwindow.h"

#include <QtTest/qtestwheel.h>

#include <algorithm>

using namespace Qt::StringLiterals;

/// What the mouse does to the clock away from the corners.
class tst_Moving : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnRealWarning(); }

    void dragMovesTheClock();
    void dragTakesInputOfTheWholeSquare();
    void dragStepOnlyMoves();
    void fastDragIsExact_data();
    void fastDragIsExact();
    void fixedClockStays();
    void clockStaysWhileControlIsHeld();
    void rightDragGoesOnFromTheLastLeftPress();
    void rightPressKeepsTheMask();
    void wheelNeedsControl();
    void wheelKeepsTheCentre_data();
    void wheelKeepsTheCentre();
    void wheelStaysInsideTheLimits_data();
    void wheelStaysInsideTheLimits();
    void upperLimitIsOutOfTheWheelsReach();
    void doubleClickMakesASquare_data();
    void doubleClickMakesASquare();
    void touchStartsFromWhereTheMouseLeftTheClock();
};

namespace
{

void controlWheel(const ClockWindow &clock, int angle)
{
    const QSizeF items = clock.window()->contentItem()->size();
    const QPointF centre(items.width() / 2, items.height() / 2);
    QTest::wheelEvent(clock.window(), centre, {0, angle}, {}, Qt::ControlModifier);
}

} // namespace

void tst_Moving::dragMovesTheClock()
{
    ClockWindow clock;
    clock.press({360, 310});
    for (const QPoint by : {QPoint(1, 0), QPoint(40, -30), QPoint(-250, 170), QPoint(7, 9)}) {
        clock.move(QPoint(360, 310) + by);
        QCOMPARE(clock.geometry(), QRect(QPoint(200, 150) + by, QSize(320, 320)));
    }
}

void tst_Moving::dragTakesInputOfTheWholeSquare()
{
    ClockWindow clock;
    clock.press({360, 310});
    QCOMPARE(clock.documents.manager.calls, QStringList{u"clearMask"_s});
    clock.move({370, 320});
    clock.documents.manager.calls.clear();
    clock.release({370, 320});
    QCOMPARE(clock.documents.manager.calls, (QStringList{u"lazySaveConfig"_s, u"updateMask"_s}));
}

void tst_Moving::dragStepOnlyMoves()
{
    ClockWindow clock;
    clock.press({360, 310});
    clock.documents.manager.calls.clear();
    for (int step = 0; step < 20; ++step)
        clock.move({360 + step, 310 + step});
    QCOMPARE(clock.documents.manager.calls, QStringList());
}

void tst_Moving::fastDragIsExact_data()
{
    QTest::addColumn<int>("lag");
    for (const int lag : {1, 2, 5, 20})
        QTest::addRow("%d steps behind", lag) << lag;
}

// The X server tells places in the window as it was before the moves that are still on their way.
void tst_Moving::fastDragIsExact()
{
    QFETCH(int, lag);
    ClockWindow clock;
    clock.press({360, 310});
    for (int step = 1; step <= 40; ++step) {
        const QPoint by(step * 5, step * 3);
        const int known = std::max(0, step - 1 - lag); // the last move that the server has seen
        const QPoint serversWindow = QPoint(200, 150) + QPoint(known * 5, known * 3);
        const QPoint pointer = QPoint(360, 310) + by;
        clock.moveInside(pointer - serversWindow, pointer);
        QCOMPARE(clock.geometry().topLeft(), QPoint(200, 150) + by);
    }
}

void tst_Moving::fixedClockStays()
{
    ClockWindow clock;
    clock.documents.config.setFixed(true);
    clock.press({360, 310});
    clock.move({400, 400});
    QCOMPARE(clock.geometry(), QRect(200, 150, 320, 320));
    clock.documents.manager.calls.clear();
    clock.release({400, 400});
    QCOMPARE(clock.documents.manager.calls, (QStringList{u"lazySaveConfig"_s, u"updateMask"_s}));
}

void tst_Moving::clockStaysWhileControlIsHeld()
{
    ClockWindow clock;
    clock.press({360, 310});
    clock.move({400, 400}, Qt::ControlModifier);
    QCOMPARE(clock.geometry(), QRect(200, 150, 320, 320));
    clock.move({401, 400}, Qt::ShiftModifier);
    QCOMPARE(clock.geometry(), QRect(241, 240, 320, 320));
    clock.documents.manager.calls.clear();
    clock.release({401, 400});
    QCOMPARE(clock.documents.manager.calls, (QStringList{u"lazySaveConfig"_s, u"updateMask"_s}));
}

// Meant so: the press of the right button records nothing.
void tst_Moving::rightDragGoesOnFromTheLastLeftPress()
{
    ClockWindow clock;
    clock.press({360, 310});
    clock.move({370, 330});
    clock.release({370, 330});
    QCOMPARE(clock.geometry().topLeft(), QPoint(210, 170));

    clock.press({400, 400}, Qt::RightButton);
    clock.move({402, 401}, Qt::NoModifier);
    QCOMPARE(clock.geometry().topLeft(), QPoint(200 + 402 - 360, 150 + 401 - 310));
    clock.documents.manager.calls.clear();
    clock.release({402, 401}, Qt::RightButton);
    QCOMPARE(clock.documents.manager.calls, (QStringList{u"lazySaveConfig"_s, u"updateMask"_s}));
}

void tst_Moving::rightPressKeepsTheMask()
{
    ClockWindow clock;
    clock.press({360, 310}, Qt::RightButton);
    QCOMPARE(clock.documents.manager.calls, QStringList());
    clock.release({360, 310}, Qt::RightButton);
}

void tst_Moving::wheelNeedsControl()
{
    ClockWindow clock;
    for (const auto modifiers : {Qt::NoModifier, Qt::ShiftModifier, Qt::AltModifier})
        QTest::wheelEvent(clock.window(), {160, 160}, {0, 120}, {}, modifiers);
    QCOMPARE(clock.geometry(), QRect(200, 150, 320, 320));
    QCOMPARE(clock.documents.manager.calls, QStringList());
}

void tst_Moving::wheelKeepsTheCentre_data()
{
    QTest::addColumn<QPoint>("start");
    QTest::addColumn<int>("angle");
    QTest::addColumn<QRect>("geometry");
    QTest::newRow("notch up") << QPoint(200, 150) << 120 << QRect(194, 144, 332, 332);
    QTest::newRow("notch down") << QPoint(200, 150) << -120 << QRect(206, 156, 308, 308);
    // Every value is cut toward zero by itself: 321.5, 199.25, -20.75, 0.75.
    QTest::newRow("fraction, up") << QPoint(200, -20) << 15 << QRect(199, -20, 321, 321);
    QTest::newRow("fraction, down") << QPoint(0, -1) << -15 << QRect(0, 0, 318, 318);
    QTest::newRow("less than a pixel") << QPoint(200, 150) << 5 << QRect(199, 149, 320, 320);
}

void tst_Moving::wheelKeepsTheCentre()
{
    QFETCH(QPoint, start);
    QFETCH(int, angle);
    QFETCH(QRect, geometry);
    ClockWindow clock;
    clock.place({start, QSize(320, 320)});
    controlWheel(clock, angle);
    QCOMPARE(clock.geometry(), geometry);
    QCOMPARE(clock.documents.manager.calls, (QStringList{u"updateMask"_s, u"lazySaveConfig"_s}));
}

void tst_Moving::wheelStaysInsideTheLimits_data()
{
    QTest::addColumn<int>("side");
    QTest::addColumn<int>("angle");
    QTest::addColumn<int>("after");
    QTest::newRow("below the lower") << 80 << -120 << 80; // 68
    QTest::newRow("at the lower") << 84 << -120 << 84; // 72 itself is out of reach
    QTest::newRow("above the lower") << 85 << -120 << 73;
    QTest::newRow("back from the lower") << 72 << 120 << 84;
    QTest::newRow("below the upper") << 387 << 120 << 399;
    QTest::newRow("at the upper") << 388 << 120 << 388; // 400
    QTest::newRow("above the upper") << 389 << 120 << 389;
}

void tst_Moving::wheelStaysInsideTheLimits()
{
    QFETCH(int, side);
    QFETCH(int, angle);
    QFETCH(int, after);
    ClockWindow clock;
    clock.window()->setProperty("limitMax", 400); // the real one takes a picture of 250 MB
    clock.place({200, 150, side, side});
    controlWheel(clock, angle);
    const int shift = (side - after) / 2;
    QCOMPARE(clock.geometry(), QRect(200 + shift, 150 + shift, after, after));
    QCOMPARE(clock.documents.manager.calls.isEmpty(), side == after);
}

// Hidden, since a window of this size takes a picture of 250 MB. Its items keep their size then.
void tst_Moving::upperLimitIsOutOfTheWheelsReach()
{
    ClockWindow clock;
    clock.window()->hide();
    for (const auto &[side, after] : {std::pair(7668, 7668), {7667, 7679}}) {
        clock.window()->setGeometry(200, 150, side, side);
        controlWheel(clock, 120);
        QCOMPARE(clock.geometry().size(), QSize(after, after));
    }
}

void tst_Moving::doubleClickMakesASquare_data()
{
    QTest::addColumn<QSize>("before");
    QTest::addColumn<Qt::MouseButton>("button");
    QTest::addColumn<int>("side");
    QTest::newRow("left") << QSize(301, 200) << Qt::LeftButton << 250;
    QTest::newRow("right") << QSize(301, 200) << Qt::RightButton << 250;
    QTest::newRow("clamped first") << QSize(50, 100) << Qt::LeftButton << 86;
}

void tst_Moving::doubleClickMakesASquare()
{
    QFETCH(QSize, before);
    QFETCH(Qt::MouseButton, button);
    QFETCH(int, side);
    ClockWindow clock;
    clock.place({{200, 150}, before});
    QTest::mouseDClick(clock.window(), button, {}, {before.width() / 2, before.height() / 2});
    QCOMPARE(clock.geometry(), QRect(200, 150, side, side));
}

// Each of these moves the clock; a finger must not throw it back to where it was before.
void tst_Moving::touchStartsFromWhereTheMouseLeftTheClock()
{
    ClockWindow clock;
    const QObject *area = clock.item(u"multiPointTouchArea"_s);
    const auto start = [area] { return area->property("windowStartRect").toRectF().toRect(); };
    clock.press({360, 310});
    clock.move({371, 322});
    clock.release({371, 322});
    QCOMPARE(start(), QRect(211, 162, 320, 320));
    controlWheel(clock, 120);
    QCOMPARE(start(), clock.geometry());
    QCOMPARE(start().width(), 332);
    clock.window()->setPosition(20, 30);
    QVERIFY(start() != clock.geometry());
    Q_EMIT clock.documents.manager.windowMovingAnimationFinished(clock.window());
    QCOMPARE(start(), QRect(20, 30, 332, 332));
}

int main(int argc, char **argv) { return runQmlTest<tst_Moving>(argc, argv); }

#include "tst_moving.moc"
