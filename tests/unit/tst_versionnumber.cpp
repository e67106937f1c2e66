// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "update/versionnumber.h"

#include <QtTest/qtest.h>

using namespace Qt::StringLiterals;

class TestVersionNumber : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void numbers_data();
    void numbers();
    void compare_data();
    void compare();
};

void TestVersionNumber::numbers_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QList<int>>("numbers");
    QTest::newRow("usual") << u"4.0.2.0"_s << QList{4, 0, 2, 0};
    QTest::newRow("empty part") << u"4..0"_s << QList{4, 0};
    QTest::newRow("no number") << u"4.0.x.1"_s << QList{4, 0, 1};
    QTest::newRow("too large") << u"4.99999999999.1"_s << QList{4, 1};
    QTest::newRow("nothing") << QString() << QList<int>();
    QTest::newRow("words") << u"new.version"_s << QList<int>();
}

void TestVersionNumber::numbers()
{
    QFETCH(QString, text);
    QTEST(versionToNumbers(text), "numbers");
}

void TestVersionNumber::compare_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<int>("result");
    QTest::newRow("lower") << u"4.0.2.0"_s << u"4.0.10.0"_s << -1;
    QTest::newRow("fewer positions") << u"4.0.2.0"_s << u"4.0.2"_s << 0;
    QTest::newRow("higher") << u"5"_s << u"4.9.9.9"_s << 1;
    QTest::newRow("only what both have") << u"4.1"_s << u"4.1.5"_s << 0;
    QTest::newRow("equal") << u"4.0.2.0"_s << u"4.0.2.0"_s << 0;
    QTest::newRow("no number") << u"x"_s << u"4.0"_s << 0;
    QTest::newRow("no number after") << u"4.0"_s << QString() << 0;
}

void TestVersionNumber::compare()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QFETCH(int, result);
    QCOMPARE(compareVersions(first, second), result);
    QCOMPARE(compareVersions(second, first), -result);
}

QTEST_APPLESS_MAIN(TestVersionNumber)
#include "tst_versionnumber.moc"
