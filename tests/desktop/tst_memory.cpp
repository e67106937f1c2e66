// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// What the settings window leaves in memory when it is closed, and what the largest clocks take.

#include "config/vsconfig.h"
#include "manager/vsmanager.h"
#include "tests/desktop/ownclock.h"
#include "tests/desktop/processmemory.h"
#include "tests/desktop/sceneitems.h"

#include <QtCore/qcoreapplication.h>
#include <QtQuick/qquickwindow.h>
#include <QtTest/qsignalspy.h>
#include <QtTest/qtest.h>

namespace
{

constexpr QRect place(20, 20, 320, 320);
constexpr double firstLimitMiB = 15;
constexpr double laterLimitMiB = 1;

double ownMiB() { return privateMiB(QCoreApplication::applicationPid()); }

bool openAndClose(const OwnClock &clock)
{
    return clock.call("openSettings") && OwnClock::settingsWindow()
        && QTest::qWaitForWindowExposed(OwnClock::settingsWindow()) && OwnClock::closeSettings();
}

} // namespace

class TestMemory : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { OwnClock::prepare(m_home); }
    void settingsWindowLeavesLittle();
    void largestClocksFit_data();
    void largestClocksFit();

private:
    const ClockHome m_home;
};

void TestMemory::settingsWindowLeavesLittle()
{
    constexpr int restMs = 3000; // memory is given back a second after what it was for
    OwnClock::setStoredGeometry(place);
    VsConfig::instance()->setAutoCheckUpdate(false); // a check takes memory for encryption
    OwnClock clock;
    QVERIFY(clock.waitForWindow());
    QVERIFY(clock.waitForRest());
    QTest::qWait(restMs);
    const double before = ownMiB();
    QVERIFY(openAndClose(clock));
    QTest::qWait(restMs);
    const double once = ownMiB();
    QVERIFY(openAndClose(clock));
    QTest::qWait(restMs);
    const double twice = ownMiB();
    for (int i = 2; i < 10; ++i) {
        QVERIFY(openAndClose(clock));
        QTest::qWait(200);
    }
    QTest::qWait(restMs);
    const double tenTimes = ownMiB();
    qInfo("%.1f MiB, after the settings window %.1f, after the second %.1f, after the tenth %.1f",
        before, once, twice, tenTimes);
    QVERIFY(before > 0);
    QCOMPARE_LE(once - before, firstLimitMiB);
    QCOMPARE_LE(tenTimes - twice, laterLimitMiB);
}

void TestMemory::largestClocksFit_data()
{
    QTest::addColumn<int>("side");

    QTest::addRow("4320") << 4320;
    QTest::addRow("7680") << 7680;
}

// Six layers, none larger than Qt loads, and the window's own picture.
void TestMemory::largestClocksFit()
{
    QFETCH(int, side);

    constexpr double mostMiB = 1536 + 512;
    OwnClock::setStoredGeometry(QRect(place.topLeft(), QSize(side, side)));
    OwnClock clock;
    QVERIFY(clock.waitForWindow());
    QVERIFY(QTest::qWaitFor(
        [&clock] { return SceneItems::isSharp(clock.window()); }, std::chrono::minutes(1)));
    QCOMPARE(SceneItems::visibleLayers(clock.window()).size(), 6);
    QCOMPARE(clock.window()->size(), QSize(side, side));
    const QSignalSpy ticks(clock.manager(), &VsManager::timeTextChanged);
    const QSignalSpy frames(clock.window(), &QQuickWindow::frameSwapped);
    QTest::qWait(5000);
    qInfo("side %d: %.0f MiB, %lld ticks in 5 s", side, ownMiB(), qlonglong(ticks.size()));
    QCOMPARE_GE(ticks.size(), 2); // a frame of so many pixels may take longer than a second
    QCOMPARE_GE(frames.size(), 1);
    QCOMPARE_LE(ownMiB(), mostMiB);
}

QTEST_MAIN(TestMemory)
#include "tst_memory.moc"
