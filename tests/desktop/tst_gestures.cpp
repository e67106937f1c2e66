// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// What the X server sees of a drag, a turn of the wheel, a pull at a corner and a double click:
// every step is one change of place and size together, and none takes an earlier one back.

#include "tests/desktop/corners.h"
#include "tests/desktop/runningclock.h"
#include "tests/desktop/xinput.h"

#include <QtCore/qtimer.h>
#include <QtTest/qtest.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <csignal>
#include <functional>
#include <thread>
#include <vector>

#include <sys/types.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace
{

constexpr int limitMs = 15'000; // for a machine that has more to do
constexpr QRect place(40, 40, 240, 240);
constexpr QRect middle(800, 420, 240, 240); // with room on every side

// Threads that never rest, in the way of the clock and of the X server.
class BusyThreads
{
public:
    explicit BusyThreads(int count)
    {
        for (int i = 0; i < count; ++i) {
            m_threads.emplace_back([this] {
                while (!m_over) { }
            });
        }
    }
    Q_DISABLE_COPY_MOVE(BusyThreads)
    ~BusyThreads()
    {
        m_over = true;
        for (std::thread &thread : m_threads)
            thread.join();
    }

private:
    std::atomic<bool> m_over = false;
    std::vector<std::thread> m_threads;
};

// The window manager does nothing until it is told to go on, which it is in any case.
class StoppedWindowManager
{
public:
    StoppedWindowManager() { ::kill(pid(), SIGSTOP); }
    Q_DISABLE_COPY_MOVE(StoppedWindowManager)
    ~StoppedWindowManager() { ::kill(pid(), SIGCONT); }

private:
    static pid_t pid() { return pid_t(qEnvironmentVariableIntValue("VESPER_WM_PID")); }
};

// Takes the steps from 1 to \a count, one every \a stepMs, as far as the machine can.
void takeSteps(int count, int stepMs, const std::function<void(int)> &step)
{
    auto next = std::chrono::steady_clock::now();
    for (int i = 1; i <= count; ++i) {
        step(i);
        next += stepMs * 1ms;
        std::this_thread::sleep_until(next);
    }
}

// What is wrong with the \a seen geometries, each of which has to be one of \a steps and none an
// earlier one than the geometry before it; nothing if all is well.
QString faultOf(const QList<QRect> &seen, const QList<QRect> &steps)
{
    qsizetype last = 0;
    int unknown = 0;
    int backward = 0;
    QString first;
    const auto note = [&](int *count, const char *what, qsizetype i) {
        ++*count;
        if (!first.isEmpty())
            return;
        QDebug(&first).nospace() << what << ": " << (i > 0 ? seen.at(i - 1) : steps.first())
                                 << " and then " << seen.at(i);
    };
    for (qsizetype i = 0; i < seen.size(); ++i) {
        const qsizetype ahead = steps.indexOf(seen.at(i), last);
        if (ahead >= 0) {
            last = ahead;
        } else if (steps.contains(seen.at(i))) {
            note(&backward, "backward", i);
        } else {
            note(&unknown, "no step", i);
        }
    }
    if (unknown == 0 && backward == 0)
        return {};
    return u"%1 of %2 are no step, %3 go backward; first %4"_s.arg(unknown)
        .arg(seen.size())
        .arg(backward)
        .arg(first);
}

bool isRound(XWindow window, int side)
{
    return (window.shape() & QRect(0, 0, side, side)) == circle(side);
}

} // namespace

class TestGestures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }

    void dragGoesStraight_data();
    void dragGoesStraight();
    void wheelKeepsTheCentre_data();
    void wheelKeepsTheCentre();
    void cornersKeepTheOppositeOne_data();
    void cornersKeepTheOppositeOne();
    void maskFollowsADoubleClick_data();
    void maskFollowsADoubleClick();

private:
    static void addPaces();
};

void TestGestures::addPaces()
{
    QTest::addColumn<int>("stepMs");
    QTest::addColumn<int>("busyThreads");

    for (const int stepMs : {8, 2, 1}) {
        QTest::addRow("every %d ms", stepMs) << stepMs << 0;
        QTest::addRow("every %d ms, on a busy machine", stepMs) << stepMs << 4;
    }
}

void TestGestures::dragGoesStraight_data() { addPaces(); }

void TestGestures::dragGoesStraight()
{
    QFETCH(int, stepMs);
    QFETCH(int, busyThreads);

    constexpr QPoint way(1000, 600);
    const int count = 1000 / stepMs;
    const auto at = [&](int i) { return QPoint(way.x() * i / count, way.y() * i / count); };
    const QPoint hold = place.center() + QPoint(31, -17);
    QList<QRect> steps;
    for (int i = 0; i <= count; ++i)
        steps.append(place.translated(at(i)));

    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place)));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    const XGeometryWatch watch(clock.window());
    {
        const BusyThreads busy(busyThreads);
        XInput::moveTo(hold);
        XInput::press();
        takeSteps(count, stepMs, [&](int i) { XInput::moveTo(hold + at(i)); });
        XInput::release();
        QTRY_COMPARE_WITH_TIMEOUT(clock.window().geometry(), steps.last(), limitMs);
        QTest::qWait(300); // nothing is to come after it
    }
    const QList<QRect> seen = watch.geometries();
    qInfo("%lld positions for %d steps", seen.size(), count);
    QCOMPARE(seen.last(), steps.last());
    QCOMPARE(faultOf(seen, steps), QString());
    QTRY_VERIFY(isRound(clock.window(), place.width()));
}

void TestGestures::wheelKeepsTheCentre_data() { addPaces(); }

void TestGestures::wheelKeepsTheCentre()
{
    QFETCH(int, stepMs);
    QFETCH(int, busyThreads);

    // Of turns that come while it looks at an earlier one this window manager passes on only some.
    const bool losesTurns = qEnvironmentVariable("VESPER_WM") == u"xfwm4";
    constexpr int notches = 30;
    constexpr int half = 6; // of what a notch adds
    QList<QRect> steps;
    for (int i = 0; i <= notches; ++i)
        steps.append(middle.adjusted(-half * i, -half * i, half * i, half * i));

    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(middle)));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    XInput::moveTo(middle.center());
    const XGeometryWatch watch(clock.window());
    {
        const BusyThreads busy(busyThreads);
        const XInput::ControlKey control;
        QTest::qWait(100); // as hands do it: the key goes down before the wheel turns
        takeSteps(notches, stepMs, [](int) { XInput::turnWheel(1); });
        if (!losesTurns)
            QTRY_COMPARE_WITH_TIMEOUT(clock.window().geometry(), steps.last(), limitMs);
        QTest::qWait(300); // nothing is to come after it
    }
    const QList<QRect> seen = watch.geometries();
    qInfo("%lld geometries for %d steps", seen.size(), notches);
    QVERIFY(!seen.isEmpty());
    QVERIFY(losesTurns || seen.last() == steps.last());
    QCOMPARE(faultOf(seen, steps), QString());
    QTRY_VERIFY(isRound(clock.window(), clock.window().geometry().width()));
}

void TestGestures::cornersKeepTheOppositeOne_data()
{
    QTest::addColumn<Corner>("corner");
    QTest::addColumn<int>("stepMs");
    QTest::addColumn<int>("busyThreads");

    for (const Corner &corner : corners) {
        QTest::addRow("%s, every 2 ms", corner.name) << corner << 2 << 0;
        QTest::addRow("%s, every ms, on a busy machine", corner.name) << corner << 1 << 4;
    }
}

void TestGestures::cornersKeepTheOppositeOne()
{
    QFETCH(Corner, corner);
    QFETCH(int, stepMs);
    QFETCH(int, busyThreads);

    constexpr int growth = 300;
    const int count = growth / stepMs;
    QList<QRect> steps;
    for (int i = 0; i <= count; ++i)
        steps.append(corner.grown(middle, growth * i / count));

    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(middle, {{u"ResizeEnabled"_s, true}})));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    constexpr int opaque = 8; // along the diagonal of the grip
    const QPoint from = corner.inside(middle, opaque);
    const XGeometryWatch watch(clock.window());
    {
        const BusyThreads busy(busyThreads);
        XInput::moveTo(from);
        XInput::press();
        takeSteps(count, stepMs, [&](int i) {
            const int by = growth * i / count;
            XInput::moveTo(from + corner.outward(by, by));
        });
        XInput::release();
        QTRY_COMPARE_WITH_TIMEOUT(clock.window().geometry(), steps.last(), limitMs);
        QTest::qWait(300); // nothing is to come after it
    }
    const QList<QRect> seen = watch.geometries();
    qInfo("%lld geometries for %d steps", seen.size(), count);
    QCOMPARE(seen.last(), steps.last());
    QCOMPARE(faultOf(seen, steps), QString());
}

void TestGestures::maskFollowsADoubleClick_data()
{
    QTest::addColumn<bool>("stopped");

    QTest::newRow("window manager at work") << false;
    QTest::newRow("window manager stopped meanwhile") << true;
}

void TestGestures::maskFollowsADoubleClick()
{
    QFETCH(bool, stopped);

    constexpr QRect before(420, 310, 300, 200);
    constexpr int side = 250;
    constexpr int stopMs = 200;
    constexpr int apartMs = 500; // no third click
    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(before)));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    const XWindow window = clock.window();
    XInput::moveTo(before.center());
    for (int i = 0; i < 20; ++i) {
        window.setGeometry(before);
        QTRY_COMPARE(window.geometry(), before);
        QTest::qWait(apartMs);
        XInput::click(before.center());
        XInput::press();
        // At another moment of the resize each time.
        std::this_thread::sleep_for(i * 2ms);
        {
            std::optional<StoppedWindowManager> manager;
            if (stopped)
                manager.emplace();
            QTimer end; // before the release, which may have to wait for the window manager
            end.callOnTimeout(&end, [&manager] { manager.reset(); });
            end.start(stopMs);
            XInput::release();
            QTRY_VERIFY(!manager);
        }
        QTRY_COMPARE(window.geometry(), QRect(before.topLeft(), QSize(side, side)));
        QTest::qWait(100); // whatever comes late
        QCOMPARE(window.geometry(), QRect(before.topLeft(), QSize(side, side)));
        QVERIFY2(isRound(window, side),
            qPrintable(u"at double click %1 the mask is %2 by %3"_s.arg(i + 1)
                    .arg(window.shape().boundingRect().width())
                    .arg(window.shape().boundingRect().height())));
    }
}

QTEST_MAIN(TestGestures)
#include "tst_gestures.moc"
