// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Where the clock is after monitors have gone and come, in combination with everything else that
// moves, hides or stores it. There are two monitors side by side, and sometimes a third.

#include "tests/desktop/clockmenu.h"
#include "tests/desktop/monitors.h"
#include "tests/desktop/runningclock.h"
#include "tests/desktop/statusnotifierhost.h"
#include "tests/desktop/xinput.h"

#include <QtGui/qguiapplication.h>
#include <QtGui/qrasterwindow.h>
#include <QtGui/qscreen.h>
#include <QtTest/qtest.h>

#include <algorithm>
#include <csignal>
#include <memory>

using namespace Qt::StringLiterals;

namespace
{

constexpr int limitMs = 10'000;
constexpr int longLimitMs = 30'000; // for states that a busy window manager loses
// Longer than the clock takes to answer a change of the monitors and to correct the answer.
constexpr int calmMs = 2000;
constexpr QRect place(1300, 410, 240, 240); // on the right monitor
constexpr QRect nearestPlace(720, 410, 240, 240); // the same, on the left one alone
constexpr QRect third(1920, 0, 960, 1080);
const QPoint hold(31, -17); // where it is taken, from its centre

// Windows of some other program that is topmost.
class TopmostWindow : public QRasterWindow
{
public:
    explicit TopmostWindow(QRect geometry)
    {
        setFlag(Qt::WindowStaysOnTopHint);
        setGeometry(geometry);
        show();
    }

    XWindow nativeWindow() const { return XWindow(uint32_t(winId())); }
};

} // namespace

class TestPlacement : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();
    void firstClockIsAtTheTopRight();
    void centeredFromTheTrayItStaysInSight();
    void restoredWithoutItsMonitorItIsOnTheNearest();
    void minimizedOnAnotherMonitorItComesHome();
    void isRescuedWhateverTheUserHolds_data();
    void isRescuedWhateverTheUserHolds();
    void startsWithoutItsMonitor_data();
    void startsWithoutItsMonitor();
    void goesToTheMonitorThatComesLate_data();
    void goesToTheMonitorThatComesLate();
    void staysWhereTheUserPutItMeanwhile();
    void appearsWhenItIsNoLongerKept();
    void isRescuedAfterASecondChange_data();
    void isRescuedAfterASecondChange();
    void userAloneDecidesWhereItBelongs_data();
    void userAloneDecidesWhereItBelongs();
    void staysMinimizedWithoutItsMonitor_data();
    void staysMinimizedWithoutItsMonitor();
    void isRestoredToThePixel_data();
    void isRestoredToThePixel();
    void changesTheTaskbarWithoutItsMonitor_data();
    void changesTheTaskbarWithoutItsMonitor();
    void startsDoNotMoveIt();
    void windowManagersMoveIsTheUsers_data();
    void windowManagersMoveIsTheUsers();
    void clocksDoNotFightEachOther();

private:
    void start(QRect geometry = place, bool keepPosition = false, const QJsonObject &others = {});
    /// Ends the clock as the end of the session does, and returns what it has stored.
    QRect stored();
    XWindow window() const { return m_clock->window(); }
    QRect geometry() const { return window().geometry(); }
    /// Where it goes from \a geometry within a while; nothing if it stays there, on the screen.
    QString leaves(QRect geometry) const;
    /// Whether a clock that was minimised comes back to \a geometry and is there after a while. It
    /// leaves the taskbar by one more hide and show, and on a busy machine by another one.
    bool comesBackTo(QRect geometry) const;
    bool isVisibleOnAScreen() const { return window().isMapped() && Monitors::show(geometry()); }
    bool minimize() const;
    /// Whether a clock that was minimised is there again. It leaves the taskbar by one more hide
    /// and show.
    bool isBackAt(QRect expected) const
    {
        return window().isMapped() && window().states().contains("SKIP_TASKBAR")
            && geometry() == expected;
    }
    void dragBy(QPoint way) const;

    std::unique_ptr<ClockHome> m_home;
    std::unique_ptr<RunningClock> m_clock;
};

void TestPlacement::initTestCase() { QVERIFY(Monitors::divide()); }

void TestPlacement::init()
{
    QTest::failOnWarning();
    QVERIFY(!Monitors::has(u"third"_s) || Monitors::remove(u"third"_s));
    QVERIFY(Monitors::has(u"right"_s) || Monitors::addRight());
    XInput::moveTo({20, 1060}); // beside the clock, on the left monitor
    m_home = std::make_unique<ClockHome>();
}

void TestPlacement::cleanup()
{
    m_clock.reset();
    m_home.reset();
}

void TestPlacement::start(QRect geometry, bool keepPosition, const QJsonObject &others)
{
    QJsonObject settings = settingsAt(geometry, others);
    settings.insert(u"KeepPositionWhenMonitorDetatched"_s, keepPosition);
    QVERIFY(m_home->writeSettings(settings));
    m_clock = std::make_unique<RunningClock>(
        *m_home, ClockStart{.environment = {{u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s, u"1"_s}}});
    if (!Monitors::show(geometry)) {
        QVERIFY(m_clock->waitForMappedWindow());
        return;
    }
    QVERIFY(m_clock->waitForWindow());
    QTRY_COMPARE(window().geometry(), geometry);
    QTRY_VERIFY(window().states().contains("SKIP_TASKBAR"));
}

QRect TestPlacement::stored()
{
    m_clock->signal(SIGTERM);
    return m_clock->waitForExit() == 0 ? m_home->storedGeometry().toRect() : QRect();
}

bool TestPlacement::comesBackTo(QRect expected) const
{
    const auto isBack = [&] { return isBackAt(expected); };
    if (!QTest::qWaitFor(isBack, longLimitMs))
        return false;
    QTest::qWait(calmMs);
    return QTest::qWaitFor(isBack, longLimitMs);
}

QString TestPlacement::leaves(QRect expected) const
{
    QRect seen;
    bool isMapped = true;
    const auto hasLeft = [&] {
        seen = geometry();
        isMapped = window().isMapped();
        return !isMapped || seen != expected;
    };
    if (!QTest::qWaitFor(hasLeft, calmMs))
        return {};
    QString text;
    QDebug(&text).nospace() << (isMapped ? "moved to " : "hidden at ") << seen;
    return text;
}

bool TestPlacement::minimize() const
{
    window().minimize();
    // It has a taskbar entry to bring it back with.
    return QTest::qWaitFor(
        [this] { return !window().isMapped() && !window().states().contains("SKIP_TASKBAR"); });
}

void TestPlacement::dragBy(QPoint way) const
{
    const QPoint from = geometry().center() + hold;
    XInput::drag({from, from + way / 2, from + way});
}

void TestPlacement::firstClockIsAtTheTopRight()
{
    constexpr int margin = 24;
    constexpr QSize firstSize(320, 320);
    m_clock = std::make_unique<RunningClock>(*m_home);
    QVERIFY(m_clock->waitForWindow());
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    const QPoint topLeft(
        screen.x() + screen.width() - margin - firstSize.width(), screen.y() + margin);
    QTRY_COMPARE(geometry(), QRect(topLeft, firstSize));
    QCOMPARE(leaves(QRect(topLeft, firstSize)), QString());
    QCOMPARE(stored(), QRect(topLeft, firstSize));
}

void TestPlacement::centeredFromTheTrayItStaysInSight()
{
    const StatusNotifierHost host;
    start(place, true);
    QTRY_COMPARE(host.items().size(), 1);
    QTRY_VERIFY(host.menuTexts().contains(u"Quit"_s));
    QVERIFY(Monitors::removeRight());
    QTRY_VERIFY_WITH_TIMEOUT(!window().isMapped(), limitMs);
    QVERIFY(host.choose(u"Center at This Monitor"_s));
    QRect centered = place;
    centered.moveCenter(Monitors::left.center());
    QTRY_VERIFY_WITH_TIMEOUT(window().isMapped() && geometry() == centered, limitMs);
    QVERIFY(Monitors::add(u"third"_s, third));
    QCOMPARE(leaves(centered), QString());
    QVERIFY(Monitors::remove(u"third"_s));
    QCOMPARE(leaves(centered), QString());
    QCOMPARE(stored(), centered);
}

void TestPlacement::restoredWithoutItsMonitorItIsOnTheNearest()
{
    start();
    QVERIFY(minimize());
    QVERIFY(Monitors::removeRight());
    QTest::qWait(calmMs); // nothing is to bring it back
    QVERIFY(!window().isMapped());
    window().activate();
    QVERIFY(comesBackTo(nearestPlace));
    QCOMPARE(stored(), place);
}

void TestPlacement::minimizedOnAnotherMonitorItComesHome()
{
    start();
    QVERIFY(Monitors::removeRight());
    QTRY_COMPARE_WITH_TIMEOUT(geometry(), nearestPlace, limitMs);
    QTest::qWait(calmMs);
    QVERIFY(minimize());
    QVERIFY(Monitors::addRight());
    QTest::qWait(calmMs); // nothing is to bring it back
    QVERIFY(!window().isMapped());
    window().activate();
    QVERIFY(comesBackTo(place));
    QCOMPARE(stored(), place);
}

void TestPlacement::isRescuedWhateverTheUserHolds_data()
{
    QTest::addColumn<bool>("isKey");

    QTest::newRow("a key, as of a shortcut for the monitors") << true;
    QTest::newRow("a button, elsewhere") << false;
}

void TestPlacement::isRescuedWhateverTheUserHolds()
{
    QFETCH(bool, isKey);

    start();
    if (isKey)
        XInput::hold(XInput::ShiftKey);
    else
        XInput::press();
    QVERIFY(Monitors::removeRight());
    QTRY_COMPARE_WITH_TIMEOUT(geometry(), nearestPlace, limitMs);
    QTest::qWait(calmMs);
    if (isKey)
        XInput::letGo(XInput::ShiftKey);
    else
        XInput::release();
    QVERIFY(Monitors::addRight());
    QTRY_COMPARE_WITH_TIMEOUT(geometry(), place, limitMs);
    QCOMPARE(stored(), place);
}

void TestPlacement::startsWithoutItsMonitor_data()
{
    QTest::addColumn<bool>("keepPosition");

    QTest::newRow("kept") << true;
    QTest::newRow("not kept") << false;
}

void TestPlacement::startsWithoutItsMonitor()
{
    QFETCH(bool, keepPosition);

    QVERIFY(Monitors::removeRight());
    start(place, keepPosition);
    if (!keepPosition)
        QTRY_VERIFY_WITH_TIMEOUT(isVisibleOnAScreen(), limitMs);
    QTest::qWait(calmMs); // whatever moves it has done so
    if (!keepPosition)
        QVERIFY(isVisibleOnAScreen());
    QCOMPARE(stored(), place);

    QVERIFY(Monitors::addRight());
    m_clock = std::make_unique<RunningClock>(*m_home);
    QVERIFY(m_clock->waitForWindow());
    QTRY_COMPARE(geometry(), place);
    QCOMPARE(leaves(place), QString());
    QCOMPARE(stored(), place);
}

void TestPlacement::goesToTheMonitorThatComesLate_data()
{
    QTest::addColumn<bool>("keepPosition");
    QTest::addColumn<int>("afterMs");

    QTest::newRow("kept") << true << 3000;
    QTest::newRow("not kept") << false << 3000;
    QTest::newRow("not kept, much later") << false << 12'000;
}

void TestPlacement::goesToTheMonitorThatComesLate()
{
    QFETCH(bool, keepPosition);
    QFETCH(int, afterMs);

    QVERIFY(Monitors::removeRight());
    start(place, keepPosition);
    if (!keepPosition)
        QTRY_VERIFY_WITH_TIMEOUT(isVisibleOnAScreen(), limitMs);
    QTest::qWait(afterMs); // the monitor takes that long
    QVERIFY(Monitors::addRight());
    QTRY_VERIFY_WITH_TIMEOUT(window().isMapped() && geometry() == place, limitMs);
    QCOMPARE(leaves(place), QString());
    QCOMPARE(stored(), place);
}

void TestPlacement::staysWhereTheUserPutItMeanwhile()
{
    QVERIFY(Monitors::removeRight());
    start();
    QTRY_COMPARE_WITH_TIMEOUT(geometry(), nearestPlace, limitMs);
    QTest::qWait(calmMs);
    QCOMPARE(geometry(), nearestPlace);
    const QPoint way(-300, 120);
    dragBy(way);
    QTRY_COMPARE(geometry(), nearestPlace.translated(way));
    QVERIFY(Monitors::addRight());
    QCOMPARE(leaves(nearestPlace.translated(way)), QString());
    QCOMPARE(stored(), nearestPlace.translated(way));
}

void TestPlacement::appearsWhenItIsNoLongerKept()
{
    const StatusNotifierHost host;
    start(place, true);
    QTRY_COMPARE(host.items().size(), 1);
    QTRY_VERIFY(host.menuTexts().contains(u"Quit"_s));
    QVERIFY(Monitors::removeRight());
    QTRY_VERIFY_WITH_TIMEOUT(!window().isMapped(), limitMs);
    QVERIFY(host.choose(u"Settings..."_s));
    QVERIFY(m_clock->pressControl(u"Maintain Position even when the Monitor is Disconnected"_s));
    QTRY_VERIFY_WITH_TIMEOUT(isVisibleOnAScreen(), 2000);
    QCOMPARE(leaves(geometry()), QString());
    QCOMPARE(stored(), place);
}

void TestPlacement::isRescuedAfterASecondChange_data()
{
    QTest::addColumn<QRect>("moved");

    QTest::newRow("moved onto the other monitor") << QRect(100, 200, 240, 240);
    QTest::newRow("moved off every screen") << QRect(-4000, -3000, 240, 240);
    QTest::newRow("not moved") << QRect();
}

// The window system's moves may come at any time, so another program stands in for it.
void TestPlacement::isRescuedAfterASecondChange()
{
    QFETCH(QRect, moved);

    start();
    QVERIFY(Monitors::removeRight());
    if (!moved.isNull())
        window().setGeometry(moved);
    QTest::qWait(300); // the clock has seen the first change by then
    QVERIFY(Monitors::add(u"third"_s, third));
    QTest::qWait(calmMs);
    QVERIFY2(
        isVisibleOnAScreen(), qPrintable(u"at %1, %2"_s.arg(geometry().x()).arg(geometry().y())));
    QCOMPARE(geometry().size(), place.size());
    QCOMPARE(leaves(geometry()), QString());
    QCOMPARE(stored(), place);
}

void TestPlacement::userAloneDecidesWhereItBelongs_data()
{
    QTest::addColumn<bool>("byUser");

    QTest::newRow("dragged by the user") << true;
    QTest::newRow("moved by another program") << false;
}

void TestPlacement::userAloneDecidesWhereItBelongs()
{
    QFETCH(bool, byUser);

    start();
    QVERIFY(Monitors::removeRight());
    QTRY_COMPARE_WITH_TIMEOUT(geometry(), nearestPlace, limitMs);
    QTest::qWait(calmMs);
    const QPoint way(-300, 120);
    if (byUser)
        dragBy(way);
    else
        window().setGeometry(nearestPlace.translated(way));
    const QRect moved = nearestPlace.translated(way);
    QTRY_COMPARE(geometry(), moved);
    QVERIFY(Monitors::addRight());
    const QRect expected = byUser ? moved : place;
    QTRY_COMPARE_WITH_TIMEOUT(geometry(), expected, limitMs);
    QCOMPARE(leaves(expected), QString());
    QCOMPARE(stored(), expected);
}

void TestPlacement::staysMinimizedWithoutItsMonitor_data()
{
    QTest::addColumn<bool>("keepPosition");

    QTest::newRow("kept") << true;
    QTest::newRow("not kept") << false;
}

void TestPlacement::staysMinimizedWithoutItsMonitor()
{
    QFETCH(bool, keepPosition);

    start(place, keepPosition);
    const auto isMapped = [this] { return window().isMapped(); };
    const int rounds = keepPosition ? 2 : 1;
    for (int i = 0; i < rounds; ++i) {
        QVERIFY(minimize());
        QVERIFY(Monitors::removeRight());
        QVERIFY(!QTest::qWaitFor(isMapped, calmMs));
        QVERIFY(Monitors::addRight());
        QVERIFY(!QTest::qWaitFor(isMapped, calmMs));
        window().activate();
        QVERIFY(comesBackTo(place));
    }
    QCOMPARE(stored(), place);
}

void TestPlacement::isRestoredToThePixel_data()
{
    QTest::addColumn<QRect>("where");

    QTest::newRow("amid the monitor") << place;
    QTest::newRow("in its corner")
        << QRect(QPoint(0, 0), place.size()); // marco moves it from there
}

void TestPlacement::isRestoredToThePixel()
{
    QFETCH(QRect, where);

    start(where);
    const auto isBack = [&] { return window().isMapped() && geometry() == where; };
    for (int i = 0; i < 12; ++i) {
        window().minimize();
        QTRY_VERIFY(!window().isMapped());
        QTest::qWait(50 + i % 4 * 50); // at another moment of what the clock does meanwhile
        window().activate();
        if (!QTest::qWaitFor(isBack, limitMs))
            QCOMPARE(geometry(), where);
        QTest::qWait(200); // for whatever comes late
        QCOMPARE(geometry(), where);
    }
    QCOMPARE(stored(), where);
}

void TestPlacement::changesTheTaskbarWithoutItsMonitor_data()
{
    QTest::addColumn<bool>("keptSince");

    QTest::newRow("not kept") << false;
    QTest::newRow("kept since the monitor has gone") << true;
}

void TestPlacement::changesTheTaskbarWithoutItsMonitor()
{
    QFETCH(bool, keptSince);

    const StatusNotifierHost host;
    start();
    QTRY_COMPARE(host.items().size(), 1);
    QTRY_VERIFY(host.menuTexts().contains(u"Quit"_s));
    QVERIFY(Monitors::removeRight());
    QTRY_COMPARE_WITH_TIMEOUT(geometry(), nearestPlace, limitMs);
    QTest::qWait(calmMs);
    if (keptSince) {
        QVERIFY(host.choose(u"Settings..."_s));
        QVERIFY(
            m_clock->pressControl(u"Maintain Position even when the Monitor is Disconnected"_s));
    }
    for (int i = 0; i < 6; ++i) {
        QVERIFY(ClockMenu::choose(nearestPlace.center(), ClockMenu::ShowOnTaskbar));
        QTRY_COMPARE(window().states().contains("SKIP_TASKBAR"), i % 2 != 0);
        QTest::qWait(calmMs);
        QTRY_VERIFY(window().isMapped());
        QCOMPARE(geometry(), nearestPlace);
    }
    QVERIFY(Monitors::addRight());
    QTRY_COMPARE_WITH_TIMEOUT(geometry(), place, limitMs);
    QCOMPARE(stored(), place);
}

// Under a window manager that puts it elsewhere as well.
void TestPlacement::startsDoNotMoveIt()
{
    QVERIFY(m_home->writeSettings(settingsAt(place)));
    for (int i = 0; i < 3; ++i) {
        m_clock = std::make_unique<RunningClock>(*m_home);
        QVERIFY(m_clock->waitForWindow());
        QTest::qWait(calmMs); // whatever moves it has done so
        QCOMPARE(stored(), place);
    }
}

void TestPlacement::windowManagersMoveIsTheUsers_data()
{
    QTest::addColumn<bool>("keyLater");

    QTest::newRow("key let go later") << true;
    QTest::newRow("key let go at once") << false;
}

// openbox tells a window of such a move when the button is up again, the others at every step.
void TestPlacement::windowManagersMoveIsTheUsers()
{
    QFETCH(bool, keyLater);

    const auto key = qEnvironmentVariable("VESPER_WM") == u"kwin_x11" ? XInput::LeftSuperKey
                                                                      : XInput::LeftAltKey;
    constexpr int handMs = 50;
    start();
    const QPoint from = place.center() + hold;
    const QPoint way(120, 70);
    {
        const XInput::HeldKey held(key);
        QTest::qWait(handMs);
        XInput::moveTo(from);
        XInput::press();
        for (int i = 1; i <= 10; ++i) {
            QTest::qWait(handMs);
            XInput::moveTo(from + way * i / 10);
        }
        QTest::qWait(handMs);
        XInput::release();
        if (keyLater)
            QTest::qWait(4 * handMs);
    }
    QTRY_VERIFY((geometry().topLeft() - place.topLeft() - way).manhattanLength() <= 10);
    const QRect moved = geometry();
    QCOMPARE(leaves(moved), QString());
    QCOMPARE(stored(), moved);
}

void TestPlacement::clocksDoNotFightEachOther()
{
    const QJsonObject highest{{u"Topmost"_s, true}, {u"RaisePriorityOfTopmost"_s, true}};
    start(place, false, highest);
    const ClockHome secondHome;
    QVERIFY(secondHome.writeSettings(settingsAt(place.translated(90, 60), highest)));
    RunningClock second(secondHome);
    QVERIFY(second.waitForWindow());
    QTest::qWait(calmMs);

    const auto clocks = [&] {
        QList<XWindow> windows = XWindow::clients();
        windows.removeIf([&](XWindow each) { return each != window() && each != second.window(); });
        return windows;
    };
    QList<XWindow> last = clocks();
    QCOMPARE(last.size(), 2);
    int changes = 0;
    (void)QTest::qWaitFor(
        [&] {
            changes += clocks() != last;
            last = clocks();
            return false;
        },
        5000);
    QCOMPARE(changes, 0);

    const TopmostWindow rival(place.adjusted(-40, -40, 200, 150));
    for (int i = 0; i < 2; ++i) {
        QTRY_VERIFY(rival.nativeWindow().isMapped());
        rival.nativeWindow().raise();
        QTest::qWait(500); // long enough for a raise that has not been carried out yet
        QTRY_VERIFY(XWindow::clients().first() == rival.nativeWindow());
    }
}

QTEST_MAIN(TestPlacement)
#include "tst_placement.moc"
