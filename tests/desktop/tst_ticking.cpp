// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The passing of time on the screen.

#include "tests/desktop/runningclock.h"
#include "tests/pixeldifference.h"

#include <QtCore/qelapsedtimer.h>
#include <QtCore/qfile.h>
#include <QtCore/qset.h>
#include <QtCore/qtimezone.h>
#include <QtTest/qtest.h>

using namespace Qt::StringLiterals;

namespace
{

// No text, so that each tick paints one thing.
QJsonObject handsOnly()
{
    return {{u"DisplayDate"_s, false}, {u"DisplayLogo"_s, false}, {u"WithDigitalClock"_s, false}};
}

// Of 255: what the clock keeps of its picture may come out beside what it computes for its first
// frame.
constexpr int rounding = 1;

// Looks at the clock for some time and returns when its picture changed, in ms of the system's
// time.
QList<qint64> changesDuring(const RunningClock &clock, int durationMs)
{
    constexpr int pollMs = 20;
    QList<qint64> changes;
    QImage last = clock.picture();
    QElapsedTimer elapsed;
    elapsed.start();
    while (elapsed.elapsed() < durationMs) {
        QTest::qWait(pollMs);
        if (QImage next = clock.picture(); next != last) {
            changes.append(QDateTime::currentMSecsSinceEpoch());
            last = next;
        }
    }
    return changes;
}

void waitForMiddleOfSecond()
{
    const qint64 inSecond = QDateTime::currentMSecsSinceEpoch() % 1000;
    QTest::qWait(int((1500 - inSecond) % 1000));
}

// Whether the picture changes in each of some seconds, and only in their first halves.
bool ticksOnTime(const RunningClock &clock)
{
    constexpr int seconds = 5;
    constexpr qint64 latestMs = 500;
    waitForMiddleOfSecond();
    QSet<qint64> changed;
    qint64 latest = 0;
    const QList<qint64> changes = changesDuring(clock, seconds * 1000);
    for (const qint64 change : changes) {
        changed.insert(change / 1000);
        latest = std::max(latest, change % 1000);
    }
    qInfo("%lld of %d seconds, at most %lld ms late", qint64(changed.size()), seconds, latest);
    return changed.size() == seconds && latest < latestMs;
}

bool writeFile(const QString &path, const QString &content)
{
    QFile file(path);
    return file.open(QFile::WriteOnly) && file.write(content.toUtf8()) > 0;
}

} // namespace

class TestTicking : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }

    void movesAHandEverySecond();
    void restsBetweenTicks();
    void goesOn_data();
    void goesOn();
    void followsAStepOfTheClock_data();
    void followsAStepOfTheClock();
};

void TestTicking::movesAHandEverySecond()
{
    const ClockHome home;
    QVERIFY(home.writeSettings(handsOnly()));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    // More than once, for a machine that does something else meanwhile can be late by itself.
    QVERIFY(ticksOnTime(clock) || ticksOnTime(clock) || ticksOnTime(clock));
}

void TestTicking::restsBetweenTicks()
{
    const ClockHome home;
    QVERIFY(home.writeSettings({{u"SecondHand"_s, false}, {u"WithDigitalClock"_s, false}}));
    RunningClock clock(home, {.environment = timeStandingAt(u"2026-11-15 10:08:42"_s)});
    QVERIFY(clock.waitForWindow());
    QVERIFY(!clock.stillPicture().isNull());
    // The hands are cut at some time, which may change a pixel by a level or two.
    const auto rests = [&clock] { return changesDuring(clock, 2000).isEmpty(); };
    QVERIFY(rests() || rests() || rests());
}

void TestTicking::goesOn_data()
{
    QTest::addColumn<QDateTime>("start");

    // Summer time ends at one o'clock UTC: three in the morning becomes two.
    QTest::newRow("an hour repeats")
        << QDateTime(QDate(2026, 10, 25), QTime(0, 59, 56), QTimeZone::UTC);
    QTest::newRow("the year 9999 ends")
        << QDateTime(QDate(9999, 12, 31), QTime(22, 59, 56), QTimeZone::UTC);
}

void TestTicking::goesOn()
{
    QFETCH(QDateTime, start);

    constexpr int durationMs = 8000;
    // A tick and its painting need about a twentieth of the time and twenty rests in a second.
    constexpr qint64 mostProcessorTimeMs = durationMs / 4;
    constexpr qint64 mostRests = durationMs / 10;

    QVERIFY(QTimeZone("Europe/Berlin").isValid());
    const ClockHome home;
    QVERIFY(home.writeSettings(handsOnly()));
    auto environment = timeRunningFrom(start);
    environment.insert(u"TZ"_s, u"Europe/Berlin"_s);
    RunningClock clock(home, {.environment = environment});
    QVERIFY(clock.waitForWindow());
    const qint64 timeBefore = clock.processorTimeMs();
    const qint64 restsBefore = clock.rests();
    const qsizetype changes = changesDuring(clock, durationMs).size();
    const qint64 processorTimeMs = clock.processorTimeMs() - timeBefore;
    const qint64 rests = clock.rests() - restsBefore;
    QVERIFY(clock.isRunning());
    qInfo("%lld changes, %lld ms of processor time, %lld rests", changes, processorTimeMs, rests);
    QCOMPARE_GE(changes, durationMs / 1000 - 2);
    QCOMPARE_LT(processorTimeMs, mostProcessorTimeMs);
    QCOMPARE_LT(rests, mostRests);
}

void TestTicking::followsAStepOfTheClock_data()
{
    QTest::addColumn<QString>("time");

    QTest::newRow("back") << u"2026-11-15 07:31:05"_s;
    QTest::newRow("forward") << u"2026-11-15 14:31:05"_s;
    QTest::newRow("one second") << u"2026-11-15 10:08:43"_s;
}

void TestTicking::followsAStepOfTheClock()
{
    QFETCH(QString, time);

    const ClockHome home;
    QVERIFY(home.writeSettings(handsOnly()));
    // Two clocks at one place, one after the other, so that nothing but the hands can differ.
    const auto expected = [&] {
        RunningClock clock(home, {.environment = timeStandingAt(time)});
        return clock.waitForWindow() ? clock.stillPicture() : QImage();
    }();
    QVERIFY(!expected.isNull());

    const QString file = home.path() + u"/time"_s;
    QVERIFY(writeFile(file, u"2026-11-15 10:08:42"_s));
    RunningClock clock(home, {.environment = timeStandingIn(file)});
    QVERIFY(clock.waitForWindow());
    const QImage before = clock.stillPicture();
    QVERIFY(!before.isNull());
    QCOMPARE_GT(greatestDifference(before, expected), rounding);
    QVERIFY(writeFile(file, time));
    QTRY_COMPARE_LE(greatestDifference(clock.picture(), expected), rounding);
}

QTEST_MAIN(TestTicking)
#include "tst_ticking.moc"
