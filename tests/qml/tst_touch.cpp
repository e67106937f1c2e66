// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/qml/clockwindow.h"

#include <QtGui/qpointingdevice.h>

#include <memory>

#include <private/qquickdeliveryagent_p_p.h>
#include <private/qquickwindow_p.h>

using namespace Qt::StringLiterals;

namespace
{

constexpr QRect start(200, 150, 320, 320);
constexpr QPoint middle(360, 310); // of the clock at the start

struct CornerRow {
    const char *name;
    QPoint point; // in the grip, at the start
    int growX; // +1 where a move to the right makes the clock larger
    int growY;
};
constexpr CornerRow corners[] = {
    {"bottom right", {504, 454}, 1, 1},
    {"top right", {504, 166}, 1, -1},
    {"bottom left", {216, 454}, -1, 1},
    {"top left", {216, 166}, -1, -1},
};

/// Fingers on the clock, known by number. Points are global.
class Fingers
{
public:
    Fingers(const ClockWindow &clock, QPointingDevice *screen)
        : m_window(clock.window())
        , m_sequence(QTest::touchEvent(m_window, screen, false))
    {
    }

    void press(int id, QPoint point)
    {
        hold(id);
        m_sequence.press(id, m_window->mapFromGlobal(point)).commit();
        m_down += id;
    }
    void move(int id, QPoint point)
    {
        hold(id);
        m_sequence.move(id, m_window->mapFromGlobal(point)).commit();
        // Qt keeps the motion of fingers for the next frame; here it comes at once.
        auto *agent = QQuickWindowPrivate::get(m_window)->deliveryAgentPrivate();
        if (agent->delayedTouch)
            agent->deliverDelayedTouchEvent();
        QCoreApplication::processEvents(); // the items follow the window's size
    }
    void release(int id, QPoint point)
    {
        hold(id);
        m_sequence.release(id, m_window->mapFromGlobal(point)).commit();
        m_down.removeAll(id);
    }

private:
    // Tells of all fingers but one that they stay.
    void hold(int exceptId)
    {
        for (const int id : std::as_const(m_down)) {
            if (id != exceptId)
                m_sequence.stationary(id);
        }
    }

    QQuickWindow *m_window;
    QTest::QTouchEventSequence m_sequence;
    QList<int> m_down;
};

} // namespace

/// What one finger and two do to the clock.
class tst_Touch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { m_screen.reset(QTest::createTouchDevice()); }
    void init() { failOnRealWarning(); }

    void touchAloneChangesNothing_data();
    void touchAloneChangesNothing();
    void fingerMovesTheClock();
    void fixedClockStays();
    void touchSaves();
    void touchIsNoMousePress();
    void pinchResizesAboutTheCentre_data();
    void pinchResizesAboutTheCentre();
    void pinchByEitherFinger_data();
    void pinchByEitherFinger();
    void pinchReachesTheLimits();
    void pinchKeepsMaskAndSettings();
    void secondPinchStartsAnew();
    void fixedClockIsPinchedSidewaysByTheFirstFinger();
    void fingerGoesOnAfterAPinch();
    void cornerFollowsTheFinger_data();
    void cornerFollowsTheFinger();
    void bottomRightCornerGoesFromThePresentSize();
    void cornerNeedsBothDirections();
    void cornersReachTheLimits_data();
    void cornersReachTheLimits();
    void cornerSavesOnRelease();
    void cornersWorkWhileTheClockCanBeResized();

private:
    std::unique_ptr<QPointingDevice> m_screen;
};

void tst_Touch::touchAloneChangesNothing_data()
{
    QTest::addColumn<QPoint>("point");
    QTest::newRow("middle") << middle;
    for (const CornerRow &corner : corners)
        QTest::newRow(corner.name) << corner.point;
}

void tst_Touch::touchAloneChangesNothing()
{
    QFETCH(QPoint, point);
    ClockWindow clock(true);
    Fingers fingers(clock, m_screen.get());
    fingers.press(0, point);
    QCOMPARE(clock.geometry(), start);
    fingers.release(0, point);
    QCOMPARE(clock.geometry(), start);
    fingers.press(0, point + QPoint(5, -5)); // where a finger has been before
    QCOMPARE(clock.geometry(), start);
    fingers.release(0, point + QPoint(5, -5));
}

void tst_Touch::fingerMovesTheClock()
{
    ClockWindow clock;
    Fingers fingers(clock, m_screen.get());
    fingers.press(0, middle);
    fingers.move(0, middle + QPoint(30, -20));
    QCOMPARE(clock.geometry(), start.translated(30, -20));
    fingers.release(0, middle + QPoint(30, -20));
    // The next finger starts from there.
    fingers.press(0, middle);
    fingers.move(0, middle + QPoint(-15, 5));
    QCOMPARE(clock.geometry(), start.translated(15, -15));
    fingers.release(0, middle + QPoint(-15, 5));
}

void tst_Touch::fixedClockStays()
{
    ClockWindow clock;
    Fingers fingers(clock, m_screen.get());
    clock.documents.config.setFixed(true);
    fingers.press(0, middle);
    fingers.move(0, middle + QPoint(30, -20));
    QCOMPARE(clock.geometry(), start);
    fingers.release(0, middle + QPoint(30, -20));
    QCOMPARE(clock.documents.manager.takeCalls(u"lazySaveConfig"_s), 1);
}

void tst_Touch::touchSaves()
{
    ClockWindow clock;
    Fingers fingers(clock, m_screen.get());
    fingers.press(0, middle);
    fingers.move(0, middle + QPoint(30, -20));
    QCOMPARE(clock.documents.manager.calls, QStringList());
    fingers.press(1, middle + QPoint(80, 0));
    clock.documents.manager.calls.clear();
    fingers.release(1, middle + QPoint(80, 0));
    QCOMPARE(clock.documents.manager.calls, QStringList{u"lazySaveConfig"_s});
    fingers.release(0, middle + QPoint(30, -20));
    QCOMPARE(clock.documents.manager.takeCalls(u"lazySaveConfig"_s), 2);
}

// Or the clock would move twice.
void tst_Touch::touchIsNoMousePress()
{
    ClockWindow clock(true);
    Fingers fingers(clock, m_screen.get());
    QTRY_VERIFY(clock.hasGrips());
    for (const QPoint point : {middle, corners[0].point}) {
        clock.documents.manager.calls.clear();
        fingers.press(0, point);
        fingers.release(0, point);
        QCOMPARE(clock.documents.manager.calls, QStringList{u"lazySaveConfig"_s});
    }
}

void tst_Touch::pinchResizesAboutTheCentre_data()
{
    QTest::addColumn<QPoint>("first"); // relative to the middle, all four
    QTest::addColumn<QPoint>("second");
    QTest::addColumn<QPoint>("secondAfter");
    QTest::addColumn<QRect>("geometry");
    QTest::newRow("spread by 40") << QPoint(-50, 0) << QPoint(50, 0) << QPoint(90, 0)
                                  << QRect(180, 130, 360, 360);
    QTest::newRow("close by 40") << QPoint(-50, 0) << QPoint(50, 0) << QPoint(10, 0)
                                 << QRect(220, 170, 280, 280);
    QTest::newRow("down") << QPoint(0, -50) << QPoint(0, 50) << QPoint(0, 90)
                          << QRect(180, 130, 360, 360);
    QTest::newRow("odd") << QPoint(-50, 0) << QPoint(50, 0) << QPoint(55, 0)
                         << QRect(197, 147, 325, 325); // 197.5 cut
    QTest::newRow("across, 50 to 100")
        << QPoint(0, 0) << QPoint(30, 40) << QPoint(60, 80) << QRect(175, 125, 370, 370);
    QTest::newRow("distance cut") << QPoint(0, 0) << QPoint(60, 0) << QPoint(60, 15)
                                  << QRect(199, 149, 321, 321); // 61.8, and 199.5
}

void tst_Touch::pinchResizesAboutTheCentre()
{
    QFETCH(QPoint, first);
    QFETCH(QPoint, second);
    QFETCH(QPoint, secondAfter);
    QFETCH(QRect, geometry);
    ClockWindow clock;
    Fingers fingers(clock, m_screen.get());
    fingers.press(0, middle + first);
    fingers.press(1, middle + second);
    QCOMPARE(clock.geometry(), start); // only a change of the distance counts
    // In one go: both directions count as one step of the finger.
    fingers.move(1, middle + secondAfter);
    QCOMPARE(clock.geometry(), geometry);
}

void tst_Touch::pinchByEitherFinger_data()
{
    QTest::addColumn<int>("finger");
    QTest::newRow("first") << 0;
    QTest::newRow("second") << 1;
}

void tst_Touch::pinchByEitherFinger()
{
    QFETCH(int, finger);
    const QPoint points[] = {middle - QPoint(40, 0), middle + QPoint(40, 0)};
    ClockWindow clock;
    Fingers fingers(clock, m_screen.get());
    fingers.press(0, points[0]);
    fingers.press(1, points[1]);
    fingers.move(finger, points[finger] + QPoint(finger == 0 ? -20 : 20, 0));
    QCOMPARE(clock.geometry(), QRect(190, 140, 340, 340));
}

void tst_Touch::pinchReachesTheLimits()
{
    for (const auto &[by, side] : {std::pair(-248, 72), {-249, 320}, {30, 350}, {31, 320}}) {
        ClockWindow clock;
        Fingers fingers(clock, m_screen.get());
        clock.window()->setProperty("limitMax", 350);
        fingers.press(0, middle - QPoint(130, 0));
        fingers.press(1, middle + QPoint(130, 0));
        fingers.move(1, middle + QPoint(130 + by, 0));
        QCOMPARE(clock.geometry().size(), QSize(side, side));
    }
}

void tst_Touch::pinchKeepsMaskAndSettings()
{
    ClockWindow clock;
    Fingers fingers(clock, m_screen.get());
    fingers.press(0, middle);
    fingers.press(1, middle + QPoint(60, 0));
    clock.documents.manager.calls.clear();
    fingers.move(1, middle + QPoint(80, 0));
    QCOMPARE(clock.documents.manager.calls, (QStringList{u"updateMask"_s, u"lazySaveConfig"_s}));
}

// With another distance, which must not count as a change.
void tst_Touch::secondPinchStartsAnew()
{
    ClockWindow clock;
    Fingers fingers(clock, m_screen.get());
    fingers.press(0, middle);
    fingers.press(1, middle + QPoint(60, 0));
    fingers.move(1, middle + QPoint(80, 0));
    // The clock has moved below the fingers: this is where they are on it.
    const QPoint shift(-10, -10);
    fingers.release(1, middle + QPoint(80, 0) + shift);
    const QRect between = clock.geometry();
    QCOMPARE(between, QRect(190, 140, 340, 340));
    fingers.press(1, middle + QPoint(0, 120) + shift);
    QCOMPARE(clock.geometry(), between);
    fingers.move(1, middle + QPoint(0, 110) + shift);
    QCOMPARE(clock.geometry(), QRect(195, 145, 330, 330));
}

// Meant so: its vertical motion, and either of the second one's, is stopped before.
void tst_Touch::fixedClockIsPinchedSidewaysByTheFirstFinger()
{
    ClockWindow clock;
    Fingers fingers(clock, m_screen.get());
    clock.documents.config.setFixed(true);
    const QPoint other = middle + QPoint(60, 0);
    fingers.press(0, middle);
    fingers.press(1, other);
    fingers.move(1, other + QPoint(20, 0));
    fingers.move(1, other + QPoint(0, 70));
    QCOMPARE(clock.geometry(), start);
    fingers.move(1, other);
    fingers.move(0, middle + QPoint(0, 70));
    QCOMPARE(clock.geometry(), start);
    fingers.move(0, middle);
    fingers.move(0, middle - QPoint(20, 0));
    QCOMPARE(clock.geometry(), QRect(190, 140, 340, 340));
}

void tst_Touch::fingerGoesOnAfterAPinch()
{
    ClockWindow clock;
    Fingers fingers(clock, m_screen.get());
    fingers.press(0, middle);
    fingers.press(1, middle + QPoint(60, 0));
    fingers.move(1, middle + QPoint(80, 0));
    fingers.release(1, middle + QPoint(80, 0));
    const QVariant rect = clock.item(u"multiPointTouchArea"_s)->property("windowStartRect");
    QCOMPARE(rect.toRectF().toRect(), clock.geometry());
    QVERIFY(clock.geometry().width() > start.width());
}

void tst_Touch::cornerFollowsTheFinger_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QPoint>("by"); // outward
    QTest::addColumn<int>("growth");
    for (int row = 0; row < 4; ++row) {
        constexpr std::tuple<const char *, int, int, int> moves[] = {
            {"outward", 20, 20, 20},
            {"inward", -20, -20, -20},
            {"mean of both", 30, 10, 20},
            {"both ways", 30, -10, 10},
            {"half cut off", 11, 10, 10},
        };
        for (const auto &[name, x, y, growth] : moves)
            QTest::addRow("%s, %s", corners[row].name, name) << row << QPoint(x, y) << growth;
    }
}

void tst_Touch::cornerFollowsTheFinger()
{
    QFETCH(int, row);
    QFETCH(QPoint, by);
    QFETCH(int, growth);
    const CornerRow &corner = corners[row];
    ClockWindow clock(true);
    Fingers fingers(clock, m_screen.get());
    fingers.press(0, corner.point);
    fingers.move(0, corner.point + QPoint(by.x() * corner.growX, by.y() * corner.growY));
    QCOMPARE(clock.geometry().size(), start.size() + QSize(growth, growth));
    const int half = (by.x() + by.y()) % 2; // positions are cut toward zero, too: one pixel less
    QCOMPARE(
        clock.geometry().left(), corner.growX < 0 ? start.left() - growth - half : start.left());
    QCOMPARE(clock.geometry().top(), corner.growY < 0 ? start.top() - growth - half : start.top());
    QCOMPARE(clock.documents.manager.calls, QStringList()); // the mask is not updated here
}

// Meant so: it grows by the whole way at every step, faster than the finger goes.
void tst_Touch::bottomRightCornerGoesFromThePresentSize()
{
    ClockWindow clock(true);
    Fingers fingers(clock, m_screen.get());
    QObject *point = clock.item(u"resizeTouchBottomRight"_s);
    fingers.press(0, corners[0].point);
    const auto growthOfTwoSteps = [&] {
        point->setProperty("isChangeX", true);
        point->setProperty("isChangeY", true);
        QMetaObject::invokeMethod(point, "resize");
        return clock.window()->width() - start.width();
    };
    fingers.move(0, corners[0].point + QPoint(10, 10));
    QCOMPARE(clock.window()->width(), start.width() + 10);
    QCOMPARE(growthOfTwoSteps(), 20);
}

void tst_Touch::cornerNeedsBothDirections()
{
    ClockWindow clock(true);
    Fingers fingers(clock, m_screen.get());
    fingers.press(0, corners[3].point);
    fingers.move(0, corners[3].point - QPoint(20, 0));
    QCOMPARE(clock.geometry(), start);
    fingers.move(0, corners[3].point - QPoint(20, 10));
    QCOMPARE(clock.geometry(), QRect(185, 135, 335, 335));
}

void tst_Touch::cornersReachTheLimits_data()
{
    QTest::addColumn<int>("row");
    for (int row = 0; row < 4; ++row)
        QTest::newRow(corners[row].name) << row;
}

void tst_Touch::cornersReachTheLimits()
{
    QFETCH(int, row);
    const CornerRow &corner = corners[row];
    for (const auto &[by, side] : {std::pair(-248, 72), {-249, 320}, {80, 400}, {81, 320}}) {
        ClockWindow clock(true);
        Fingers fingers(clock, m_screen.get());
        clock.window()->setProperty("limitMax", 400);
        fingers.press(0, corner.point);
        fingers.move(0, corner.point + QPoint(corner.growX, corner.growY) * by);
        QCOMPARE(clock.geometry().size(), QSize(side, side));
    }
}

void tst_Touch::cornerSavesOnRelease()
{
    for (const CornerRow &corner : corners) {
        ClockWindow clock(true);
        Fingers fingers(clock, m_screen.get());
        fingers.press(0, corner.point);
        QCOMPARE(clock.documents.manager.calls, QStringList());
        fingers.release(0, corner.point);
        QCOMPARE(clock.documents.manager.calls, QStringList{u"lazySaveConfig"_s});
    }
}

void tst_Touch::cornersWorkWhileTheClockCanBeResized()
{
    for (const CornerRow &corner : corners) {
        ClockWindow clock(false);
        Fingers fingers(clock, m_screen.get());
        fingers.press(0, corner.point);
        fingers.move(0, corner.point + QPoint(12, 8));
        QCOMPARE(clock.geometry(), start.translated(12, 8)); // a finger like everywhere else
    }
}

int main(int argc, char **argv) { return runQmlTest<tst_Touch>(argc, argv); }

#include "tst_touch.moc"
