// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "platform/nearestscreen.h"

#include <QtTest/qtest.h>

#include <limits>

namespace
{

constexpr int farAway = std::numeric_limits<int>::max();
const QList<QRect> twoScreens{{0, 0, 1920, 1080}, {1920, 200, 1280, 1024}};

} // namespace

class TestNearestScreen : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }
    void meets_data();
    void meets();
    void moves_data();
    void moves();
    void withoutScreens();
};

void TestNearestScreen::meets_data()
{
    QTest::addColumn<QRect>("window");
    QTest::addColumn<bool>("meets");
    QTest::newRow("inside") << QRect(10, 10, 200, 200) << true;
    QTest::newRow("one pixel at the corner") << QRect(-199, -199, 200, 200) << true;
    QTest::newRow("just outside") << QRect(-200, 0, 200, 200) << false;
    QTest::newRow("between the screens' heights") << QRect(1930, -10, 200, 200) << false;
    QTest::newRow("on the second") << QRect(3000, 1000, 200, 200) << true;
}

void TestNearestScreen::meets()
{
    QFETCH(QRect, window);
    QTEST(meetsAnyScreen(window.topLeft(), window.size(), twoScreens), "meets");
}

void TestNearestScreen::moves_data()
{
    QTest::addColumn<QPoint>("position");
    QTest::addColumn<int>("side");
    QTest::addColumn<QPoint>("moved");
    QTest::newRow("already inside") << QPoint(10, 10) << 200 << QPoint(10, 10);
    QTest::newRow("left of the first") << QPoint(-500, 300) << 200 << QPoint(0, 300);
    QTest::newRow("above and left") << QPoint(-500, -500) << 200 << QPoint(0, 0);
    QTest::newRow("below the first") << QPoint(100, 5000) << 200 << QPoint(100, 880);
    QTest::newRow("right of the second") << QPoint(9000, 500) << 200 << QPoint(3000, 500);
    QTest::newRow("above the second") << QPoint(2500, -300) << 200 << QPoint(2500, 200);
    QTest::newRow("larger than any screen") << QPoint(-9000, -9000) << 4000 << QPoint(0, 0);
    QTest::newRow("at the end of what an int holds")
        << QPoint(farAway, farAway) << 200 << QPoint(3000, 1024);
    QTest::newRow("at the other end") << QPoint(-farAway - 1, -farAway - 1) << 200 << QPoint(0, 0);
}

void TestNearestScreen::moves()
{
    QFETCH(QPoint, position);
    QFETCH(int, side);
    const QSize size(side, side);
    QCOMPARE(meetsAnyScreen(position, size, twoScreens), position == QPoint(10, 10));
    QTEST(positionOnNearestScreen(position, size, twoScreens), "moved");
}

void TestNearestScreen::withoutScreens()
{
    QVERIFY(!meetsAnyScreen(QPoint(10, 20), QSize(30, 30), {}));
    QCOMPARE(positionOnNearestScreen(QPoint(10, 20), QSize(30, 30), {}), QPoint(10, 20));
}

QTEST_APPLESS_MAIN(TestNearestScreen)
#include "tst_nearestscreen.moc"
