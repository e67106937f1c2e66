// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// What a clock holds that runs for long: memory, open files, and what the X server keeps for it.
// VESPER_ENDURANCE_SECONDS is how long to look; the figures are printed.

#include "tests/desktop/processmemory.h"
#include "tests/desktop/runningclock.h"

#include <QtCore/qdebug.h>
#include <QtCore/qelapsedtimer.h>
#include <QtTest/qtest.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

constexpr double mostGrowthMiB = 1;

struct Holdings {
    double memoryMiB;
    qsizetype files;
    QMap<QByteArray, uint32_t> resources;
};

// In the middle of a second, when no tick is under way.
Holdings holdingsOf(const RunningClock &clock)
{
    const qint64 inSecond = QDateTime::currentMSecsSinceEpoch() % 1000;
    QTest::qWait(int((1500 - inSecond) % 1000));
    return {privateMiB(clock.pid()), clock.openFiles(), clock.window().resourcesOfProgram()};
}

void print(qint64 seconds, const Holdings &holdings)
{
    qInfo().noquote() << u"after %1 s: %2 MiB, %3 files,"_s.arg(seconds)
                             .arg(holdings.memoryMiB, 0, 'f', 2)
                             .arg(holdings.files)
                      << holdings.resources;
}

} // namespace

class TestEndurance : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }
    void holdsNoMoreThanAfterTheStart();
};

void TestEndurance::holdsNoMoreThanAfterTheStart()
{
    const int seconds = std::max(20, qEnvironmentVariableIntValue("VESPER_ENDURANCE_SECONDS"));
    const int startSeconds = std::min(300, seconds / 4);
    constexpr int looks = 15;
    const qint64 pauseMs = qint64(seconds - startSeconds) * 1000 / looks;

    const ClockHome home;
    // No update check: its answer is a matter of the network.
    QVERIFY(home.writeSettings(settingsAt({40, 40, 320, 320}, {{u"AutoCheckUpdate"_s, false}})));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    QElapsedTimer running;
    running.start();
    QTest::qWait(startSeconds * 1000);
    const Holdings first = holdingsOf(clock);
    print(running.elapsed() / 1000, first);
    QCOMPARE_GT(first.memoryMiB, 1);
    QCOMPARE_GT(first.files, 3);
    QVERIFY(first.resources.contains("WINDOW"));
    for (int look = 1; look <= looks; ++look) {
        const qint64 due = qint64(startSeconds) * 1000 + look * pauseMs;
        QTest::qWait(int(std::max<qint64>(0, due - running.elapsed())));
        const Holdings now = holdingsOf(clock);
        print(running.elapsed() / 1000, now);
        QCOMPARE_LT(now.memoryMiB - first.memoryMiB, mostGrowthMiB);
        QCOMPARE(now.files, first.files);
        QCOMPARE(now.resources, first.resources);
    }
    QVERIFY(clock.isRunning());
    QCOMPARE(clock.output(), QByteArray());
}

QTEST_MAIN(TestEndurance)
#include "tst_endurance.moc"
