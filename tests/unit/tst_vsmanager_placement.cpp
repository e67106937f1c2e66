// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The window's geometry: the moves, the way into the configuration and to the file.

#include "confighome.h"
#include "offscreenwarnings.h"

#include "config/vsconfig.h"
#include "manager/vsmanager.h"

#include <QtCore/qelapsedtimer.h>
#include <QtCore/qjsondocument.h>
#include <QtCore/qjsonobject.h>
#include <QtCore/qparallelanimationgroup.h>
#include <QtCore/qpropertyanimation.h>
#include <QtGui/qcursor.h>
#include <QtGui/qscreen.h>
#include <QtTest/qsignalspy.h>
#include <QtTest/qtest.h>
#include <QtWidgets/qapplication.h>
#include <QtWidgets/qtextedit.h>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace
{

// Five seconds of a coarse timer, which Qt lets come 5 % early.
constexpr qint64 leastDelayMs = 4750;

} // namespace

class TestVsManagerPlacement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void syncTakesTheGeometry_data();
    void syncTakesTheGeometry();
    void syncWithoutWindowDoesNothing();
    void minimizedWindowKeepsItsGeometry();
    void moveToCorner_data();
    void moveToCorner();
    void moveToCentreOfTheScreenUnderTheMouse();
    void moveEasesInAndOut();
    void moveTakesTheMaskAwayAndPutsItBack();
    void moveSavesAtTheEnd();
    void moveAndReturn();
    void availableScreen();
    void screenUnderTheMouse();
    void dpiChange_data();
    void dpiChange();
    void dpiChangeWhileDragging();
    void mouseReleaseLooksAtTheScreenAgain();
    void dpiChangeOfAnotherWindow();
    void delayedSaveComparesWithTheStoredGeometry();
    void burstIsSavedOnce();
    void closeSavesAtOnce();

private:
    QWindow &adopt(const QRect &geometry);
    QJsonObject storedGeometry() const;
    void changeDpi(uint xDpi);

    ConfigHome m_home;
    std::unique_ptr<VsManager> m_manager;
    std::unique_ptr<QWindow> m_window;
};

void TestVsManagerPlacement::init()
{
    failOnRealWarning();
    QFile::remove(m_home.configFile());
    auto *config = VsConfig::instance();
    config->setTopmost(true);
    config->setAutoCheckUpdate(false); // some of these take longer than the time to the first check
    for (const char *side : {"left", "top", "width", "height"})
        config->setProperty(side, 0.0);
    m_manager = std::make_unique<VsManager>();
}

void TestVsManagerPlacement::cleanup()
{
    m_manager.reset();
    m_window.reset();
}

QWindow &TestVsManagerPlacement::adopt(const QRect &geometry)
{
    m_window = std::make_unique<QWindow>();
    m_window->setFlags(Qt::FramelessWindowHint | Qt::CustomizeWindowHint);
    m_window->setGeometry(geometry);
    m_manager->setMainWindow(m_window.get());
    return *m_window;
}

QJsonObject TestVsManagerPlacement::storedGeometry() const
{
    return QJsonDocument::fromJson(m_home.readFile()).object().value("Geometry"_L1).toObject();
}

void TestVsManagerPlacement::syncTakesTheGeometry_data()
{
    QTest::addColumn<QSize>("window");
    QTest::addColumn<double>("side");
    QTest::newRow("square") << QSize(200, 200) << 200.0;
    QTest::newRow("the larger side counts") << QSize(100, 150) << 150.0;
    QTest::newRow("too small") << QSize(50, 60) << 72.0;
    QTest::newRow("too large") << QSize(8000, 9000) << 7680.0;
    QTest::newRow("a small square stays") << QSize(50, 50) << 50.0;
}

void TestVsManagerPlacement::syncTakesTheGeometry()
{
    QFETCH(QSize, window);
    QFETCH(double, side);
    adopt(QRect(QPoint(30, 40), window));
    m_manager->syncWindowGeometory();
    const auto *config = VsConfig::instance();
    QCOMPARE(config->position(), QPointF(30, 40));
    QCOMPARE(config->size(), QSizeF(side, side));
    QCOMPARE(config->devicePixelRatio(), m_window->screen()->devicePixelRatio());
}

void TestVsManagerPlacement::syncWithoutWindowDoesNothing()
{
    VsConfig::instance()->setLeft(77);
    m_manager->syncWindowGeometory();
    QCOMPARE(VsConfig::instance()->left(), 77.0);
}

void TestVsManagerPlacement::minimizedWindowKeepsItsGeometry()
{
    QWindow &window = adopt(QRect(30, 40, 200, 200));
    QMetaObject::invokeMethod(m_manager.get(), "onAboutToMinimize");
    window.showMinimized();
    window.setPosition(-32000, -32000);
    m_manager->saveConfig();
    QCOMPARE(VsConfig::instance()->position(), QPointF(30, 40));
    QCOMPARE(storedGeometry().value("Width"_L1), 200.0);
}

void TestVsManagerPlacement::moveToCorner_data()
{
    QTest::addColumn<QByteArray>("move");
    QTest::addColumn<bool>("right");
    QTest::addColumn<bool>("bottom");
    QTest::newRow("top left") << QByteArray("moveToTopLeft") << false << false;
    QTest::newRow("top right") << QByteArray("moveToTopRight") << true << false;
    QTest::newRow("bottom right") << QByteArray("moveToBottomRight") << true << true;
    QTest::newRow("bottom left") << QByteArray("moveToBottomLeft") << false << true;
}

void TestVsManagerPlacement::moveToCorner()
{
    QFETCH(QByteArray, move);
    QFETCH(bool, right);
    QFETCH(bool, bottom);
    const QWindow &window = adopt(QRect(300, 300, 200, 200));
    const QSize screen = window.screen()->size();
    QSignalSpy finished(m_manager.get(), &VsManager::windowMovingAnimationFinished);
    QMetaObject::invokeMethod(m_manager.get(), move.constData());
    QCOMPARE(window.position(), QPoint(300, 300)); // it takes its time
    QVERIFY(finished.wait());
    // One pixel short of the right and the bottom edge.
    QCOMPARE(window.position(),
        QPoint(right ? screen.width() - 201 : 0, bottom ? screen.height() - 201 : 0));
    QCOMPARE(finished.first().first().value<QWindow *>(), &window);
}

void TestVsManagerPlacement::moveToCentreOfTheScreenUnderTheMouse()
{
    const QWindow &window = adopt(QRect(0, 0, 200, 200));
    QCursor::setPos(5, 5);
    QSignalSpy finished(m_manager.get(), &VsManager::windowMovingAnimationFinished);
    m_manager->moveToCenterAtCurrentScreen();
    QVERIFY(finished.wait());
    QCOMPARE(window.geometry().center(), window.screen()->geometry().center());
}

void TestVsManagerPlacement::moveEasesInAndOut()
{
    adopt(QRect(300, 300, 200, 200));
    m_manager->moveToTopLeft();
    const auto *const group = m_manager->findChild<QParallelAnimationGroup *>();
    QVERIFY(group);
    QCOMPARE(group->animationCount(), 2);
    for (int i = 0; i < 2; ++i) {
        const auto *const axis = qobject_cast<QPropertyAnimation *>(group->animationAt(i));
        QCOMPARE(axis->targetObject(), m_window.get());
        QCOMPARE(axis->propertyName(), i == 0 ? "x"_ba : "y"_ba);
        QCOMPARE(axis->duration(), 450);
        QCOMPARE(axis->easingCurve().type(), QEasingCurve::InOutCirc);
        QCOMPARE(axis->startValue(), 300);
        QCOMPARE(axis->endValue(), 0);
    }
}

void TestVsManagerPlacement::moveTakesTheMaskAwayAndPutsItBack()
{
    const QWindow &window = adopt(QRect(300, 300, 200, 200));
    QVERIFY(!window.mask().isEmpty());
    QSignalSpy finished(m_manager.get(), &VsManager::windowMovingAnimationFinished);
    m_manager->moveToTopLeft();
    QVERIFY(window.mask().isEmpty());
    QVERIFY(finished.wait());
    QVERIFY(!window.mask().isEmpty());
}

void TestVsManagerPlacement::moveSavesAtTheEnd()
{
    adopt(QRect(300, 300, 200, 200));
    QSignalSpy finished(m_manager.get(), &VsManager::windowMovingAnimationFinished);
    m_manager->moveToTopLeft();
    QVERIFY(storedGeometry().isEmpty());
    QVERIFY(finished.wait());
    QCOMPARE(storedGeometry().value("Left"_L1), 0.0);
    QCOMPARE(storedGeometry().value("Width"_L1), 200.0);
}

void TestVsManagerPlacement::moveAndReturn()
{
    const QWindow &window = adopt(QRect(30, 40, 200, 200));
    m_manager->moveAndReturnMainWindow();
    QCOMPARE(window.position(), QPoint(31, 41));
    QTRY_COMPARE(window.position(), QPoint(30, 40));
}

void TestVsManagerPlacement::availableScreen()
{
    QVERIFY(m_manager->isAvailableScreen(QPoint(5, 5)));
    VsConfig::instance()->setTopmost(false);
    QVERIFY(m_manager->isAvailableScreen(QPoint(5, 5)));
    QVERIFY(!m_manager->isAvailableScreen(QPoint(-5, 5)));
    VsConfig::instance()->setTopmost(true);
    QVERIFY(m_manager->isAvailableScreen(QPoint(-5, 5)));
}

void TestVsManagerPlacement::screenUnderTheMouse()
{
    QCursor::setPos(5, 5);
    QCOMPARE(m_manager->getCurrentScreenGeometory(), QGuiApplication::primaryScreen()->geometry());
}

void TestVsManagerPlacement::changeDpi(uint xDpi)
{
    QMetaObject::invokeMethod(
        m_manager.get(), "onDpiChanged", m_window->winId(), xDpi, uint(1), QRect(1, 2, 333, 444));
}

void TestVsManagerPlacement::dpiChange_data()
{
    QTest::addColumn<uint>("dpi");
    QTest::addColumn<int>("side");
    QTest::newRow("larger") << 144u << 300;
    QTest::newRow("smaller") << 72u << 150;
    QTest::newRow("a fraction is dropped") << 97u << 202;
}

void TestVsManagerPlacement::dpiChange()
{
    QFETCH(uint, dpi);
    QFETCH(int, side);
    const QWindow &window = adopt(QRect(30, 40, 200, 200));
    changeDpi(dpi);
    QCOMPARE(window.size(), QSize(side, side));
    QCOMPARE(window.mask().boundingRect().right(), side - 1);
    // The trace line, on its own window.
    const QWidgetList widgets = QApplication::topLevelWidgets();
    const auto debugWindow = std::ranges::find_if(
        widgets, [](const QWidget *widget) { return widget->findChild<QTextEdit *>(); });
    QVERIFY(debugWindow != widgets.end());
    const QString trace = (*debugWindow)->findChild<QTextEdit *>()->toPlainText();
    QVERIFY(trace.endsWith(u"dpi: %1, WinSize: 200x200, %Rect.Size: 333x444"_s.arg(dpi)));
}

void TestVsManagerPlacement::dpiChangeWhileDragging()
{
    QWindow &window = adopt(QRect(30, 40, 200, 200));
    QTest::mousePress(&window, Qt::LeftButton);
    m_manager->clearMask(); // as the document does
    changeDpi(144);
    QCOMPARE(window.size(), QSize(200, 200));
    QVERIFY(!window.mask().isEmpty());
    QTest::mouseRelease(&window, Qt::LeftButton);
    changeDpi(144);
    QCOMPARE(window.size(), QSize(300, 300));
}

void TestVsManagerPlacement::mouseReleaseLooksAtTheScreenAgain()
{
    QWindow &window = adopt(QRect(30, 40, 200, 200));
    changeDpi(144);
    changeDpi(144);
    QCOMPARE(window.size(), QSize(300, 300)); // it is there already
    QTest::mouseClick(&window, Qt::LeftButton); // and the screen has a scale of 1
    changeDpi(144);
    QCOMPARE(window.size(), QSize(450, 450));
}

void TestVsManagerPlacement::dpiChangeOfAnotherWindow()
{
    const QWindow &window = adopt(QRect(30, 40, 200, 200));
    QMetaObject::invokeMethod(
        m_manager.get(), "onDpiChanged", window.winId() + 1, uint(144), uint(144), QRect());
    QCOMPARE(window.size(), QSize(200, 200));
}

// What counts is what the configuration held at the first call, not where the window was.
void TestVsManagerPlacement::delayedSaveComparesWithTheStoredGeometry()
{
    QWindow &window = adopt(QRect(300, 300, 200, 200));
    m_manager->saveConfig();
    QVERIFY(QFile::remove(m_home.configFile()));
    window.setPosition(310, 300);
    m_manager->lazySaveConfig();
    window.setPosition(300, 300);
    QTest::qWait(5500);
    QVERIFY(!QFile::exists(m_home.configFile())); // back where it was when it was stored

    VsConfig::instance()->setLeft(299); // stored elsewhere, the window itself does not move
    QElapsedTimer sinceCall;
    sinceCall.start();
    m_manager->lazySaveConfig();
    QTRY_COMPARE_WITH_TIMEOUT(storedGeometry().value("Left"_L1), 300.0, 10000);
    QCOMPARE_GE(sinceCall.elapsed(), leastDelayMs);
}

void TestVsManagerPlacement::burstIsSavedOnce()
{
    QWindow &window = adopt(QRect(300, 300, 200, 200));
    QElapsedTimer sinceLastCall;
    for (int i = 0; i < 10; ++i) {
        window.setPosition(300 + i, 300);
        QVERIFY(!QFile::exists(m_home.configFile()));
        m_manager->lazySaveConfig();
        sinceLastCall.start();
        if (i < 9)
            QTest::qWait(1000);
    }
    QTRY_COMPARE_WITH_TIMEOUT(storedGeometry().value("Left"_L1), 309.0, 10000);
    QCOMPARE_GE(sinceLastCall.elapsed(), leastDelayMs);
    QVERIFY(QFile::remove(m_home.configFile()));
    QTest::qWait(1500);
    QVERIFY(!QFile::exists(m_home.configFile()));
}

void TestVsManagerPlacement::closeSavesAtOnce()
{
    QWindow &window = adopt(QRect(300, 300, 200, 200));
    window.setPosition(310, 300);
    m_manager->lazySaveConfig();
    window.close();
    QCOMPARE(storedGeometry().value("Left"_L1), 310.0);
    QVERIFY(QFile::remove(m_home.configFile()));
    QTest::qWait(5500); // the delayed save is off
    QVERIFY(!QFile::exists(m_home.configFile()));
}

QTEST_MAIN(TestVsManagerPlacement)
#include "tst_vsmanager_placement.moc"
