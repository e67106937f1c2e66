// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "config/saturate.h"

#include <QtTest/qtest.h>

#include <limits>

class TestSaturate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }
    void toInt_data();
    void toInt();
};

void TestSaturate::toInt_data()
{
    using Double = std::numeric_limits<double>;
    constexpr int max = std::numeric_limits<int>::max();
    constexpr int min = std::numeric_limits<int>::min();
    QTest::addColumn<double>("value");
    QTest::addColumn<int>("expected");
    QTest::newRow("zero") << 0.0 << 0;
    QTest::newRow("whole") << 320.0 << 320;
    QTest::newRow("down to zero") << 10.999 << 10;
    QTest::newRow("up to zero") << -10.999 << -10;
    QTest::newRow("small negative") << -0.9 << 0;
    QTest::newRow("smallest number") << Double::denorm_min() << 0;
    QTest::newRow("largest int") << 2147483647.0 << max;
    QTest::newRow("within the largest int") << 2147483646.9 << max - 1;
    QTest::newRow("above the largest int") << 2147483648.0 << max;
    QTest::newRow("smallest int") << -2147483648.0 << min;
    QTest::newRow("within the smallest int") << -2147483647.9 << min + 1;
    QTest::newRow("below the smallest int") << -2147483649.0 << min;
    QTest::newRow("1e300") << 1e300 << max;
    QTest::newRow("-1e300") << -1e300 << min;
    QTest::newRow("infinite") << Double::infinity() << max;
    QTest::newRow("negative infinite") << -Double::infinity() << min;
    QTest::newRow("no number") << Double::quiet_NaN() << 0;
}

void TestSaturate::toInt()
{
    QFETCH(const double, value);
    QFETCH(const int, expected);
    QCOMPARE(toIntSaturated(value), expected);
}

QTEST_GUILESS_MAIN(TestSaturate)
#include "tst_saturate.moc"
