// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// What other programs cannot bring about: the clock's window is this program's own here, and its
// manager is called as the documents call it. How it comes out is seen from outside again.

#include "config/vsconfig.h"
#include "manager/vsmanager.h"
#include "tests/desktop/ownclock.h"
#include "tests/desktop/xinput.h"

#include <QtCore/qregularexpression.h>
#include <QtGui/private/qguiapplication_p.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qscreen.h>
#include <QtQuick/qquickwindow.h>
#include <QtTest/qsignalspy.h>
#include <QtTest/qtest.h>

#include <chrono>
#include <csignal>
#include <memory>
#include <thread>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace
{

constexpr QRect place(420, 310, 200, 200);

// The window manager gets no time for a while and then little, as on a busy machine, until the
// thread is asked to stop. That must not depend on this one, which waits where the manager has been
// held up while the X server served nobody else.
std::jthread slowDown(pid_t windowManager, std::chrono::milliseconds late)
{
    return std::jthread([=](const std::stop_token &stop) {
        for (auto pause = late; !stop.stop_requested(); pause = 20ms) {
            ::kill(windowManager, SIGSTOP);
            std::this_thread::sleep_for(pause);
            ::kill(windowManager, SIGCONT);
            std::this_thread::sleep_for(500us);
        }
    });
}

} // namespace

class TestOwnWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void movesToTheCorners_data();
    void movesToTheCorners();
    void movesToTheMiddle();
    void comesToTheTaskbarAndGoes_data();
    void comesToTheTaskbarAndGoes();
    void isOnTheTaskbarAsToldWhateverIsSet();
    void isAsSetAfterALateHideAndShow();
    void isAsSetOnceALateWindowManagerAnswers_data();
    void isAsSetOnceALateWindowManagerAnswers();
    void savesWhenTheSessionEnds();
    void isMinimizedByItsMenu_data();
    void isMinimizedByItsMenu();
    void canBeResizedLater();
    void letsTheMouseThroughLater();

private:
    XWindow window() const { return m_clock->nativeWindow(); }
    bool isRound() const
    {
        return (window().shape() & QRect(QPoint(), place.size())) == circle(place.width());
    }

    void expectAsSet(bool shownOnTaskbar);

    const ClockHome m_home;
    VsConfig *m_config = nullptr;
    std::unique_ptr<OwnClock> m_clock;
    QQuickWindow *m_window = nullptr; // the clock's
};

void TestOwnWindow::initTestCase()
{
    OwnClock::prepare(m_home);
    m_config = VsConfig::instance();
    QCOMPARE(QGuiApplication::primaryScreen()->geometry(), QRect(0, 0, 1920, 1080));
}

void TestOwnWindow::init()
{
    // Qt shows the icon in an older tray before it loads the picture, and says so.
    QTest::failOnWarning(QRegularExpression(u"^(?!QSystemTrayIcon::setVisible: No Icon set)"_s));
    XInput::moveTo({5, 5});
    m_config->setShowOnTaskbar(false);
    m_config->setIgnoreMouseEvent(false);
    m_config->setResizeEnabled(false);
    OwnClock::setStoredGeometry(place);
    m_clock = std::make_unique<OwnClock>();
    QVERIFY(m_clock->waitForWindow());
    m_window = m_clock->window();
    QTRY_COMPARE(window().geometry(), place);
    QTRY_COMPARE(m_window->geometry(), place);
    QTRY_VERIFY(window().states().contains("ABOVE"));
}

void TestOwnWindow::cleanup() { m_clock.reset(); }

void TestOwnWindow::expectAsSet(bool shownOnTaskbar)
{
    QTRY_COMPARE(window().states().contains("SKIP_TASKBAR"), !shownOnTaskbar);
    QTRY_VERIFY(window().isMapped());
    QTRY_VERIFY(window().states().contains("ABOVE"));
    QTRY_COMPARE(window().geometry(), place);
    QTRY_COMPARE(m_window->geometry(), place);
    QTRY_COMPARE(window().frame(), QMargins());
    QTRY_VERIFY(isRound());
}

void TestOwnWindow::movesToTheCorners_data()
{
    QTest::addColumn<QByteArray>("method");
    QTest::addColumn<QPoint>("expected");

    QTest::newRow("top left") << "moveToTopLeft"_ba << QPoint(0, 0);
    QTest::newRow("top right") << "moveToTopRight"_ba << QPoint(1719, 0);
    QTest::newRow("bottom right") << "moveToBottomRight"_ba << QPoint(1719, 879);
    QTest::newRow("bottom left") << "moveToBottomLeft"_ba << QPoint(0, 879);
}

void TestOwnWindow::movesToTheCorners()
{
    QFETCH(QByteArray, method);
    QFETCH(QPoint, expected);

    const QRect target(expected, place.size());
    QSignalSpy finished(m_clock->manager(), &VsManager::windowMovingAnimationFinished);
    QVERIFY(m_clock->call(method.constData()));
    QVERIFY(finished.wait());
    QTRY_COMPARE(window().geometry(), target);
    QTRY_VERIFY(isRound());
    QCOMPARE(m_home.storedGeometry(), QRectF(target));
}

void TestOwnWindow::movesToTheMiddle()
{
    XInput::moveTo({1800, 1000});
    QSignalSpy finished(m_clock->manager(), &VsManager::windowMovingAnimationFinished);
    QVERIFY(m_clock->call("moveToCenterAtCurrentScreen"));
    QVERIFY(finished.wait());
    QRect target = place;
    target.moveCenter(QRect(0, 0, 1920, 1080).center());
    QTRY_COMPARE(window().geometry(), target);
}

void TestOwnWindow::comesToTheTaskbarAndGoes_data()
{
    QTest::addColumn<bool>("ignoreMouseEvent");

    QTest::newRow("plain") << false;
    QTest::newRow("click-through") << true;
}

void TestOwnWindow::comesToTheTaskbarAndGoes()
{
    QFETCH(bool, ignoreMouseEvent);

    m_config->setIgnoreMouseEvent(ignoreMouseEvent);
    QVERIFY(window().states().contains("SKIP_TASKBAR"));
    for (const bool shown : {true, false, true, false}) {
        m_config->setShowOnTaskbar(shown);
        QTRY_COMPARE(window().states().contains("SKIP_TASKBAR"), !shown);
        QTRY_VERIFY(window().isMapped());
        QTest::qWait(700); // for whatever comes late; a busy machine may need longer
        expectAsSet(shown);
        if (QTest::currentTestFailed())
            return;
        QTRY_COMPARE(XWindow::under(place.center()), ignoreMouseEvent ? XWindow() : window());
    }
}

void TestOwnWindow::savesWhenTheSessionEnds()
{
    const QRect moved = place.translated(31, 17);
    m_window->setGeometry(moved);
    QTRY_COMPARE(window().geometry(), moved);
    QVERIFY(m_home.storedGeometry() != QRectF(moved));
    // As a session manager has it done, of which there is none here.
    auto *application = QGuiApplicationPrivate::instance();
    application->commitData();
    QCOMPARE(m_home.storedGeometry(), QRectF(moved));
}

// The documents may call this themselves.
void TestOwnWindow::isOnTheTaskbarAsToldWhateverIsSet()
{
    QTRY_VERIFY(window().states().contains("SKIP_TASKBAR"));
    m_clock->manager()->setShowOnTaskbar(true);
    QTRY_VERIFY(!window().states().contains("SKIP_TASKBAR"));
    QTest::qWait(700); // for whatever comes late
    QTRY_VERIFY(!window().states().contains("SKIP_TASKBAR"));
    QVERIFY(!m_config->showOnTaskbar());
    QTRY_COMPARE(window().geometry(), place);
    m_config->setShowOnTaskbar(true);
    m_clock->manager()->setShowOnTaskbar(false);
    QTRY_VERIFY(window().states().contains("SKIP_TASKBAR"));
    QTest::qWait(700);
    QTRY_VERIFY(window().states().contains("SKIP_TASKBAR"));
}

// What was asked for long ago, before a show that has been carried out already.
void TestOwnWindow::isAsSetAfterALateHideAndShow()
{
    QTest::qWait(500); // all is set
    window().withdraw();
    window().map();
    QTRY_VERIFY(window().isMapped());
    expectAsSet(false);
}

void TestOwnWindow::isAsSetOnceALateWindowManagerAnswers_data()
{
    QTest::addColumn<bool>("finallyShown");
    QTest::addColumn<int>("lateMs");

    for (const int lateMs : {0, 600, 1100}) {
        QTest::addRow("to the taskbar, %d ms", lateMs) << true << lateMs;
        QTest::addRow("from the taskbar, %d ms", lateMs) << false << lateMs;
    }
}

void TestOwnWindow::isAsSetOnceALateWindowManagerAnswers()
{
    QFETCH(bool, finallyShown);
    QFETCH(int, lateMs);

    const pid_t windowManager = qEnvironmentVariableIntValue("VESPER_WM_PID");
    QVERIFY(windowManager > 0);
    m_config->setShowOnTaskbar(!finallyShown);
    QTRY_COMPARE(window().states().contains("SKIP_TASKBAR"), finallyShown);
    QTest::qWait(700); // the change is over
    {
        const std::jthread slow = slowDown(windowManager, std::chrono::milliseconds(lateMs));
        m_config->setShowOnTaskbar(finallyShown);
        QTest::qWait(lateMs + 1500);
    }
    QTest::qWait(500); // what it has missed, and whatever is made good
    expectAsSet(finallyShown);
}

void TestOwnWindow::isMinimizedByItsMenu_data()
{
    QTest::addColumn<bool>("showOnTaskbar");

    QTest::newRow("plain") << false;
    QTest::newRow("on the taskbar") << true;
}

void TestOwnWindow::isMinimizedByItsMenu()
{
    QFETCH(bool, showOnTaskbar);

    m_config->setShowOnTaskbar(showOnTaskbar);
    QTRY_COMPARE(window().states().contains("SKIP_TASKBAR"), !showOnTaskbar);
    QTest::qWait(300); // the change is over
    const QRect here = place.translated(333, -111);
    m_window->setGeometry(here);
    QTRY_COMPARE(window().geometry(), here);
    QTRY_COMPARE(m_window->geometry(), here);
    for (int i = 0; i < 10; ++i) {
        m_window->showMinimized();
        QTRY_VERIFY(!window().isMapped());
        QTRY_VERIFY(!window().states().contains("SKIP_TASKBAR"));
        QTest::qWait(200); // nobody brings it back faster
        QVERIFY(m_clock->call("saveConfig"));
        QCOMPARE(m_home.storedGeometry(), QRectF(here));
        window().activate();
        // It leaves the taskbar by one more hide and show: each of these comes, goes and comes.
        const auto isBack = [&] {
            return window().isMapped() && window().geometry() == here
                && window().states().contains("SKIP_TASKBAR") == !showOnTaskbar
                && window().states().contains("ABOVE");
        };
        QVERIFY(QTest::qWaitFor(isBack));
        QTest::qWait(300); // for whatever comes late
        QVERIFY(QTest::qWaitFor(isBack));
        QTRY_COMPARE(window().frame(), QMargins());
        QTRY_COMPARE(m_window->geometry(), here);
    }
}

void TestOwnWindow::canBeResizedLater()
{
    const QPoint corner = place.bottomRight() - QPoint(8, 8);
    QVERIFY(!XWindow::under(corner));
    m_config->setResizeEnabled(true);
    QTRY_COMPARE(XWindow::under(corner), window());
    QTest::qWait(500); // the grips are drawn
    XInput::drag({corner, corner + QPoint(40, 40)});
    QTRY_COMPARE(window().geometry(), place.adjusted(0, 0, 40, 40));
    m_config->setResizeEnabled(false);
    QTRY_COMPARE(window().shape() & QRect(0, 0, 240, 240), circle(240));
}

void TestOwnWindow::letsTheMouseThroughLater()
{
    QCOMPARE(XWindow::under(place.center()), window());
    m_config->setIgnoreMouseEvent(true);
    QTRY_COMPARE(XWindow::under(place.center()), XWindow());
    m_config->setIgnoreMouseEvent(false);
    QTRY_COMPARE(XWindow::under(place.center()), window());
    // Also what has grown meanwhile.
    m_config->setIgnoreMouseEvent(true);
    m_window->resize(400, 400);
    QTRY_COMPARE(window().geometry().width(), 400);
    QTRY_COMPARE(m_window->width(), 400); // which the mask goes by, and follows the server's
    QVERIFY(m_clock->call("updateMask"));
    m_config->setIgnoreMouseEvent(false);
    QTRY_COMPARE(XWindow::under(place.topLeft() + QPoint(380, 200)), window());
}

QTEST_MAIN(TestOwnWindow)
#include "tst_ownwindow.moc"
