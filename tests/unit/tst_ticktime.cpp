// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "manager/ticktime.h"

#include <QtTest/qtest.h>

class TestTickTime : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }
    void startOfSecond_data();
    void startOfSecond();
    void msToNextSecond_data();
    void msToNextSecond();
};

void TestTickTime::startOfSecond_data()
{
    QTest::addColumn<qint64>("now");
    QTest::addColumn<qint64>("start");

    QTest::newRow("on the second") << qint64(5000) << qint64(5000);
    QTest::newRow("just before the next") << qint64(5999) << qint64(5000);
    QTest::newRow("before the epoch") << qint64(-1) << qint64(-1000);
    QTest::newRow("on a second before the epoch") << qint64(-2000) << qint64(-2000);
}

void TestTickTime::startOfSecond()
{
    QFETCH(qint64, now);
    QTEST(::startOfSecond(now), "start");
}

void TestTickTime::msToNextSecond_data()
{
    QTest::addColumn<qint64>("published");
    QTest::addColumn<qint64>("now");
    QTest::addColumn<int>("wait");

    QTest::newRow("right on the second") << qint64(5000) << qint64(5000) << 1000;
    QTest::newRow("in the middle") << qint64(5000) << qint64(5400) << 600;
    QTest::newRow("just before the next") << qint64(5000) << qint64(5999) << 1;
    QTest::newRow("the work crossed the boundary") << qint64(5000) << qint64(6003) << 1;
    QTest::newRow("the work took seconds") << qint64(5000) << qint64(9500) << 1;
    QTest::newRow("set back meanwhile") << qint64(3605000) << qint64(5000) << 1000;
    QTest::newRow("set forward meanwhile") << qint64(5000) << qint64(3605000) << 1;
}

void TestTickTime::msToNextSecond()
{
    QFETCH(qint64, published);
    QFETCH(qint64, now);
    QTEST(::msToNextSecond(published, now), "wait");
}

QTEST_APPLESS_MAIN(TestTickTime)
#include "tst_ticktime.moc"
