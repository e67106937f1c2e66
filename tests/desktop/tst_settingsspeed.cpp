// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The settings window comes at once and does not hold up the clock, and what is changed there shows
// at once. Each figure is printed. The limits allow for a slow machine.

#include "config/vsconfig.h"
#include "manager/vsmanager.h"
#include "tests/desktop/machinespeed.h"
#include "tests/desktop/ownclock.h"
#include "tests/desktop/sceneitems.h"
#include "tests/desktop/xinput.h"

#include <QtCore/qdatetime.h>
#include <QtCore/qelapsedtimer.h>
#include <QtQuick/qquickitem.h>
#include <QtQuick/qquickwindow.h>
#include <QtTest/qsignalspy.h>
#include <QtTest/qtest.h>

#include <algorithm>

namespace
{

constexpr QRect place(20, 20, 320, 320);
constexpr int repeats = 5;

// Waits until \a from ms of a second have passed, and not more than \a to.
bool waitForPartOfSecond(qint64 from, qint64 to)
{
    return QTest::qWaitFor([from, to] {
        const qint64 part = QDateTime::currentMSecsSinceEpoch() % 1000;
        return part >= from && part < to;
    });
}

// Opens the settings window just before a tick. Returns ms to its first painted frame, -1 without.
qint64 openSettings(const OwnClock &clock)
{
    if (!waitForPartOfSecond(950, 1000))
        return -1;
    QElapsedTimer timer;
    timer.start();
    if (!clock.call("openSettings") || !OwnClock::settingsWindow())
        return -1;
    QSignalSpy painted(OwnClock::settingsWindow(), &QQuickWindow::frameSwapped);
    return painted.wait() ? timer.elapsed() : -1;
}

double median(QList<qint64> values)
{
    std::ranges::sort(values);
    return double(values[values.size() / 2]);
}

QQuickItem *sliderOf(const QByteArray &setting)
{
    for (QQuickItem *item : SceneItems::of(OwnClock::settingsWindow())) {
        if (item->property("setting").toByteArray() == setting
            && item->property("slider").isValid())
            return item->property("slider").value<QQuickItem *>();
    }
    return nullptr;
}

} // namespace

class TestSettingsSpeed : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { OwnClock::prepare(m_home); }
    void opensAtOnce();
    void showsASliderStepAtOnce_data();
    void showsASliderStepAtOnce();

private:
    Q_SLOT void noteLoad() { ++m_loads; }

    int m_loads = 0; // of pictures of the clock face
    const ClockHome m_home;
};

void TestSettingsSpeed::opensAtOnce()
{
    OwnClock::setStoredGeometry(place);
    OwnClock clock;
    QVERIFY(clock.waitForWindow());
    qint64 latestTickMs = 0;
    connect(clock.manager(), &VsManager::timeTextChanged, this, [&latestTickMs] {
        latestTickMs = std::max(latestTickMs, QDateTime::currentMSecsSinceEpoch() % 1000);
    });
    QTest::qWait(1500); // the start is over
    latestTickMs = 0;
    const qint64 firstMs = openSettings(clock);
    QTest::qWait(1500);
    QList<qint64> laterMs;
    for (int i = 0; i < repeats; ++i) {
        QVERIFY(OwnClock::closeSettings());
        laterMs += openSettings(clock);
        QTest::qWait(500);
    }
    QVERIFY(OwnClock::closeSettings());
    qInfo("the settings window is painted after %lld ms, later after %.0f; the latest tick %lld ms",
        firstMs, median(laterMs), latestTickMs);
    QVERIFY(firstMs > 0);
    QVERIFY(!laterMs.contains(-1));
    QCOMPARE_LT(double(firstMs), 400 * machineSlownessAfterRest());
    QCOMPARE_LT(median(laterMs), 100 * machineSlownessAfterRest());
    QCOMPARE_LE(double(latestTickMs), 100 * machineSlownessAfterRest());
}

void TestSettingsSpeed::showsASliderStepAtOnce_data()
{
    QTest::addColumn<int>("side");
    QTest::addColumn<int>("limitMs");

    QTest::newRow("320") << 320 << 50;
    QTest::newRow("1080") << 1080 << 200;
}

void TestSettingsSpeed::showsASliderStepAtOnce()
{
    QFETCH(int, side);
    QFETCH(int, limitMs);

    OwnClock::setStoredGeometry(QRect(place.topLeft(), QSize(side, side)));
    OwnClock clock;
    QVERIFY(clock.waitForWindow());
    QVERIFY(openSettings(clock) > 0);
    QTest::qWait(1000); // every layer is drawn
    m_loads = 0;
    for (const QQuickItem *layer : SceneItems::visibleLayers(clock.window()))
        connect(layer, SIGNAL(statusChanged(QQuickImageBase::Status)), this, SLOT(noteLoad()));
    QQuickItem *const slider = sliderOf("faceOpacity");
    QVERIFY(slider);
    QList<qint64> stepsMs;
    for (int i = 0; i < 2 * repeats; ++i) {
        // Between two ticks, which bring a frame of their own.
        QVERIFY(waitForPartOfSecond(400, 500));
        QSignalSpy painted(clock.window(), &QQuickWindow::frameSwapped);
        QElapsedTimer timer;
        timer.start();
        slider->setProperty("value", 0.3 + 0.05 * i);
        QVERIFY(painted.wait());
        stepsMs += timer.elapsed();
        QTest::qWait(200);
    }
    QVERIFY(OwnClock::closeSettings());
    qInfo("side %d: a step shows after %.0f ms", side, median(stepsMs));
    QCOMPARE_LE(median(stepsMs), limitMs * machineSlownessAfterRest());
    QCOMPARE(m_loads, 0);
}

QTEST_MAIN(TestSettingsSpeed)
#include "tst_settingsspeed.moc"
