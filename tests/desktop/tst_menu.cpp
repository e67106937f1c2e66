// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The clock's menu and the About dialog, as a person at the screen has them.

#include "tests/desktop/clockmenu.h"
#include "tests/desktop/runningclock.h"
#include "tests/desktop/xinput.h"

#include <QtTest/qtest.h>

using namespace Qt::StringLiterals;
using namespace ClockMenu;

namespace
{

constexpr QRect place(860, 440, 200, 200);

} // namespace

class TestMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void opensAtThePointer();
    void opensByKey_data();
    void opensByKey();
    void escapeClosesIt();
    void isRoundAfterTheMenu();
    void staysAboveTheClock();
    void settings_data();
    void settings();
    void topmostComesAndGoes();
    void movesTheClock_data();
    void movesTheClock();
    void minimizes();
    void quits();
    void aboutBelongsToTheClock();
    void aboutIsAboveATopmostClock();
    void aboutShowsTheLicences();

private:
    void start(const QJsonObject &settings = {});
    bool openMenu();
    bool choose(int item);
    XWindow dialog() const;
    QJsonObject settingsAfterwards();

    std::unique_ptr<ClockHome> m_home;
    std::unique_ptr<RunningClock> m_clock;
};

void TestMenu::init()
{
    QTest::failOnWarning();
    m_home = std::make_unique<ClockHome>();
}

void TestMenu::cleanup()
{
    m_clock.reset();
    m_home.reset();
}

void TestMenu::start(const QJsonObject &settings)
{
    QVERIFY(m_home->writeSettings(settingsAt(place, settings)));
    m_clock = std::make_unique<RunningClock>(*m_home);
    QVERIFY(m_clock->waitForWindow());
}

bool TestMenu::openMenu() { return ClockMenu::open(place.center()); }

bool TestMenu::choose(int item) { return ClockMenu::choose(place.center(), item); }

XWindow TestMenu::dialog() const
{
    const QList<XWindow> windows = XWindow::allOfProcess(m_clock->pid());
    for (const XWindow window : windows) {
        if (window != m_clock->window())
            return window;
    }
    return {};
}

QJsonObject TestMenu::settingsAfterwards()
{
    if (!choose(Quit) || m_clock->waitForExit() != 0)
        return {};
    return m_home->settings();
}

void TestMenu::opensAtThePointer()
{
    start();
    QVERIFY(openMenu());
    QCOMPARE(XWindow::popups().first().geometry().topLeft(), place.center());
}

void TestMenu::opensByKey_data()
{
    QTest::addColumn<bool>("menuKey");
    QTest::newRow("menu key") << true;
    QTest::newRow("Shift+F10") << false;
}

void TestMenu::opensByKey()
{
    QFETCH(bool, menuKey);
    start();
    XInput::click(place.center());
    QTRY_COMPARE(XWindow::active(), m_clock->window());
    if (menuKey) {
        XInput::type(XInput::MenuKey);
    } else {
        const XInput::HeldKey shift(XInput::ShiftKey);
        XInput::type(XInput::F10Key);
    }
    QTRY_COMPARE(XWindow::popups().size(), 1);
    XInput::type(XInput::DownKey); // the first item is chosen already
    XInput::type(XInput::ReturnKey);
    QTRY_VERIFY(XWindow::popups().isEmpty());
    QVERIFY(settingsAfterwards().value(u"Fixed"_s).toBool());
}

void TestMenu::escapeClosesIt()
{
    start();
    QVERIFY(openMenu());
    XInput::type(XInput::EscapeKey);
    QTRY_VERIFY(XWindow::popups().isEmpty());
    QVERIFY(m_clock->isRunning());
}

// A press takes the mask away, and its release goes to the menu that has opened meanwhile.
void TestMenu::isRoundAfterTheMenu()
{
    start();
    XInput::moveTo(place.center());
    XInput::press();
    QTRY_VERIFY(!m_clock->window().isShaped());
    XInput::press(XInput::RightButton);
    QTRY_COMPARE(XWindow::popups().size(), 1);
    XInput::release(XInput::RightButton);
    XInput::release();
    XInput::type(XInput::EscapeKey);
    QTRY_VERIFY(XWindow::popups().isEmpty());
    QTRY_VERIFY(m_clock->window().isShaped());
}

// The clock puts itself above all other windows twice a second.
void TestMenu::staysAboveTheClock()
{
    start({{u"Topmost"_s, true}, {u"RaisePriorityOfTopmost"_s, true}});
    QVERIFY(openMenu());
    const XWindow menu = XWindow::popups().first();
    const QPoint common = place.center() + QPoint(20, 20);
    QTest::qWait(1500);
    XInput::moveTo(common);
    QCOMPARE(XWindow::popups(), QList<XWindow>{menu});
    QVERIFY(XWindow::under(common) != m_clock->window());
}

void TestMenu::settings_data()
{
    QTest::addColumn<int>("item");
    QTest::addColumn<QString>("setting");
    QTest::newRow("resize") << int(Resize) << u"ResizeEnabled"_s;
    QTest::newRow("fixed") << int(Fixed) << u"Fixed"_s;
    QTest::newRow("topmost") << int(Topmost) << u"Topmost"_s;
}

void TestMenu::settings()
{
    QFETCH(int, item);
    QFETCH(QString, setting);
    start({{setting, true}});
    QVERIFY(choose(item));
    QTRY_VERIFY(XWindow::popups().isEmpty());
    QCOMPARE(settingsAfterwards().value(setting), QJsonValue(false));
}

void TestMenu::topmostComesAndGoes()
{
    start({{u"Topmost"_s, true}});
    QVERIFY(m_clock->window().states().contains("ABOVE"));
    QVERIFY(choose(Topmost));
    QTRY_VERIFY(!m_clock->window().states().contains("ABOVE"));
    QVERIFY(choose(Topmost));
    QTRY_VERIFY(m_clock->window().states().contains("ABOVE"));
}

void TestMenu::movesTheClock_data()
{
    QTest::addColumn<int>("item");
    QTest::addColumn<QPoint>("topLeft");
    // On a screen of 1920 x 1080, one pixel from the right and the bottom edge.
    QTest::newRow("top right") << 1 << QPoint(1719, 0);
    QTest::newRow("top left") << 2 << QPoint(0, 0);
    QTest::newRow("bottom right") << 3 << QPoint(1719, 879);
    QTest::newRow("bottom left") << 4 << QPoint(0, 879);
    QTest::newRow("centre") << 5 << QPoint(860, 440);
}

void TestMenu::movesTheClock()
{
    QFETCH(int, item);
    QFETCH(QPoint, topLeft);
    start();
    if (place.topLeft() == topLeft)
        m_clock->window().setGeometry(place.translated(100, 50));
    XInput::click(place.center() + QPoint(50, 50), XInput::RightButton);
    QTRY_COMPARE(XWindow::popups().size(), 1);
    for (int i = 0; i < MoveTo; ++i)
        XInput::type(XInput::DownKey);
    XInput::type(XInput::RightKey);
    QTRY_COMPARE(XWindow::popups().size(), 2);
    for (int i = 1; i < item; ++i) // the first one is chosen already
        XInput::type(XInput::DownKey);
    XInput::type(XInput::ReturnKey);
    QTRY_COMPARE(m_clock->window().geometry(), QRect(topLeft, place.size()));
    QTRY_COMPARE(m_home->storedGeometry().toRect(), QRect(topLeft, place.size()));
}

void TestMenu::minimizes()
{
    start();
    QVERIFY(choose(ShowOnTaskbar));
    QTRY_VERIFY(!m_clock->window().states().contains("SKIP_TASKBAR"));
    QVERIFY(m_clock->waitForMappedWindow()); // once: it is hidden and shown again meanwhile
    QVERIFY(choose(ShowOnTaskbar + 1)); // where "Minimize" is while there is an entry
    QTRY_VERIFY(!m_clock->window().isMapped());
    m_clock->window().activate();
    QVERIFY(m_clock->waitForMappedWindow());
    QTRY_COMPARE(m_clock->window().geometry(), place);
}

// With the mouse: "Quit" is the last item.
void TestMenu::quits()
{
    start();
    QVERIFY(openMenu());
    const QRect menu = XWindow::popups().first().geometry();
    XInput::click(QPoint(menu.left() + 40, menu.bottom() - 13));
    QCOMPARE(m_clock->waitForExit(), 0);
    QCOMPARE(m_home->storedGeometry().toRect(), place);
}

void TestMenu::aboutBelongsToTheClock()
{
    start({{u"Topmost"_s, false}});
    QVERIFY(choose(About));
    QTRY_VERIFY(dialog().isMapped());
    QTRY_COMPARE(dialog().owner(), m_clock->window());
    QVERIFY(!dialog().states().contains("ABOVE"));
    XInput::type(XInput::EscapeKey);
    QTRY_VERIFY(!dialog());
    QVERIFY(m_clock->isRunning());
}

void TestMenu::aboutIsAboveATopmostClock()
{
    start({{u"Topmost"_s, true}, {u"RaisePriorityOfTopmost"_s, true}});
    QVERIFY(choose(About));
    QTRY_VERIFY(dialog().isMapped());
    QTRY_VERIFY(dialog().states().contains("ABOVE"));
    dialog().setGeometry(place.adjusted(-100, -100, 100, 100));
    QTest::qWait(1500); // the clock has put itself on top three times
    QCOMPARE(XWindow::under(place.center()), dialog());
}

void TestMenu::aboutShowsTheLicences()
{
    start();
    QVERIFY(choose(About));
    QTRY_VERIFY(dialog().isMapped());
    QTRY_COMPARE(XWindow::active(), dialog());
    XInput::type(XInput::SpaceKey); // on "Details...", which has the focus
    QTRY_COMPARE(XWindow::allOfProcess(m_clock->pid()).size(), 3);
}

QTEST_MAIN(TestMenu)
#include "tst_menu.moc"
