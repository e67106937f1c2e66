// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/qml/clockwindow.h"

using namespace Qt::StringLiterals;

namespace
{

struct CornerRow {
    const char *name;
    const char16_t *grip;
    int growX; // +1 where a move to the right makes the clock larger
    int growY;
};
constexpr CornerRow corners[] = {
    {"top left", u"resizeHandleTopLeft", -1, -1},
    {"top right", u"resizeHandleTopRight", 1, -1},
    {"bottom right", u"resizeHandleBottomRight", 1, 1},
    {"bottom left", u"resizeHandleBottomLeft", -1, 1},
};

constexpr QRect start(200, 150, 320, 320);

QImage snapshot(const ClockWindow &clock, const CornerRow &corner)
{
    return clock.item(QString::fromUtf16(corner.grip))->property("img").value<QImage>();
}

QPoint gripOrigin(const ClockWindow &clock, const CornerRow &corner)
{
    const auto *grip = qobject_cast<QQuickItem *>(clock.item(QString::fromUtf16(corner.grip)));
    return clock.window()->mapToGlobal(grip->mapToScene({0, 0}).toPoint());
}

// A point of the corner's grip that is opaque, or one that is not.
QPoint gripPoint(const ClockWindow &clock, const CornerRow &corner, bool opaque)
{
    const QImage image = snapshot(clock, corner);
    const qreal ratio = image.width() / 32.0;
    for (int y = 4; y < 28; ++y) {
        for (int x = 4; x < 28; ++x) {
            if ((qAlpha(image.pixel(int(x * ratio), int(y * ratio))) != 0) == opaque)
                return gripOrigin(clock, corner) + QPoint(x, y);
        }
    }
    qFatal("no such pixel");
}

} // namespace

/// What the mouse does to the clock at its corners.
class tst_Resizing : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnRealWarning(); }

    void gripsStandInTheCorners();
    void gripsAreSeenWhileTheClockCanBeResized();
    void gripsAreHitWhereTheyAreOpaque_data();
    void gripsAreHitWhereTheyAreOpaque();
    void cornersFollowThePointer_data();
    void cornersFollowThePointer();
    void quadrantsEndAtTheAxes_data();
    void quadrantsEndAtTheAxes();
    void cornersReachTheLimits_data();
    void cornersReachTheLimits();
    void upperLimitIsReached();
    void refusedStepChangesNothing();
    void dragStepOnlyResizes();
    void releaseSaves();
    void transparentPixelStartsADrag_data();
    void transparentPixelStartsADrag();
    void snapshotCountsWhateverIsSeen();
    void gripNeverSeenStartsADrag();
    void onlyAPlainNoIsAMiss_data();
    void onlyAPlainNoIsAMiss();
    void gripWorksWhenSwitchedOnLater();
    void gripWorksAfterTheWindowWasHidden();
    void pressCountsWhereItIsInTheWindow();
    void withoutManagerThePressIsSwallowed();
};

void tst_Resizing::gripsStandInTheCorners()
{
    ClockWindow clock(true);
    QVERIFY(QTest::qWaitFor([&] { return clock.hasGrips(); }));
    const QString url = clock.documents.theme.resizeGrip();
    for (const CornerRow &corner : corners) {
        const auto *grip = qobject_cast<QQuickItem *>(clock.item(QString::fromUtf16(corner.grip)));
        QCOMPARE(grip->size(), QSizeF(32, 32));
        QCOMPARE(grip->position(), QPointF(corner.growX > 0 ? 288 : 0, corner.growY > 0 ? 288 : 0));
        QCOMPARE(grip->opacity(), 0.8);
        QCOMPARE(grip->property("source").toUrl(), QUrl(url));
        QCOMPARE(grip->property("mirror").toBool(), corner.growX > 0);
        QCOMPARE(grip->property("mirrorVertically").toBool(), corner.growY > 0);
    }
}

void tst_Resizing::gripsAreSeenWhileTheClockCanBeResized()
{
    ClockWindow clock;
    const auto *layer = qobject_cast<QQuickItem *>(clock.item(u"itemRoot"_s));
    QVERIFY(!layer->isVisible());
    clock.documents.config.setResizeEnabled(true);
    QVERIFY(layer->isVisible());
    QTRY_VERIFY(clock.hasGrips());
    clock.documents.config.setResizeEnabled(false);
    QVERIFY(!layer->isVisible());
}

void tst_Resizing::gripsAreHitWhereTheyAreOpaque_data()
{
    QTest::addColumn<int>("row");
    for (int row = 0; row < 4; ++row)
        QTest::newRow(corners[row].name) << row;
}

// Compared at every logical pixel, where the manager is asked.
void tst_Resizing::gripsAreHitWhereTheyAreOpaque()
{
    QFETCH(int, row);
    ClockWindow clock(true);
    QTRY_VERIFY(clock.hasGrips());
    const qreal ratio = clock.window()->devicePixelRatio();
    QCOMPARE(snapshot(clock, corners[row]).size(), QSize(32, 32) * ratio);

    QImage drawing(u":/themes/basic/dark_blue/clock_resize_grip.svg"_s);
    drawing = drawing.scaled(32, 32, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    QObject *grip = clock.item(QString::fromUtf16(corners[row].grip));
    int opaque = 0;
    int different = 0;
    for (int y = 0; y < 32; ++y) {
        for (int x = 0; x < 32; ++x) {
            bool covers = false;
            QMetaObject::invokeMethod(grip, "covers", qReturnArg(covers), QPointF(x, y));
            // The drawing is that of the corner at the top left.
            const QPoint drawn(
                corners[row].growX > 0 ? 31 - x : x, corners[row].growY > 0 ? 31 - y : y);
            opaque += covers;
            different += covers != (qAlpha(drawing.pixel(drawn)) != 0);
        }
    }
    QVERIFY(opaque > 100);
    QVERIFY2(different < 60, qPrintable(QString::number(different))); // along its outline only
}

void tst_Resizing::cornersFollowThePointer_data()
{
    QTest::addColumn<int>("row");
    QTest::addColumn<QPoint>("by");
    QTest::addColumn<int>("growth"); // of the side
    // Given outward and downward for the bottom right corner; the others are its mirror images.
    constexpr std::tuple<const char *, int, int, int> moves[] = {
        {"outward, flat", 40, 10, 10},
        {"outward, steep", 10, 40, 10},
        {"outward, diagonal", 25, 25, 25},
        {"inward, flat", -40, -10, -10},
        {"inward, steep", -10, -40, -10},
        {"inward, diagonal", -25, -25, -25},
        {"along x only", 30, 0, 0},
        {"along y only", 0, 30, 0},
        {"against x only", -30, 0, 0},
        {"against y only", 0, -30, 0},
        {"off, outward in x", 30, -10, 0},
        {"off, outward in y", -10, 30, 0},
        {"off, by one pixel", -1, 40, 0},
    };
    for (int row = 0; row < 4; ++row) {
        for (const auto &[name, x, y, growth] : moves) {
            QTest::addRow("%s, %s", corners[row].name, name)
                << row << QPoint(x * corners[row].growX, y * corners[row].growY) << growth;
        }
    }
}

void tst_Resizing::cornersFollowThePointer()
{
    QFETCH(int, row);
    QFETCH(QPoint, by);
    QFETCH(int, growth);
    ClockWindow clock(true);
    QTRY_VERIFY(clock.hasGrips());
    const QPoint from = gripPoint(clock, corners[row], true);
    clock.press(from);
    clock.move(from + by);
    QRect expected(start.topLeft(), QSize(start.width() + growth, start.height() + growth));
    if (corners[row].growX < 0)
        expected.moveRight(start.right()); // the corner opposite the grip stays
    if (corners[row].growY < 0)
        expected.moveBottom(start.bottom());
    QCOMPARE(clock.geometry(), expected);
    // It goes with the distance from the press, not from step to step.
    clock.move(from + by);
    QCOMPARE(clock.geometry(), expected);
    clock.move(from);
    QCOMPARE(clock.geometry(), start);
}

void tst_Resizing::quadrantsEndAtTheAxes_data() { gripsAreHitWhereTheyAreOpaque_data(); }

// Straight outward is still a resize, by nothing; straight inward is none.
void tst_Resizing::quadrantsEndAtTheAxes()
{
    QFETCH(int, row);
    ClockWindow clock(true);
    QTRY_VERIFY(clock.hasGrips());
    const QPoint from = gripPoint(clock, corners[row], true);
    const auto sideAt = [&](int outX, int outY) {
        clock.move(from + QPoint(outX * corners[row].growX, outY * corners[row].growY));
        return clock.geometry().width();
    };
    clock.press(from);
    for (const auto &[outX, outY, side] : {std::tuple(30, 0, 320), {0, 30, 320}, {0, 0, 320},
             {-30, 0, 345}, {0, -30, 345}, {-1, 1, 345}, {1, -1, 345}}) {
        QCOMPARE(sideAt(25, 25), 345);
        QCOMPARE(sideAt(outX, outY), side);
    }
}

void tst_Resizing::cornersReachTheLimits_data() { gripsAreHitWhereTheyAreOpaque_data(); }

void tst_Resizing::cornersReachTheLimits()
{
    QFETCH(int, row);
    ClockWindow clock(true);
    clock.window()->setProperty("limitMax", 400);
    QTRY_VERIFY(clock.hasGrips());
    const QPoint out(corners[row].growX, corners[row].growY);
    const QPoint from = gripPoint(clock, corners[row], true);
    clock.press(from);
    for (const auto &[by, side] : {std::pair(80, 400), {81, 400}, {500, 400}, {-248, 72},
             {-249, 72}, {-500, 72}, {-247, 73}}) {
        clock.move(from + out * by);
        QCOMPARE(clock.geometry().size(), QSize(side, side));
    }
}

// The step before stays: it is not brought to the limit instead.
void tst_Resizing::refusedStepChangesNothing()
{
    ClockWindow clock(true);
    QTRY_VERIFY(clock.hasGrips());
    const QPoint from = gripPoint(clock, corners[0], true);
    clock.press(from);
    clock.move(from + QPoint(100, 100));
    QCOMPARE(clock.geometry(), QRect(300, 250, 220, 220));
    clock.move(from + QPoint(249, 249));
    QCOMPARE(clock.geometry(), QRect(300, 250, 220, 220));
}

void tst_Resizing::upperLimitIsReached()
{
    ClockWindow clock(true);
    QTRY_VERIFY(clock.hasGrips());
    const QPoint from = gripPoint(clock, corners[2], true);
    clock.press(from);
    clock.move(from + QPoint(7361, 7361));
    QCOMPARE(clock.geometry().size(), QSize(320, 320));
    clock.move(from + QPoint(7360, 7360));
    QCOMPARE(clock.geometry().size(), QSize(7680, 7680));
}

void tst_Resizing::dragStepOnlyResizes()
{
    ClockWindow clock(true);
    QTRY_VERIFY(clock.hasGrips());
    const QPoint from = gripPoint(clock, corners[0], true);
    clock.press(from);
    QCOMPARE(clock.documents.manager.takeCalls(u"isMouseInnerImage"_s), 1);
    for (int step = 0; step < 20; ++step)
        clock.move(from - QPoint(step, step));
    QCOMPARE(clock.geometry().width(), 339);
    QCOMPARE(clock.documents.manager.calls, QStringList());
}

void tst_Resizing::releaseSaves()
{
    ClockWindow clock(true);
    QTRY_VERIFY(clock.hasGrips());
    const QPoint from = gripPoint(clock, corners[0], true);
    clock.press(from);
    clock.move(from - QPoint(10, 10));
    clock.documents.manager.calls.clear();
    clock.release(from - QPoint(10, 10));
    QCOMPARE(clock.documents.manager.calls, QStringList{u"lazySaveConfig"_s});
    // Where a finger that comes next starts from.
    const QVariant rect = clock.item(u"multiPointTouchArea"_s)->property("windowStartRect");
    QCOMPARE(rect.toRectF().toRect(), QRect(190, 140, 330, 330));
}

void tst_Resizing::transparentPixelStartsADrag_data() { gripsAreHitWhereTheyAreOpaque_data(); }

void tst_Resizing::transparentPixelStartsADrag()
{
    QFETCH(int, row);
    ClockWindow clock(true);
    QTRY_VERIFY(clock.hasGrips());
    const QPoint from = gripPoint(clock, corners[row], false);
    clock.press(from);
    clock.move(from + QPoint(20, 16));
    QCOMPARE(clock.geometry(), start.translated(20, 16));
    clock.documents.manager.calls.clear();
    clock.release(from + QPoint(20, 16));
    QCOMPARE(clock.documents.manager.calls, (QStringList{u"lazySaveConfig"_s, u"updateMask"_s}));
}

// The window's mask keeps the pointer from there; the corner itself asks its snapshot only.
void tst_Resizing::snapshotCountsWhateverIsSeen()
{
    for (const CornerRow &corner : corners) {
        ClockWindow clock(true);
        QTRY_VERIFY(clock.hasGrips());
        const QPoint opaque = gripPoint(clock, corner, true);
        const QPoint out(20 * corner.growX, 20 * corner.growY);
        clock.documents.config.setResizeEnabled(false);
        QCoreApplication::processEvents();
        clock.press(opaque);
        clock.move(opaque + out);
        QCOMPARE(clock.geometry().size(), QSize(340, 340));
        clock.release(opaque + out);
    }
}

// There is no snapshot of it: a null image must not reach the manager, which would be an error.
void tst_Resizing::gripNeverSeenStartsADrag()
{
    ClockWindow clock;
    for (const CornerRow &corner : corners) {
        clock.place(start);
        const QPoint from = gripOrigin(clock, corner) + QPoint(16, 16);
        clock.press(from);
        clock.move(from + QPoint(20, 16));
        QCOMPARE(clock.geometry(), start.translated(20, 16));
        clock.release(from + QPoint(20, 16));
    }
}

void tst_Resizing::onlyAPlainNoIsAMiss_data()
{
    QTest::addColumn<QVariant>("answer");
    QTest::addColumn<bool>("resizes");
    QTest::newRow("false") << QVariant(false) << false;
    QTest::newRow("true") << QVariant(true) << true;
    QTest::newRow("undefined") << QVariant() << true;
    QTest::newRow("zero") << QVariant(0) << true;
}

void tst_Resizing::onlyAPlainNoIsAMiss()
{
    QFETCH(QVariant, answer);
    QFETCH(bool, resizes);
    ClockWindow clock(true);
    QTRY_VERIFY(clock.hasGrips());
    clock.documents.manager.pixelAnswer = answer;
    const QPoint from = gripOrigin(clock, corners[2]) + QPoint(16, 16);
    clock.press(from);
    clock.move(from + QPoint(20, 20));
    QCOMPARE(clock.geometry(),
        resizes ? QRect(start.topLeft(), QSize(340, 340)) : start.translated(20, 20));
}

void tst_Resizing::gripWorksWhenSwitchedOnLater()
{
    ClockWindow clock;
    QCoreApplication::processEvents();
    clock.documents.config.setResizeEnabled(true);
    QTRY_VERIFY(clock.hasGrips());
    const QPoint from = gripPoint(clock, corners[0], true);
    clock.press(from);
    clock.move(from - QPoint(30, 30));
    QCOMPARE(clock.geometry(), QRect(170, 120, 350, 350));
    clock.release(from - QPoint(30, 30));
}

void tst_Resizing::gripWorksAfterTheWindowWasHidden()
{
    ClockWindow clock;
    clock.window()->hide();
    clock.documents.config.setResizeEnabled(true);
    QCoreApplication::processEvents();
    clock.window()->show();
    QTRY_VERIFY(clock.hasGrips());
}

// A window manager that has just placed the window may leave Qt with a wrong idea of where it is.
void tst_Resizing::pressCountsWhereItIsInTheWindow()
{
    ClockWindow clock(true);
    QTRY_VERIFY(clock.hasGrips());
    const QPoint error(100, -70);
    const QPoint from = gripPoint(clock, corners[2], true);
    const QPoint local = clock.window()->mapFromGlobal(from);
    clock.pressInside(local, from + error);
    clock.moveInside(local + QPoint(30, 30), from + error + QPoint(30, 30));
    QCOMPARE(clock.geometry(), QRect(start.topLeft(), QSize(350, 350)));
}

void tst_Resizing::withoutManagerThePressIsSwallowed()
{
    ClockWindow clock(true);
    QTRY_VERIFY(clock.hasGrips());
    const QPoint from = gripPoint(clock, corners[0], true);
    clock.window()->setProperty("mgr", QVariant::fromValue<QObject *>(nullptr));
    clock.press(from);
    clock.move(from - QPoint(30, 30));
    QCOMPARE(clock.geometry(), start);
    clock.release(from);
}

int main(int argc, char **argv) { return runQmlTest<tst_Resizing>(argc, argv); }

#include "tst_resizing.moc"
