// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "manager/clocktexts.h"

#include <QtTest/qtest.h>

using namespace Qt::StringLiterals;

class TestClockTexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }
    void timeText_data();
    void timeText();
    void dateText_data();
    void dateText();
    void eraText_data();
    void eraText();
};

void TestClockTexts::timeText_data()
{
    QTest::addColumn<QTime>("time");
    QTest::addColumn<QString>("twentyFour");
    QTest::addColumn<QString>("twelve");

    QTest::newRow("midnight") << QTime(0, 0) << u"00:00:00"_s << u"00:00:00 AM"_s;
    QTest::newRow("one digit each") << QTime(1, 2, 3) << u"01:02:03"_s << u"01:02:03 AM"_s;
    QTest::newRow("last second of the morning")
        << QTime(11, 59, 59) << u"11:59:59"_s << u"11:59:59 AM"_s;
    QTest::newRow("noon is 00") << QTime(12, 0) << u"12:00:00"_s << u"00:00:00 PM"_s;
    QTest::newRow("last second") << QTime(23, 59, 59) << u"23:59:59"_s << u"11:59:59 PM"_s;
    QTest::newRow("milliseconds") << QTime(23, 59, 59, 999) << u"23:59:59"_s << u"11:59:59 PM"_s;
}

void TestClockTexts::timeText()
{
    QFETCH(QTime, time);
    QTEST(clockTimeText(time, false), "twentyFour");
    QTEST(clockTimeText(time, true) + u' ' + amPmMarker(time), "twelve");
}

void TestClockTexts::dateText_data()
{
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QString>("language");
    QTest::addColumn<bool>("useEra");
    QTest::addColumn<QString>("text");

    QTest::newRow("no language") << QDate(2026, 11, 15) << QString() << false
                                 << u"Sun Nov 15 2026"_s;
    QTest::newRow("German") << QDate(2026, 11, 15) << u"de"_s << false << u"Sun Nov 15 2026"_s;
    QTest::newRow("the era has no effect elsewhere")
        << QDate(2026, 11, 15) << u"de"_s << true << u"Sun Nov 15 2026"_s;
    QTest::newRow("Japanese") << QDate(2026, 11, 15) << u"ja"_s << false << u"2026年11月15日㈰"_s;
    QTest::newRow("no leading zeros")
        << QDate(2026, 3, 2) << u"ja"_s << false << u"2026年3月2日㈪"_s;
    QTest::newRow("Tuesday") << QDate(2026, 3, 3) << u"ja"_s << false << u"2026年3月3日㈫"_s;
    QTest::newRow("Wednesday") << QDate(2026, 3, 4) << u"ja"_s << false << u"2026年3月4日㈬"_s;
    QTest::newRow("Thursday") << QDate(2026, 3, 5) << u"ja"_s << false << u"2026年3月5日㈭"_s;
    QTest::newRow("Friday") << QDate(2026, 3, 6) << u"ja"_s << false << u"2026年3月6日㈮"_s;
    QTest::newRow("Saturday") << QDate(2026, 3, 7) << u"ja"_s << false << u"2026年3月7日㈯"_s;
    QTest::newRow("first day of an era")
        << QDate(2019, 5, 1) << u"ja"_s << true << u"令和元年5月1日㈬"_s;
    QTest::newRow("last day of an era")
        << QDate(2019, 4, 30) << u"ja"_s << true << u"平成31年4月30日㈫"_s;
}

void TestClockTexts::dateText()
{
    QFETCH(QDate, date);
    QFETCH(QString, language);
    QFETCH(bool, useEra);
    QTEST(clockDateText(date, language, useEra), "text");
}

void TestClockTexts::eraText_data()
{
    QTest::addColumn<QDate>("date");
    QTest::addColumn<QString>("text");

    QTest::newRow("end of Keio") << QDate(1868, 3, 4) << u"慶応4年"_s;
    QTest::newRow("begin of Meiji") << QDate(1868, 3, 5) << u"明治元年"_s;
    QTest::newRow("end of Meiji") << QDate(1912, 7, 29) << u"明治45年"_s;
    QTest::newRow("begin of Taisho") << QDate(1912, 7, 30) << u"大正元年"_s;
    QTest::newRow("end of Taisho") << QDate(1926, 12, 25) << u"大正15年"_s;
    QTest::newRow("begin of Showa") << QDate(1926, 12, 26) << u"昭和元年"_s;
    QTest::newRow("end of Showa") << QDate(1989, 1, 7) << u"昭和64年"_s;
    QTest::newRow("begin of Heisei") << QDate(1989, 1, 8) << u"平成元年"_s;
    QTest::newRow("end of Heisei") << QDate(2019, 4, 30) << u"平成31年"_s;
    QTest::newRow("begin of Reiwa") << QDate(2019, 5, 1) << u"令和元年"_s;
    QTest::newRow("second year") << QDate(2020, 1, 1) << u"令和2年"_s;
    QTest::newRow("last day of the table") << QDate(9999, 12, 31) << u"令和7981年"_s;
    QTest::newRow("after the table") << QDate(10000, 1, 1) << QString();
}

void TestClockTexts::eraText()
{
    QFETCH(QDate, date);
    QTEST(japaneseEraText(date), "text");
}

QTEST_APPLESS_MAIN(TestClockTexts)
#include "tst_clocktexts.moc"
