// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The tick: what is published when, with the time supplied by the test.

#include "confighome.h"
#include "signallog.h"

#include "config/vsconfig.h"
#include "manager/vsmanager.h"

#include <QtTest/qsignalspy.h>
#include <QtTest/qtest.h>

#include <algorithm>
#include <memory>

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

void setPresent(const QDateTime &time) { presentMs = time.toMSecsSinceEpoch(); }

const QByteArrayList anglesAndTime{
    "secondHandAngleChanged", "minuteHandAngleChanged", "hourHandAngleChanged", "timeTextChanged"};

} // namespace

class TestVsManagerClock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void standsStillBeforeStart();
    void firstTickPublishesEverything();
    void sameSecondPublishesNothing();
    void sameSecondRearmsTheTimer();
    void nextSecondPublishesInOrder();
    void dateIsPublishedWhenItChanges();
    void markerIsPublishedWhenItChanges();
    void twentyFourHoursLeaveTheMarkerAlone();
    void immediateTimeTellsTheMarkerFirst();
    void stepOfTheClock_data();
    void stepOfTheClock();
    void reentrantTickDoesNothing();
    void changedSettingShowsAtTheNextTick();
    void immediateUpdates();
    void buildsTextsForAnyTime();
    void restsWhileTheSessionIsLocked();
    void realTicksComeRightAfterTheSecond();

private:
    void tick() { QMetaObject::invokeMethod(m_manager.get(), "mainLoop"); }

    ConfigHome m_home;
    std::unique_ptr<VsManager> m_manager;
};

void TestVsManagerClock::init()
{
    QTest::failOnWarning();
    VsManager::setLanguageName(u"ja"_s);
    auto *config = VsConfig::instance();
    config->setTweleveHours(false);
    config->setUseEra(false);
    m_manager = std::make_unique<VsManager>();
    m_manager->setWallClock(&readPresent);
    setPresent(QDateTime(QDate(2026, 11, 15), QTime(10, 8, 42, 300)));
}

void TestVsManagerClock::cleanup() { m_manager.reset(); }

void TestVsManagerClock::standsStillBeforeStart()
{
    const SignalLog log(m_manager.get());
    tick();
    QVERIFY(log.names().isEmpty());
    QCOMPARE(m_manager->timeText(), QString());
    QCOMPARE(m_manager->amPmText(), u"AM"_s);
    QCOMPARE(m_manager->hourHandAngle(), 0.0);
}

void TestVsManagerClock::firstTickPublishesEverything()
{
    setPresent(QDateTime(QDate(2026, 11, 15), QTime(3, 0)));
    m_manager->setHourHandAngle(0.0);
    m_manager->setTimeText(u"03:00:00"_s);
    const SignalLog log(m_manager.get());
    m_manager->start();
    QCOMPARE(log.names(), anglesAndTime + QByteArrayList{"dateTextChanged"});
    QCOMPARE(log.emissions().at(0).arguments, QVariantList{-90.0});
    QCOMPARE(log.emissions().at(1).arguments, QVariantList{-90.0});
    QCOMPARE(log.emissions().at(2).arguments, QVariantList{0.0});
    QCOMPARE(log.emissions().at(3).arguments, QVariantList{u"03:00:00"_s});
    QCOMPARE(log.emissions().at(4).arguments, QVariantList{u"2026年11月15日㈰"_s});
}

void TestVsManagerClock::sameSecondPublishesNothing()
{
    m_manager->start();
    const SignalLog log(m_manager.get());
    presentMs += 600;
    tick();
    m_manager->start();
    QVERIFY(log.names().isEmpty());
}

void TestVsManagerClock::sameSecondRearmsTheTimer()
{
    m_manager->start();
    presentMs = presentMs / 1000 * 1000 + 999; // and there the time stops: a wait of 1 ms each
    tick();
    const SignalLog log(m_manager.get());
    readings = 0;
    QTRY_COMPARE_GT(readings, 6); // two a tick
    QVERIFY(log.names().isEmpty());
}

void TestVsManagerClock::nextSecondPublishesInOrder()
{
    m_manager->start();
    const SignalLog log(m_manager.get());
    presentMs += 1000;
    tick();
    QCOMPARE(log.names(), anglesAndTime);
    QCOMPARE(m_manager->timeText(), u"10:08:43"_s);
    QCOMPARE(m_manager->secondHandAngle(), 168.0);
}

void TestVsManagerClock::dateIsPublishedWhenItChanges()
{
    setPresent(QDateTime(QDate(2026, 11, 15), QTime(23, 59, 59)));
    m_manager->start();
    const SignalLog log(m_manager.get());
    presentMs += 1000;
    tick();
    QCOMPARE(log.names(), anglesAndTime + QByteArrayList{"dateTextChanged"});
    QCOMPARE(m_manager->dateText(), u"2026年11月16日㈪"_s);
}

void TestVsManagerClock::markerIsPublishedWhenItChanges()
{
    VsConfig::instance()->setTweleveHours(true);
    setPresent(QDateTime(QDate(2026, 11, 15), QTime(11, 59, 59)));
    m_manager->start();
    QCOMPARE(m_manager->amPmText(), u"AM"_s);
    const SignalLog log(m_manager.get());
    presentMs += 1000;
    tick();
    QCOMPARE(log.names(), QByteArrayList{"amPmTextChanged"} + anglesAndTime);
    QCOMPARE(m_manager->amPmText(), u"PM"_s);
    QCOMPARE(m_manager->timeText(), u"00:00:00"_s);
}

void TestVsManagerClock::twentyFourHoursLeaveTheMarkerAlone()
{
    setPresent(QDateTime(QDate(2026, 11, 15), QTime(11, 59, 59)));
    m_manager->start();
    const SignalLog log(m_manager.get());
    presentMs += 1000;
    tick();
    QCOMPARE(log.names(), anglesAndTime);
    QCOMPARE(m_manager->timeText(), u"12:00:00"_s);
    QCOMPARE(m_manager->amPmText(), u"AM"_s);
}

void TestVsManagerClock::immediateTimeTellsTheMarkerFirst()
{
    VsConfig::instance()->setTweleveHours(true);
    setPresent(QDateTime(QDate(2026, 11, 15), QTime(13, 5, 9)));
    const SignalLog log(m_manager.get());
    m_manager->updateTimeTextImmediately();
    QCOMPARE(log.names(), (QByteArrayList{"amPmTextChanged", "timeTextChanged"}));
    QCOMPARE(log.emissions().at(0).arguments, QVariantList{u"PM"_s});
    QCOMPARE(log.emissions().at(1).arguments, QVariantList{u"01:05:09"_s});
}

void TestVsManagerClock::stepOfTheClock_data()
{
    QTest::addColumn<qint64>("stepMs");
    QTest::addColumn<QString>("time");
    QTest::newRow("a second back") << qint64(-1000) << u"10:08:41"_s;
    QTest::newRow("an hour back") << qint64(-3600 * 1000) << u"09:08:42"_s;
    QTest::newRow("ten minutes forward") << qint64(600 * 1000) << u"10:18:42"_s;
    QTest::newRow("a day and a second back") << qint64(-86401 * 1000) << u"10:08:41"_s;
}

void TestVsManagerClock::stepOfTheClock()
{
    QFETCH(qint64, stepMs);
    QFETCH(QString, time);
    m_manager->start();
    presentMs += stepMs;
    QTRY_COMPARE_WITH_TIMEOUT(m_manager->timeText(), time, 1500);
}

void TestVsManagerClock::reentrantTickDoesNothing()
{
    int published = 0;
    connect(m_manager.get(), &VsManager::hourHandAngleChanged, this, [this, &published] {
        ++published;
        presentMs += 1000;
        tick();
    });
    m_manager->start();
    QCOMPARE(published, 1);
}

void TestVsManagerClock::changedSettingShowsAtTheNextTick()
{
    m_manager->start();
    const SignalLog log(m_manager.get());
    VsConfig::instance()->setUseEra(true);
    QVERIFY(log.names().isEmpty());
    presentMs += 1000;
    tick();
    QCOMPARE(m_manager->dateText(), u"令和8年11月15日㈰"_s);
}

void TestVsManagerClock::immediateUpdates()
{
    const SignalLog log(m_manager.get());
    m_manager->updateTimeTextImmediately();
    m_manager->updateTimeTextImmediately();
    m_manager->updateDateTextImmediately();
    m_manager->updateDateTextImmediately();
    QCOMPARE(log.names(),
        (QByteArrayList{
            "timeTextChanged", "timeTextChanged", "dateTextChanged", "dateTextChanged"}));
    QCOMPARE(m_manager->timeText(), u"10:08:42"_s);
    QCOMPARE(m_manager->dateText(), u"2026年11月15日㈰"_s);
}

void TestVsManagerClock::buildsTextsForAnyTime()
{
    const SignalLog log(m_manager.get());
    QCOMPARE(m_manager->makeTimeText(QTime(13, 5, 9)), u"13:05:09"_s);
    QCOMPARE(m_manager->makeDateText(QDate(2019, 4, 30)), u"2019年4月30日㈫"_s);
    QCOMPARE(log.names(), QByteArrayList());
    VsConfig::instance()->setTweleveHours(true);
    VsConfig::instance()->setUseEra(true);
    QCOMPARE(m_manager->makeTimeText(QTime(13, 5, 9)), u"01:05:09"_s);
    QCOMPARE(m_manager->makeDateText(QDate(2019, 4, 30)), u"平成31年4月30日㈫"_s);
    QCOMPARE(log.names(), QByteArrayList{"amPmTextChanged"});
    QCOMPARE(m_manager->timeText(), QString());
}

void TestVsManagerClock::restsWhileTheSessionIsLocked()
{
    m_manager->start();
    m_manager->setSessionLocked(true);
    presentMs += 5000;
    const SignalLog log(m_manager.get());
    readings = 0;
    tick(); // by a double click, for example
    QTest::qWait(1200);
    QVERIFY(log.names().isEmpty());
    QCOMPARE(readings, 0);
    m_manager->setSessionLocked(false);
    QCOMPARE(log.names(), anglesAndTime);
    QCOMPARE(m_manager->timeText(), u"10:08:47"_s);
    QTRY_COMPARE_GT(readings, 2); // and goes on
}

void TestVsManagerClock::realTicksComeRightAfterTheSecond()
{
    m_manager->setWallClock(&QDateTime::currentMSecsSinceEpoch);
    QList<qint64> late;
    connect(m_manager.get(), &VsManager::timeTextChanged, this,
        [&late] { late.append(QDateTime::currentMSecsSinceEpoch() % 1000); });
    m_manager->start();
    late.clear();
    QTRY_COMPARE_WITH_TIMEOUT(late.size(), 3, 4500);
    // Half a second is far more than a loaded machine needs, and far less than a lost tick.
    QCOMPARE_LT(*std::max_element(late.cbegin(), late.cend()), 500);
}

QTEST_MAIN(TestVsManagerClock)
#include "tst_vsmanager_clock.moc"
