// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The adoption of the clock window and what becomes of its flags, mask and geometry.

#include "confighome.h"
#include "firedtimers.h"
#include "offscreenwarnings.h"
#include "signallog.h"

#include "config/vsconfig.h"
#include "manager/vsmanager.h"

#include <QtGui/qevent.h>
#include <QtTest/qsignalspy.h>
#include <QtTest/qtest.h>

#include <limits>
#include <memory>

using namespace Qt::StringLiterals;

class TestVsManagerWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void storedGeometry_data();
    void storedGeometry();
    void storedPositionSaturates();
    void adoptionShowsAndAnnounces();
    void looksAtTheDpiOnce();
    void settingsAloneRaiseTheClock();
    void maskIsTheCircle();
    void resizingTakesTheMaskAway();
    void resizableWindowStartsWithoutMask();
    void nothingHappensWithoutWindow();
    void taskbarChangesTheFlags();
    void taskbarKeepsTheGeometry();
    void maskFollowsALateSize();
    void taskbarTakesNoUnusableSize_data();
    void taskbarTakesNoUnusableSize();
    void minimizedWindowIsAPlainOne();
    void restoredWindowGetsItsFlagsBack();
    void keyAsksForTheMenu();
    void doubleClickTicks();
    void offScreenClockIsBroughtBack_data();
    void offScreenClockIsBroughtBack();

private:
    QWindow &adopt();
    void store(double left, double top, double width, double height);

    ConfigHome m_home;
    std::unique_ptr<VsManager> m_manager;
    std::unique_ptr<QWindow> m_window;
};

namespace
{

constexpr Qt::WindowFlags plainClock = Qt::FramelessWindowHint | Qt::CustomizeWindowHint;

} // namespace

void TestVsManagerWindow::init()
{
    failOnRealWarning();
    auto *config = VsConfig::instance();
    config->setResizeEnabled(false);
    config->setShowOnTaskbar(false);
    config->setKeepPositionWhenMonitorDetatched(false);
    store(0, 0, 0, 0);
    m_manager = std::make_unique<VsManager>();
    connect(config, &VsConfig::resizeEnabledChanged, m_manager.get(), &VsManager::setResizeEnabled);
}

void TestVsManagerWindow::cleanup()
{
    m_manager.reset();
    m_window.reset();
}

void TestVsManagerWindow::store(double left, double top, double width, double height)
{
    auto *config = VsConfig::instance();
    config->setLeft(left);
    config->setTop(top);
    config->setWidth(width);
    config->setHeight(height);
}

QWindow &TestVsManagerWindow::adopt()
{
    m_window = std::make_unique<QWindow>();
    m_window->setFlags(plainClock);
    m_window->setGeometry(10, 20, 320, 320);
    m_manager->setMainWindow(m_window.get());
    return *m_window;
}

void TestVsManagerWindow::storedGeometry_data()
{
    QTest::addColumn<QRectF>("stored");
    QTest::addColumn<QRect>("geometry");
    const QRect untouched(10, 20, 320, 320);
    QTest::newRow("nothing stored") << QRectF() << untouched;
    QTest::newRow("too narrow") << QRectF(50, 60, 71, 200) << untouched;
    QTest::newRow("too large") << QRectF(50, 60, 8000, 8000) << untouched;
    QTest::newRow("too low") << QRectF(50, 60, 200, 71.9) << untouched;
    QTest::newRow("the width wins") << QRectF(50, 60, 300, 200) << QRect(50, 60, 300, 300);
    QTest::newRow("the least") << QRectF(50, 60, 72, 72) << QRect(50, 60, 72, 72);
    QTest::newRow("the most") << QRectF(50, 60, 7680, 7680) << QRect(50, 60, 7680, 7680);
    QTest::newRow("fractions are cut")
        << QRectF(50.9, -60.9, 300.9, 300) << QRect(50, -60, 300, 300);
    QTest::newRow("off the screen") << QRectF(-5000, 60, 300, 300) << QRect(-5000, 60, 300, 300);
}

void TestVsManagerWindow::storedGeometry()
{
    QFETCH(QRectF, stored);
    store(stored.x(), stored.y(), stored.width(), stored.height());
    QTEST(adopt().geometry(), "geometry");
}

void TestVsManagerWindow::storedPositionSaturates()
{
    store(1e300, -1e300, 300, 300);
    const QPoint position = adopt().position();
    // Windows itself saturates once more, at 16 bits.
    QCOMPARE_GE(position.x(), std::numeric_limits<qint16>::max());
    QCOMPARE_LE(position.y(), std::numeric_limits<qint16>::min());
    QCOMPARE(VsConfig::instance()->left(), 1e300);
}

void TestVsManagerWindow::adoptionShowsAndAnnounces()
{
    SignalLog log(m_manager.get());
    const QWindow &window = adopt();
    QVERIFY(window.isVisible());
    QVERIFY(window.flags().testFlag(Qt::NoDropShadowWindowHint));
    QCOMPARE(log.names(), (QByteArrayList{"mainWindowIdChanged", "mainWindowChanged"}));
    QCOMPARE(log.emissions().at(0).arguments.first().value<WId>(), window.winId());
    QCOMPARE(log.emissions().at(1).arguments.first().value<QWindow *>(), &window);
}

void TestVsManagerWindow::looksAtTheDpiOnce()
{
    const FiredTimers timers;
    adopt();
    QTRY_COMPARE(timers.count(1000), 1);
    QVERIFY(!timers.last(1000)->isActive());
}

// Twice a second, whatever either of the two signals brings.
void TestVsManagerWindow::settingsAloneRaiseTheClock()
{
    constexpr int intervalMs = 500;
    const auto tellTimer = [this](bool enabled) {
        QMetaObject::invokeMethod(m_manager.get(), "setTopmostTimerEnabled", enabled);
    };
    auto *config = VsConfig::instance();
    config->setTopmost(true);
    config->setRaisePriorityOfTopmost(true);
    tellTimer(false);
    const FiredTimers timers;
    QTRY_COMPARE_GE(timers.count(intervalMs), 2);
    const QTimer *const timer = timers.last(intervalMs);
    config->setRaisePriorityOfTopmost(false);
    QVERIFY(!timer->isActive());
    tellTimer(true);
    QVERIFY(!timer->isActive());
    config->setRaisePriorityOfTopmost(true);
    QVERIFY(timer->isActive());
    config->setTopmost(false);
    QVERIFY(!timer->isActive());
    config->setRaisePriorityOfTopmost(false);
    config->setTopmost(true);
}

void TestVsManagerWindow::maskIsTheCircle()
{
    const QWindow &window = adopt();
    QCOMPARE(window.mask(), QRegion(-1, -1, 321, 321, QRegion::Ellipse));
}

void TestVsManagerWindow::resizingTakesTheMaskAway()
{
    QWindow &window = adopt();
    VsConfig::instance()->setResizeEnabled(true);
    QVERIFY(window.mask().isEmpty());
    m_manager->updateMask();
    QVERIFY(window.mask().isEmpty());
    window.resize(200, 100);
    VsConfig::instance()->setResizeEnabled(false);
    QCOMPARE(window.mask(), QRegion(-1, -1, 201, 201, QRegion::Ellipse)); // by the width
    m_manager->clearMask();
    QVERIFY(window.mask().isEmpty());
}

void TestVsManagerWindow::resizableWindowStartsWithoutMask()
{
    VsConfig::instance()->setResizeEnabled(true);
    QVERIFY(adopt().mask().isEmpty());
}

void TestVsManagerWindow::nothingHappensWithoutWindow()
{
    m_manager->setTopmost(true);
    m_manager->setShowOnTaskbar(true);
    m_manager->updateMask();
    m_manager->clearMask();
    m_manager->setResizeEnabled(true);
    m_manager->setIgnoreMouseEvent(true);
    m_manager->moveToTopLeft();
    m_manager->moveToCenterAtCurrentScreen();
    m_manager->moveAndReturnMainWindow();
    m_manager->lazySaveConfig();
    m_manager->keepOnScreen();
    QMetaObject::invokeMethod(m_manager.get(), "setTopmostForce");
    QMetaObject::invokeMethod(m_manager.get(), "onAboutToMinimize");
    QCoreApplication::processEvents();
}

void TestVsManagerWindow::taskbarChangesTheFlags()
{
    const QWindow &window = adopt();
    const Qt::WindowFlags before = window.flags();
    VsConfig::instance()->setShowOnTaskbar(true);
    QCOMPARE(window.flags().toInt(), before.toInt() | 0x6001);
    VsConfig::instance()->setShowOnTaskbar(false);
    QCOMPARE(window.flags().toInt(), 0x2000800);
}

void TestVsManagerWindow::taskbarKeepsTheGeometry()
{
    QWindow &window = adopt();
    window.setGeometry(70, 80, 200, 200);
    VsConfig::instance()->setShowOnTaskbar(true);
    window.setGeometry(0, 0, 100, 100); // as the change may lose it
    QTRY_COMPARE(window.geometry(), QRect(70, 80, 200, 200));
    QCOMPARE(window.mask().boundingRect().right(), 199);
    QVERIFY(window.isVisible());
}

// As that of a restored window on Windows; but a clock that is dragged meanwhile has no mask.
void TestVsManagerWindow::maskFollowsALateSize()
{
    constexpr int laterMs = 700;
    const auto circle
        = [](int side) { return QRegion(-1, -1, side + 1, side + 1, QRegion::Ellipse); };
    QWindow &window = adopt();
    m_manager->setShowOnTaskbar(false);
    QTest::qWait(100);
    QCOMPARE(window.mask(), circle(320));
    window.resize(200, 200);
    QTRY_COMPARE(window.mask(), circle(200));
    m_manager->setShowOnTaskbar(true);
    QTest::qWait(100);
    QTest::mousePress(&window, Qt::LeftButton);
    m_manager->clearMask();
    QTest::qWait(laterMs);
    QVERIFY(window.mask().isEmpty());
    QTest::mouseRelease(&window, Qt::LeftButton);
    // No other button drags, and that of the menu is never released over the clock.
    m_manager->setShowOnTaskbar(false);
    QTest::mousePress(&window, Qt::MiddleButton);
    QTest::qWait(100);
    window.resize(150, 150);
    QTRY_COMPARE(window.mask(), circle(150));
    QTest::mouseRelease(&window, Qt::MiddleButton);
}

void TestVsManagerWindow::taskbarTakesNoUnusableSize_data()
{
    QTest::addColumn<QRectF>("stored");
    QTest::addColumn<QRect>("geometry");
    const QRect untouched(10, 20, 320, 320);
    QTest::newRow("usable") << QRectF(50, 60, 300, 200) << QRect(50, 60, 300, 200);
    QTest::newRow("nothing stored") << QRectF() << untouched;
    QTest::newRow("far too large") << QRectF(50, 60, 1e9, 1e9) << untouched;
    QTest::newRow("wraps around") << QRectF(-3e9, 0, -5, 300) << untouched;
    QTest::newRow("far to the right") << QRectF(3e9, 0, 300, 300) << untouched;
}

void TestVsManagerWindow::taskbarTakesNoUnusableSize()
{
    QFETCH(QRectF, stored);
    QFETCH(QRect, geometry);
    const QWindow &window = adopt();
    store(stored.x(), stored.y(), stored.width(), stored.height());
    m_manager->setShowOnTaskbar(true, false);
    QSignalSpy shown(&window, &QWindow::visibleChanged);
    QTRY_COMPARE(shown.size(), 2); // hidden and shown again: the change is complete
    QCOMPARE(window.geometry(), geometry);
}

void TestVsManagerWindow::minimizedWindowIsAPlainOne()
{
    QWindow &window = adopt();
    QSignalSpy spy(m_manager.get(), &VsManager::mainWindowStateChanged);
    window.showMinimized();
    QTRY_COMPARE(window.flags(), Qt::WindowFlags(Qt::Window));
    QCOMPARE(spy.last().first().value<Qt::WindowStates>(), Qt::WindowStates(Qt::WindowMinimized));
}

void TestVsManagerWindow::restoredWindowGetsItsFlagsBack()
{
    QWindow &window = adopt();
    window.setGeometry(70, 80, 200, 200);
    QMetaObject::invokeMethod(m_manager.get(), "onAboutToMinimize");
    window.showMinimized();
    QTRY_COMPARE(window.flags(), Qt::WindowFlags(Qt::Window));
    window.setGeometry(0, 0, 100, 100);
    window.showNormal();
    QTRY_COMPARE(window.flags(), plainClock);
    QTRY_COMPARE(window.geometry(), QRect(70, 80, 200, 200));
}

void TestVsManagerWindow::keyAsksForTheMenu()
{
    QWindow &window = adopt();
    QSignalSpy spy(m_manager.get(), &VsManager::reqOpenMenu);
    QTest::keyPress(&window, Qt::Key_M);
    QCOMPARE(spy.size(), 0);
    QTest::keyRelease(&window, Qt::Key_M);
    QCOMPARE(spy.size(), 1);
}

void TestVsManagerWindow::doubleClickTicks()
{
    static qint64 present = 1'000'000;
    m_manager->setWallClock([] { return present; });
    QWindow &window = adopt();
    m_manager->start();
    QSignalSpy spy(m_manager.get(), &VsManager::timeTextChanged);
    present += 5000;
    QTest::mouseDClick(&window, Qt::LeftButton);
    QCOMPARE(spy.size(), 1);
}

void TestVsManagerWindow::offScreenClockIsBroughtBack_data()
{
    QTest::addColumn<QPoint>("stored");
    QTest::addColumn<bool>("keepPosition");
    QTest::addColumn<QPoint>("position");
    QTest::newRow("off the screen") << QPoint(-5000, 60) << false << QPoint(0, 60);
    QTest::newRow("off the screen, but told to stay")
        << QPoint(-5000, 60) << true << QPoint(-5000, 60);
    QTest::newRow("partly on it") << QPoint(-100, 60) << false << QPoint(-100, 60);
}

void TestVsManagerWindow::offScreenClockIsBroughtBack()
{
    QFETCH(QPoint, stored);
    QFETCH(bool, keepPosition);
    VsConfig::instance()->setKeepPositionWhenMonitorDetatched(keepPosition);
    store(stored.x(), stored.y(), 200, 200);
    const QWindow &window = adopt();
    m_manager->keepOnScreen();
    QTEST(window.position(), "position");
    QCOMPARE(VsConfig::instance()->left(), stored.x());
}

QTEST_MAIN(TestVsManagerWindow)
#include "tst_vsmanager_window.moc"
