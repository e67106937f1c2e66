// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The end and the begin of summer time, in a zone that the process is started in.

#include "confighome.h"

#include "manager/vsmanager.h"

#include <QtCore/qelapsedtimer.h>
#include <QtTest/qtest.h>

using namespace Qt::StringLiterals;

namespace
{

qint64 presentMs = 0;
int readings = 0;

qint64 readPresent()
{
    ++readings;
    return presentMs;
}

} // namespace

class TestRepeatedHour : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init() { QTest::failOnWarning(); }
    void everySecondIsPublished_data();
    void everySecondIsPublished();
    void waitsForTheNextSecond();
    void changeOfTheZone();

private:
    ConfigHome m_home;
};

void TestRepeatedHour::initTestCase() { qputenv("TZ", "Europe/Berlin"); }

void TestRepeatedHour::everySecondIsPublished_data()
{
    QTest::addColumn<QDateTime>("from");
    QTest::addColumn<int>("seconds");
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("last");
    QTest::newRow("summer time ends")
        << QDateTime(QDate(2026, 10, 25), QTime(0, 59, 58), QTimeZone::UTC) << 3610 << u"02:59:58"_s
        << u"03:00:07"_s;
    QTest::newRow("summer time begins")
        << QDateTime(QDate(2026, 3, 29), QTime(0, 59, 58), QTimeZone::UTC) << 10 << u"01:59:58"_s
        << u"03:00:07"_s;
}

void TestRepeatedHour::everySecondIsPublished()
{
    QFETCH(QDateTime, from);
    QFETCH(int, seconds);
    QFETCH(QString, first);
    QFETCH(QString, last);
    VsManager manager;
    manager.setWallClock(&readPresent);
    QStringList published;
    connect(&manager, &VsManager::timeTextChanged, this,
        [&published](const QString &text) { published.append(text); });
    for (int i = 0; i < seconds; ++i) {
        presentMs = from.toMSecsSinceEpoch() + qint64(i) * 1000;
        manager.start(); // ticks at once
    }
    QCOMPARE(published.size(), seconds);
    QCOMPARE(published.first(), first);
    QCOMPARE(published.last(), last);
}

// Neither stops for an hour nor spins through it.
void TestRepeatedHour::waitsForTheNextSecond()
{
    VsManager manager;
    manager.setWallClock(&readPresent);
    presentMs = QDateTime(QDate(2026, 10, 25), QTime(1, 30), QTimeZone::UTC).toMSecsSinceEpoch();
    manager.start();
    readings = 0;
    QElapsedTimer sinceTick;
    sinceTick.start();
    QTRY_COMPARE_GT_WITH_TIMEOUT(readings, 0, 5000);
    QCOMPARE_GE(sinceTick.elapsed(), 950);
}

void TestRepeatedHour::changeOfTheZone()
{
    VsManager manager;
    manager.setWallClock(&readPresent);
    presentMs
        = QDateTime(QDate(2026, 11, 15), QTime(10, 8, 42), QTimeZone::UTC).toMSecsSinceEpoch();
    manager.start();
    QCOMPARE(manager.timeText(), u"11:08:42"_s);
    qputenv("TZ", "Asia/Tokyo");
    presentMs += 1000;
    manager.start();
    qputenv("TZ", "Europe/Berlin");
    QCOMPARE(manager.timeText(), u"19:08:43"_s);
}

QTEST_MAIN(TestRepeatedHour)
#include "tst_repeatedhour.moc"
