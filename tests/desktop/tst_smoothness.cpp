// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// How smoothly the clock follows the mouse. The limits are half of what an idle machine reaches, so
// that only a real loss fails; each figure is printed.

#include "config/vsconfig.h"
#include "manager/vsmanager.h"
#include "tests/desktop/machinespeed.h"
#include "tests/desktop/ownclock.h"
#include "tests/desktop/sceneitems.h"
#include "tests/desktop/xinput.h"

#include <QtCore/qelapsedtimer.h>
#include <QtQuick/qquickitem.h>
#include <QtQuick/qquickwindow.h>
#include <QtTest/qsignalspy.h>
#include <QtTest/qtest.h>

#include <ctime>

using namespace Qt::StringLiterals;

namespace
{

constexpr QPoint corner(40, 40);
constexpr int gripInset = 8; // inside the window's corner, on the grip
constexpr auto waitForPictures = std::chrono::minutes(1); // the largest, on the slowest machine

// Processor time of the calling thread, in ms.
double threadTimeMs()
{
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return double(time.tv_sec) * 1e3 + double(time.tv_nsec) / 1e6;
}

// Notes what is painted, and the processor time that the GUI thread takes for it.
class FrameWatch : public QObject
{
public:
    explicit FrameWatch(QQuickWindow *window)
        : m_window(window)
    {
        connect(window, &QQuickWindow::beforeRendering, this, [this] { m_start = threadTimeMs(); });
        connect(window, &QQuickWindow::frameSwapped, this, &FrameWatch::addFrame);
    }

    int frames() const { return m_frames; }
    double paintingMs() const { return m_paintingMs; }
    /// Frames in which a layer that is visible had no picture.
    int framesWithGaps() const { return m_framesWithGaps; }
    /// Whether the last frame had the picture for its size in every layer.
    bool isSharp() const { return m_isSharp; }

private:
    void addFrame()
    {
        ++m_frames;
        m_paintingMs += threadTimeMs() - m_start;
        const QList<QQuickItem *> layers = SceneItems::visibleLayers(m_window);
        const bool hasGap = std::any_of(layers.begin(), layers.end(),
            [](const QQuickItem *layer) { return layer->property("paintedWidth").toReal() <= 0; });
        if (hasGap || layers.isEmpty())
            ++m_framesWithGaps;
        m_isSharp = SceneItems::isSharp(m_window);
    }

    QQuickWindow *m_window;
    double m_start = 0;
    double m_paintingMs = 0;
    int m_frames = 0;
    int m_framesWithGaps = 0;
    bool m_isSharp = false;
};

} // namespace

class TestSmoothness : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { OwnClock::prepare(m_home); }
    void followsTheMouseStepByStep_data();
    void followsTheMouseStepByStep();
    void isResizedSmoothly_data();
    void isResizedSmoothly();
    void isMovedWithoutAFrame();

private:
    std::unique_ptr<OwnClock> startClock(int side)
    {
        OwnClock::setStoredGeometry(QRect(corner, QSize(side, side)));
        VsConfig::instance()->setResizeEnabled(true);
        return std::make_unique<OwnClock>();
    }
    // With the mouse on the grip and its button down.
    static void grabGrip(const QQuickWindow *window)
    {
        QVERIFY(QTest::qWaitFor([&] { return SceneItems::isSharp(window); }, waitForPictures));
        QTest::qWait(700); // the pictures of the grips are taken
        XInput::moveTo(window->geometry().bottomRight() - QPoint(gripInset, gripInset));
        XInput::press();
        QTest::qWait(100);
    }

    const ClockHome m_home;
};

void TestSmoothness::followsTheMouseStepByStep_data()
{
    QTest::addColumn<int>("side");

    for (const int side : {320, 1080})
        QTest::addRow("%d", side) << side;
}

void TestSmoothness::followsTheMouseStepByStep()
{
    QFETCH(int, side);

    const auto clock = startClock(side);
    QVERIFY(clock->waitForWindow());
    grabGrip(clock->window());
    const QPoint start = clock->window()->geometry().bottomRight() - QPoint(gripInset, gripInset);
    for (int by = 1; by <= 40; ++by) {
        XInput::moveTo(start + QPoint(by, by));
        QTRY_COMPARE(clock->window()->size(), QSize(side + by, side + by));
        QTRY_COMPARE(clock->nativeWindow().geometry().size(), QSize(side + by, side + by));
    }
    XInput::release();
}

void TestSmoothness::isResizedSmoothly_data()
{
    QTest::addColumn<int>("side");
    QTest::addColumn<double>("limitMs"); // of the GUI thread, a step
    QTest::addColumn<double>("limitFrames"); // a second, at least
    QTest::addColumn<int>("limitSharpMs");

    QTest::newRow("320") << 320 << 10.0 << 25.0 << 200;
    QTest::newRow("720") << 720 << 20.0 << 8.0 << 400;
    QTest::newRow("1080") << 1080 << 50.0 << 4.0 << 800;
    QTest::newRow("2160") << 2160 << 100.0 << 1.0 << 3000;
}

void TestSmoothness::isResizedSmoothly()
{
    QFETCH(int, side);
    QFETCH(double, limitMs);
    QFETCH(double, limitFrames);
    QFETCH(int, limitSharpMs);

    const auto clock = startClock(side);
    QQuickWindow *window = clock->window();
    FrameWatch watch(window);
    QVERIFY(clock->waitForWindow());
    grabGrip(window);
    const QPoint start = window->geometry().bottomRight() - QPoint(gripInset, gripInset);

    // A mouse that tells of itself a hundred times a second.
    constexpr auto drag = std::chrono::seconds(2);
    constexpr auto report = std::chrono::milliseconds(10);
    constexpr int sway = 60; // in pixels, out and in again
    const int framesBefore = watch.frames();
    const double paintingBefore = watch.paintingMs();
    const double timeBefore = threadTimeMs();
    const QSignalSpy steps(window, &QQuickWindow::widthChanged);
    int reports = 0;
    QTimer mouse;
    connect(&mouse, &QTimer::timeout, this, [&] {
        const int by = std::abs((reports++ + sway) % (2 * sway) - sway);
        XInput::moveTo(start + QPoint(by, by));
    });
    mouse.start(report);
    QTest::qWait(drag);
    mouse.stop();
    const double painting = watch.paintingMs() - paintingBefore;
    const double framesPerSecond
        = (watch.frames() - framesBefore) / std::chrono::duration<double>(drag).count();
    const double perFrame = painting / (watch.frames() - framesBefore);
    // With a frame, but without those of the pictures that have come meanwhile.
    const double perStep
        = (threadTimeMs() - timeBefore - painting) / double(steps.size()) + perFrame;

    XInput::moveTo(start + QPoint(77, 77));
    QElapsedTimer sinceLastStep;
    sinceLastStep.start();
    QVERIFY(QTest::qWaitFor(
        [&] { return window->width() == side + 77 && watch.isSharp(); }, waitForPictures));
    const qint64 sharpMs = sinceLastStep.elapsed();
    XInput::release();

    qInfo("side %d: %lld steps, %.1f ms of the GUI thread each, %.1f frames a second of %.1f ms "
          "each, sharp after %lld ms",
        side, qlonglong(steps.size()), perStep, framesPerSecond, perFrame, sharpMs);
    QCOMPARE_GE(double(steps.size()), 2 * limitFrames / machineSlowness());
    QCOMPARE_LE(perStep, limitMs * machineSlowness());
    QCOMPARE_GE(framesPerSecond, limitFrames / machineSlowness());
    QCOMPARE_LE(double(sharpMs), limitSharpMs * machineSlowness());
    QCOMPARE(watch.framesWithGaps(), 0);
    QCOMPARE(clock->nativeWindow().geometry().size(), QSize(side + 77, side + 77));
}

void TestSmoothness::isMovedWithoutAFrame()
{
    const auto clock = startClock(320);
    QQuickWindow *window = clock->window();
    FrameWatch watch(window);
    QVERIFY(clock->waitForWindow());
    QVERIFY(clock->waitForRest());
    const QPoint middle = window->geometry().center();
    XInput::moveTo(middle);
    XInput::press();
    QTest::qWait(300); // the press takes the mask away
    const QSignalSpy ticks(clock->manager(), &VsManager::timeTextChanged);
    const int framesBefore = watch.frames();
    for (int by = 1; by <= 100; ++by) {
        XInput::moveTo(middle + QPoint(by, by));
        QTRY_COMPARE(window->position(), corner + QPoint(by, by));
    }
    QCOMPARE_LE(watch.frames() - framesBefore, ticks.size() + 1);
    XInput::release();
}

QTEST_MAIN(TestSmoothness)
#include "tst_smoothness.moc"
