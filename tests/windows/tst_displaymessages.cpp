// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// What the filter makes of each message: its answer, what it tells, and how it moves a real window.
// From outside, tst_windowmessages sees only what is left of that in the end.

#include "tests/unit/confighome.h"

#include "config/vsconfig.h"
#include "platform/vsnativeeventfilter.h"

#include <QtTest/qsignalspy.h>
#include <QtTest/qtest.h>

#include <atomic>
#include <memory>
#include <thread>
#include <utility>

#include <windows.h>

using namespace Qt::StringLiterals;

namespace
{

constexpr QRect place(420, 310, 240, 240);
constexpr QPoint offScreen(-4000, -3000);
constexpr qintptr untouched = 99;

HWND handle(const QWindow &window) { return reinterpret_cast<HWND>(window.winId()); }

QPoint placeOf(const QWindow &window)
{
    RECT rect{};
    GetWindowRect(handle(window), &rect);
    return {rect.left, rect.top};
}

// Notes where a window goes from its place, message by message.
class MoveLog : public QAbstractNativeEventFilter
{
public:
    explicit MoveLog(const QWindow &window)
        : m_window(handle(window))
        , m_last(placeOf(window))
    {
        qApp->installNativeEventFilter(this);
    }
    Q_DISABLE_COPY_MOVE(MoveLog)
    ~MoveLog() override { qApp->removeNativeEventFilter(this); }

    bool nativeEventFilter(
        const QByteArray &, void *message, [[maybe_unused]] qintptr *result) override
    {
        const auto *msg = static_cast<const MSG *>(message);
        if (msg->hwnd == m_window && msg->message == WM_WINDOWPOSCHANGED) {
            const auto *changed = reinterpret_cast<const WINDOWPOS *>(msg->lParam);
            const QPoint place(changed->x, changed->y);
            if (!(changed->flags & SWP_NOMOVE) && place != std::exchange(m_last, place))
                places += place;
        }
        return false;
    }

    /// The X server below Wine may tell of the same moves once more, a little later.
    QList<QPoint> firstTwo() const { return places.mid(0, 2); }

    QList<QPoint> places;

private:
    HWND m_window;
    QPoint m_last;
};

} // namespace

class TestDisplayMessages : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void nudgesAWindowWithAMonitor();
    void nudgesTheWindowThatWasTold();
    void lostAndNotKeepingIsLeftToWindows();
    void comesBackWhereItWas();
    void isRescuedAfterItWasRestored();
    void staysWhereTheUserHasMovedIt();
    void mayBeTakenAwayBeforeItComesBack();
    void dpiIsKeptFromTheClockAlone();
    void endOfSessionIsSavedAndPassed();
    void systemCommands_data();
    void systemCommands();

private:
    /// Hands a message for \a window to the filter. What it answers, or untouched if it passes.
    qintptr told(const QWindow &window, UINT message, WPARAM wParam = 0);
    static bool isVisible(const QWindow &window) { return IsWindowVisible(handle(window)); }
    static void moveTo(const QWindow &window, QPoint to);
    static void moveFromOutside(const QWindow &window, QPoint to);

    ConfigHome m_home;
    std::unique_ptr<VsConfig> m_config;
    std::unique_ptr<QWindow> m_clock;
    std::unique_ptr<VsNativeEventFilter> m_filter;
    std::unique_ptr<QSignalSpy> m_masks;
};

void TestDisplayMessages::init()
{
    QTest::failOnWarning();
    m_config = std::make_unique<VsConfig>();
    m_clock = std::make_unique<QWindow>();
    m_clock->setFlags(Qt::FramelessWindowHint | Qt::CustomizeWindowHint);
    m_clock->setGeometry(place);
    m_clock->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_clock.get()));
    m_filter = std::make_unique<VsNativeEventFilter>();
    m_filter->setConfig(m_config.get());
    m_filter->setMainWindowId(m_clock->winId());
    m_filter->setMainWindow(m_clock.get());
    m_masks = std::make_unique<QSignalSpy>(m_filter.get(), &VsNativeEventFilter::updateMask);
}

void TestDisplayMessages::cleanup()
{
    m_masks.reset();
    m_filter.reset();
    m_clock.reset();
    m_config.reset();
}

qintptr TestDisplayMessages::told(const QWindow &window, UINT message, WPARAM wParam)
{
    MSG msg{};
    msg.hwnd = handle(window);
    msg.message = message;
    msg.wParam = wParam;
    qintptr result = untouched;
    const bool consumed = m_filter->nativeEventFilter("windows_generic_MSG"_ba, &msg, &result);
    return consumed == (result != untouched) ? result : -1;
}

// As Windows does when a monitor goes.
void TestDisplayMessages::moveTo(const QWindow &window, QPoint to)
{
    SetWindowPos(handle(window), nullptr, to.x(), to.y(), 0, 0, SWP_NOSIZE | SWP_NOZORDER);
    QCOMPARE(placeOf(window), to);
    QCoreApplication::processEvents();
}

// As Windows or another program does: not by a call of the window's own thread.
void TestDisplayMessages::moveFromOutside(const QWindow &window, QPoint to)
{
    const HWND hwnd = handle(window);
    std::atomic<bool> isOver = false;
    const std::jthread mover([&] {
        SetWindowPos(hwnd, nullptr, to.x(), to.y(), 0, 0, SWP_NOSIZE | SWP_NOZORDER);
        isOver = true;
    });
    QVERIFY(QTest::qWaitFor([&] { return isOver.load(); }));
    QCOMPARE(placeOf(window), to);
}

void TestDisplayMessages::nudgesAWindowWithAMonitor()
{
    const MoveLog log(*m_clock);
    QCOMPARE(told(*m_clock, WM_DISPLAYCHANGE), 1);
    QVERIFY(log.places.isEmpty()); // once the message has been handled
    QVERIFY(m_masks->isEmpty());
    QTRY_COMPARE(m_masks->size(), 1);
    QCOMPARE(log.firstTwo(), (QList<QPoint>{place.topLeft() + QPoint(1, 1), place.topLeft()}));
}

void TestDisplayMessages::nudgesTheWindowThatWasTold()
{
    QWindow other;
    other.setFlags(m_clock->flags());
    other.setGeometry(100, 90, 200, 200);
    other.show();
    QVERIFY(QTest::qWaitForWindowExposed(&other));
    const MoveLog ofClock(*m_clock);
    const MoveLog log(other);
    QCOMPARE(told(other, WM_DISPLAYCHANGE), 1);
    QTRY_COMPARE(m_masks->size(), 1);
    QCOMPARE(log.firstTwo(), (QList<QPoint>{{101, 91}, {100, 90}}));
    QVERIFY(ofClock.places.isEmpty());
}

void TestDisplayMessages::lostAndNotKeepingIsLeftToWindows()
{
    m_config->setKeepPositionWhenMonitorDetatched(false);
    moveTo(*m_clock, offScreen);
    const MoveLog log(*m_clock);
    QCOMPARE(told(*m_clock, WM_DISPLAYCHANGE), untouched);
    QVERIFY(m_masks->isEmpty());
    QTRY_COMPARE(m_masks->size(), 1);
    QTest::qWait(200); // for whatever comes late
    QCOMPARE(m_masks->size(), 1);
    QVERIFY(log.places.isEmpty());
    QVERIFY(isVisible(*m_clock));
}

void TestDisplayMessages::comesBackWhereItWas()
{
    m_config->setKeepPositionWhenMonitorDetatched(true);
    moveTo(*m_clock, offScreen);
    QCOMPARE(told(*m_clock, WM_DISPLAYCHANGE), 1);
    QVERIFY(!isVisible(*m_clock));
    QTRY_COMPARE(m_masks->size(), 1);
    moveTo(*m_clock, {0, 0});
    QCOMPARE(told(*m_clock, WM_DISPLAYCHANGE), 1);
    QVERIFY(isVisible(*m_clock));
    QTRY_COMPARE(m_masks->size(), 2);
    QCOMPARE(placeOf(*m_clock), offScreen);
    // And once only: the next change is one like any other.
    moveTo(*m_clock, place.topLeft());
    QCOMPARE(told(*m_clock, WM_DISPLAYCHANGE), 1);
    QTRY_COMPARE(m_masks->size(), 3);
    QCOMPARE(placeOf(*m_clock), place.topLeft());
}

// The system puts the clock on a monitor that is there, and the next change puts it back to where
// there is none.
void TestDisplayMessages::isRescuedAfterItWasRestored()
{
    m_config->setKeepPositionWhenMonitorDetatched(false);
    qApp->installNativeEventFilter(m_filter.get());
    moveTo(*m_clock, offScreen);
    QCOMPARE(told(*m_clock, WM_DISPLAYCHANGE), untouched);
    moveFromOutside(*m_clock, {300, 200});
    QCOMPARE(m_filter->placement().wanted().topLeft(), offScreen);
    QCOMPARE(told(*m_clock, WM_DISPLAYCHANGE), 1);
    QTRY_COMPARE(placeOf(*m_clock), offScreen);
    QTRY_COMPARE(placeOf(*m_clock), QPoint(0, 0)); // the nearest place on a screen
    QCOMPARE(m_filter->placement().wanted().topLeft(), offScreen);
}

void TestDisplayMessages::staysWhereTheUserHasMovedIt()
{
    m_config->setKeepPositionWhenMonitorDetatched(false);
    qApp->installNativeEventFilter(m_filter.get());
    moveTo(*m_clock, offScreen);
    QCOMPARE(told(*m_clock, WM_DISPLAYCHANGE), untouched);
    QTRY_COMPARE(placeOf(*m_clock), QPoint(0, 0)); // it is rescued
    m_clock->setPosition(place.topLeft());
    m_filter->onUserMoved();
    QCOMPARE(told(*m_clock, WM_DISPLAYCHANGE), 1);
    QTest::qWait(1500); // the restore and what comes a second after it
    QCOMPARE(placeOf(*m_clock), place.topLeft());
    QCOMPARE(m_filter->placement().wanted(), place);
}

void TestDisplayMessages::mayBeTakenAwayBeforeItComesBack()
{
    m_config->setKeepPositionWhenMonitorDetatched(true);
    moveTo(*m_clock, offScreen);
    QCOMPARE(told(*m_clock, WM_DISPLAYCHANGE), 1);
    QTRY_COMPARE(m_masks->size(), 1);
    moveTo(*m_clock, place.topLeft());
    QCOMPARE(told(*m_clock, WM_DISPLAYCHANGE), 1);
    m_filter->setMainWindow(nullptr);
    QTRY_COMPARE(m_masks->size(), 2);
    QCOMPARE(placeOf(*m_clock), place.topLeft());
}

void TestDisplayMessages::dpiIsKeptFromTheClockAlone()
{
    QWindow other;
    QCOMPARE(told(*m_clock, WM_DPICHANGED, MAKEWPARAM(144, 144)), 1);
    QCOMPARE(told(other, WM_DPICHANGED, MAKEWPARAM(144, 144)), untouched);
}

void TestDisplayMessages::endOfSessionIsSavedAndPassed()
{
    QSignalSpy saves(m_filter.get(), &VsNativeEventFilter::requestToSaveConfig);
    QCOMPARE(told(*m_clock, WM_QUERYENDSESSION), untouched);
    QCOMPARE(saves.size(), 1);
}

void TestDisplayMessages::systemCommands_data()
{
    QTest::addColumn<WPARAM>("command");
    QTest::addColumn<qsizetype>("notices");
    QTest::newRow("minimise") << WPARAM(SC_MINIMIZE) << qsizetype(1);
    QTest::newRow("restore") << WPARAM(SC_RESTORE) << qsizetype(0);
    QTest::newRow("maximise") << WPARAM(SC_MAXIMIZE) << qsizetype(0);
    QTest::newRow("move") << WPARAM(SC_MOVE) << qsizetype(0);
    QTest::newRow("move, by the mouse") << WPARAM(SC_MOVE | HTCAPTION) << qsizetype(0);
    QTest::newRow("close") << WPARAM(SC_CLOSE) << qsizetype(0);
}

void TestDisplayMessages::systemCommands()
{
    QFETCH(const WPARAM, command);
    QFETCH(const qsizetype, notices);
    QSignalSpy minimize(m_filter.get(), &VsNativeEventFilter::aboutToMinimize);
    QCOMPARE(told(*m_clock, WM_SYSCOMMAND, command), untouched);
    QCOMPARE(minimize.size(), notices);
}

QTEST_MAIN(TestDisplayMessages)
#include "tst_displaymessages.moc"
