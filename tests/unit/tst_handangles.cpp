// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "manager/handangles.h"

#include <QtTest/qtest.h>

class TestHandAngles : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }
    void angles_data();
    void angles();
};

void TestHandAngles::angles_data()
{
    QTest::addColumn<QTime>("time");
    QTest::addColumn<double>("second");
    QTest::addColumn<double>("minute");
    QTest::addColumn<double>("hour");

    QTest::newRow("midnight: all at twelve") << QTime(0, 0) << -90.0 << -90.0 << -90.0;
    QTest::newRow("noon: all at twelve") << QTime(12, 0) << -90.0 << -90.0 << -90.0;
    QTest::newRow("three o'clock is 0") << QTime(3, 0) << -90.0 << -90.0 << 0.0;
    QTest::newRow("half past twelve") << QTime(12, 30) << -90.0 << 90.0 << -75.0;
    QTest::newRow("the hand of the hour moves with the second")
        << QTime(10, 8, 42) << 162.0 << -37.8 << 214.35;
    QTest::newRow("last second of the day")
        << QTime(23, 59, 59) << 264.0 << 269.9 << 270.0 - 1.0 / 120;
    QTest::newRow("milliseconds do not count") << QTime(3, 0, 0, 999) << -90.0 << -90.0 << 0.0;
}

void TestHandAngles::angles()
{
    QFETCH(QTime, time);
    QFETCH(double, second);
    QFETCH(double, minute);
    QFETCH(double, hour);
    const HandAngles angles = handAngles(time);
    const double error = qMax(
        qAbs(angles.second - second), qMax(qAbs(angles.minute - minute), qAbs(angles.hour - hour)));
    QCOMPARE_LT(error, 1e-9);
}

QTEST_APPLESS_MAIN(TestHandAngles)
#include "tst_handangles.moc"
