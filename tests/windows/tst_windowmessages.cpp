// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The messages of Windows, the mouse and the menu, and what they make of the clock's window.

#include "tests/windows/runningclock.h"
#include "tests/windows/windowsinput.h"

#include <QtCore/qdir.h>
#include <QtTest/qtest.h>

#include <shellapi.h>

using namespace Qt::StringLiterals;

namespace
{

constexpr QRect place(420, 310, 240, 240);
constexpr QPoint offScreen(-4000, -3000);
constexpr int settleMs = 500; // moves that are queued, and the first frame
constexpr int about = 7; // in the menu, in the order of the arrow key
constexpr int saveLimitMs = 15'000; // five seconds, on a machine that has more to do

using Minimize = void (*)(HWND);

QRegion circle(int side)
{
    return QRegion(-1, -1, side + 1, side + 1, QRegion::Ellipse) & QRect(0, 0, side, side);
}

void turnWheelWithControl(int notches)
{
    const WindowsInput::HeldKey control(VK_CONTROL);
    WindowsInput::turnWheel(notches);
}

} // namespace

class TestWindowMessages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void displayChangeOnTheScreen();
    void displayChangeOffTheScreen_data();
    void displayChangeOffTheScreen();
    void comesBackWithItsMonitor();
    void keepsItsSizeWhenTheDpiChanges();
    void savesAtTheEndOfTheSession();
    void keepsItsPlaceWhileMinimized_data();
    void keepsItsPlaceWhileMinimized();
    void otherSystemCommandsDoNothing();
    void followsTheMouse();
    void growsWithControlAndWheel();
    void staysWithTheWheelAlone();
    void opensItsMenu();
    void takesItsStylesFromTheMenu();
    void aboutBelongsToTheClock();
    void aboutShowsTheLicences();
    void trayIconOpensOneMenu_data();
    void trayIconOpensOneMenu();

private:
    void dragTo(QPoint topLeft) const;
    void start(const QJsonObject &settings = {});
    void choose(int item);

    std::unique_ptr<RunningClock> m_clock;
};

void TestWindowMessages::init()
{
    QTest::failOnWarning();
    QVERIFY(QDir(Settings::makerFolder()).removeRecursively());
}

void TestWindowMessages::cleanup()
{
    m_clock.reset();
    QDir(Settings::makerFolder()).removeRecursively();
}

void TestWindowMessages::start(const QJsonObject &settings)
{
    QVERIFY(Settings::write(
        Settings::geometry(place.x(), place.y(), place.width(), place.height(), settings)));
    m_clock = std::make_unique<RunningClock>();
    QVERIFY(m_clock->waitForWindow());
    QTRY_COMPARE(m_clock->geometry(), place);
    QTRY_VERIFY(m_clock->mask());
    QTest::qWait(settleMs);
}

// Opens the menu and goes to an item with the arrow key.
void TestWindowMessages::choose(int item)
{
    WindowsInput::click(m_clock->geometry().center(), WindowsInput::Button::Right);
    QTRY_COMPARE(m_clock->otherWindows().size(), 1);
    const HWND menu = m_clock->otherWindows().constFirst();
    for (int i = 0; i < item; ++i)
        WindowsInput::type(VK_DOWN);
    WindowsInput::type(VK_RETURN);
    QTRY_VERIFY(!IsWindowVisible(menu));
}

void TestWindowMessages::displayChangeOnTheScreen()
{
    start();
    SetWindowRgn(m_clock->window(), nullptr, FALSE); // to see that it gets a new one
    QCOMPARE(m_clock->send(WM_DISPLAYCHANGE), 1);
    QTRY_COMPARE(m_clock->mask(), circle(place.width()));
    QTRY_COMPARE(m_clock->geometry(), place);
    QVERIFY(m_clock->isVisible());
}

void TestWindowMessages::displayChangeOffTheScreen_data()
{
    QTest::addColumn<bool>("keepsPosition");
    QTest::addColumn<LRESULT>("answer");

    QTest::newRow("keeps its position") << true << LRESULT(1);
    QTest::newRow("does not") << false << LRESULT(0); // Windows handles it
}

// As the user does: what another program does is not stored.
void TestWindowMessages::dragTo(QPoint topLeft) const
{
    const QRect from = m_clock->geometry();
    WindowsInput::drag(from.center(), from.center() + topLeft - from.topLeft());
}

void TestWindowMessages::displayChangeOffTheScreen()
{
    QFETCH(bool, keepsPosition);
    QFETCH(LRESULT, answer);

    start({{u"KeepPositionWhenMonitorDetatched"_s, keepsPosition}});
    m_clock->moveTo(offScreen);
    QTRY_COMPARE(m_clock->geometry().topLeft(), offScreen);
    QCOMPARE(m_clock->send(WM_DISPLAYCHANGE), answer);
    QTRY_COMPARE(m_clock->isVisible(), !keepsPosition);
}

void TestWindowMessages::comesBackWithItsMonitor()
{
    start({{u"KeepPositionWhenMonitorDetatched"_s, true}});
    m_clock->moveTo(offScreen);
    QTRY_COMPARE(m_clock->geometry().topLeft(), offScreen);
    m_clock->send(WM_DISPLAYCHANGE);
    QTRY_VERIFY(!m_clock->isVisible());
    QTest::qWait(settleMs);
    // As Windows moves it while its monitor is away; the next change then finds one.
    m_clock->moveTo({0, 0});
    QTest::qWait(settleMs);
    m_clock->send(WM_DISPLAYCHANGE);
    QTRY_VERIFY(m_clock->isVisible());
    QTRY_COMPARE(m_clock->geometry(), QRect(offScreen, place.size()));
}

void TestWindowMessages::keepsItsSizeWhenTheDpiChanges()
{
    start();
    QCOMPARE(m_clock->send(WM_DPICHANGED, MAKEWPARAM(192, 192)), 1);
    QTest::qWait(1500); // the clock looks for another resolution every second
    QCOMPARE(m_clock->geometry(), place);
}

void TestWindowMessages::savesAtTheEndOfTheSession()
{
    start();
    const QPoint other(97, 83);
    dragTo(other);
    QTRY_COMPARE(m_clock->geometry().topLeft(), other);
    QCOMPARE(m_clock->send(WM_QUERYENDSESSION), TRUE); // no veto
    QCOMPARE(Settings::storedGeometry(), QRectF(QRect(other, place.size())));
    QVERIFY(m_clock->isVisible());
}

void TestWindowMessages::keepsItsPlaceWhileMinimized_data()
{
    QTest::addColumn<Minimize>("minimize");

    QTest::newRow("by the taskbar")
        << +[](HWND window) { PostMessageW(window, WM_SYSCOMMAND, SC_MINIMIZE, 0); };
    QTest::newRow("by another program")
        << +[](HWND window) { SendMessageW(window, WM_SYSCOMMAND, SC_MINIMIZE, 0); };
    QTest::newRow("by the key for the desktop")
        << +[](HWND window) { ShowWindow(window, SW_SHOWMINNOACTIVE); };
}

void TestWindowMessages::keepsItsPlaceWhileMinimized()
{
    QFETCH(Minimize, minimize);

    QVERIFY(Settings::write({}));
    m_clock = std::make_unique<RunningClock>();
    QVERIFY(m_clock->waitForWindow());
    const QRect first(GetSystemMetrics(SM_CXSCREEN) - 24 - 320, 24, 320, 320);
    QTRY_COMPARE(m_clock->geometry(), first);
    QTest::qWait(settleMs); // it takes the mouse
    dragTo(place.topLeft()); // and nothing is stored yet
    const QRect moved(place.topLeft(), QSize(320, 320));
    QTRY_COMPARE(m_clock->geometry(), moved);
    for (int i = 0; i < 3; ++i) {
        minimize(m_clock->window());
        QTRY_VERIFY(IsIconic(m_clock->window()));
        QTest::qWait(200); // its taskbar entry comes
        m_clock->send(WM_QUERYENDSESSION);
        QCOMPARE(Settings::storedGeometry(), QRectF(moved));
        PostMessageW(m_clock->window(), WM_SYSCOMMAND, SC_RESTORE, 0);
        QTRY_VERIFY(!IsIconic(m_clock->window()));
        QTRY_COMPARE(m_clock->geometry(), moved);
        QTRY_COMPARE(m_clock->mask(), circle(moved.width()));
        QTest::qWait(settleMs); // it is hidden and shown to lose its entry again
    }
}

void TestWindowMessages::otherSystemCommandsDoNothing()
{
    start();
    m_clock->send(WM_SYSCOMMAND, SC_RESTORE);
    QTest::qWait(300);
    QCOMPARE(m_clock->geometry(), place);
    QVERIFY(!IsIconic(m_clock->window()));
}

void TestWindowMessages::followsTheMouse()
{
    start();
    const QPoint way(123, -45);
    WindowsInput::moveTo(place.center());
    WindowsInput::press();
    QTRY_VERIFY(!m_clock->mask()); // without it while it is dragged
    WindowsInput::moveTo(place.center() + way / 2);
    WindowsInput::moveTo(place.center() + way);
    QTRY_COMPARE(m_clock->geometry(), place.translated(way));
    WindowsInput::release();
    QTRY_COMPARE(m_clock->mask(), circle(place.width()));
    QTRY_COMPARE_WITH_TIMEOUT(
        Settings::storedGeometry(), QRectF(place.translated(way)), saveLimitMs);
}

void TestWindowMessages::growsWithControlAndWheel()
{
    start();
    WindowsInput::click(place.center()); // Windows gives the wheel to the window that is active
    turnWheelWithControl(1);
    QTRY_COMPARE(m_clock->geometry(), place.adjusted(-6, -6, 6, 6));
    QTRY_COMPARE(m_clock->mask(), circle(place.width() + 12));
    turnWheelWithControl(-1);
    QTRY_COMPARE(m_clock->geometry(), place);
}

void TestWindowMessages::staysWithTheWheelAlone()
{
    start();
    WindowsInput::click(place.center());
    WindowsInput::turnWheel(1);
    QTest::qWait(500);
    QCOMPARE(m_clock->geometry(), place);
}

void TestWindowMessages::opensItsMenu()
{
    start();
    QVERIFY(m_clock->otherWindows().isEmpty());
    WindowsInput::click(place.center(), WindowsInput::Button::Right);
    QTRY_COMPARE(m_clock->otherWindows().size(), 1);
    WindowsInput::type(VK_ESCAPE);
    QTRY_VERIFY(m_clock->otherWindows().isEmpty());
}

void TestWindowMessages::takesItsStylesFromTheMenu()
{
    constexpr LONG_PTR tool = WS_EX_LAYERED | WS_EX_TOOLWINDOW;
    constexpr int topmost = 3;
    constexpr int showOnTaskbar = 4;
    start();
    QTRY_COMPARE(m_clock->styles(), tool | WS_EX_TOPMOST);
    choose(topmost);
    QTRY_COMPARE(m_clock->styles(), tool);
    choose(topmost);
    QTRY_COMPARE(m_clock->styles(), tool | WS_EX_TOPMOST);
    for (int i = 0; i < 2; ++i) {
        choose(showOnTaskbar);
        QTRY_COMPARE(m_clock->styles(), WS_EX_LAYERED | WS_EX_APPWINDOW | WS_EX_TOPMOST);
        choose(showOnTaskbar);
        QTRY_COMPARE(m_clock->styles(), tool | WS_EX_TOPMOST);
    }
    QCOMPARE(m_clock->geometry(), place);
    QCOMPARE(m_clock->mask(), circle(place.width()));
}

void TestWindowMessages::aboutBelongsToTheClock()
{
    start();
    choose(about);
    QTRY_COMPARE(m_clock->otherWindows().size(), 1);
    const HWND dialog = m_clock->otherWindows().constFirst();
    QTRY_COMPARE(GetWindow(dialog, GW_OWNER), m_clock->window());
    QVERIFY(GetWindowLongPtrW(dialog, GWL_EXSTYLE) & WS_EX_TOPMOST); // since the clock is
    WindowsInput::type(VK_ESCAPE);
    QTRY_VERIFY(m_clock->otherWindows().isEmpty());
    QVERIFY(m_clock->isVisible());
}

// From the folder beside the program.
void TestWindowMessages::aboutShowsTheLicences()
{
    start();
    choose(about);
    QTRY_COMPARE(m_clock->otherWindows().size(), 1);
    QTest::qWait(settleMs);
    WindowsInput::type(VK_SPACE); // on "Details...", which has the focus
    QTRY_COMPARE(m_clock->otherWindows().size(), 2);
}

void TestWindowMessages::trayIconOpensOneMenu_data()
{
    // What the notification area tells of a click, in its order.
    QTest::addColumn<QList<UINT>>("told");

    const QList<UINT> left{WM_LBUTTONDOWN, WM_LBUTTONUP, NIN_SELECT};
    QTest::newRow("left") << left;
    QTest::newRow("right") << QList<UINT>{WM_RBUTTONDOWN, WM_RBUTTONUP, WM_CONTEXTMENU};
    QTest::newRow("middle") << QList<UINT>{WM_MBUTTONDOWN, WM_MBUTTONUP};
    QTest::newRow("double") << left + QList<UINT>{WM_LBUTTONDBLCLK, WM_LBUTTONUP, NIN_SELECT};
    QTest::newRow("key") << QList<UINT>{NIN_KEYSELECT};
}

void TestWindowMessages::trayIconOpensOneMenu()
{
    QFETCH(QList<UINT>, told);
    constexpr UINT trayMessage = WM_APP + 101; // Qt's own
    start();
    HWND tray = nullptr;
    QTRY_VERIFY((tray = m_clock->windowOfClass(u"TrayIconMessageWindow")));
    const QPoint pointer(300, 200);
    WindowsInput::moveTo(pointer);
    for (const UINT message : std::as_const(told))
        PostMessageW(tray, trayMessage, MAKEWPARAM(pointer.x(), pointer.y()), LPARAM(message));
    QTRY_COMPARE(m_clock->otherWindows().size(), 1);
    QTest::qWait(settleMs);
    QCOMPARE(m_clock->otherWindows().size(), 1);
    RECT menu = {};
    GetWindowRect(m_clock->otherWindows().constFirst(), &menu);
    QCOMPARE(QPoint(menu.left, menu.top), pointer); // the manager's: the document's has no place
}

QTEST_GUILESS_MAIN(TestWindowMessages)
#include "tst_windowmessages.moc"
