// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The running clock when its monitor goes and comes back, with KeepPositionWhenMonitorDetatched
// off. There is only one screen here, so the test moves the clock off it, as Windows or another
// program would, and posts WM_DISPLAYCHANGE.

#include "tests/windows/runningclock.h"
#include "tests/windows/windowsinput.h"

#include <QtCore/qdir.h>
#include <QtTest/qtest.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace
{

constexpr QRect place(420, 310, 240, 240);
constexpr QPoint offScreen(-4000, -3000);
constexpr QPoint nearest(0, 0); // on the screen
constexpr int settleMs = 500; // moves that are queued, and the first frame
constexpr int rescueMs = 1500; // a second, and the answers
constexpr int rescueLimitMs = 5'000; // on a machine that has more to do

} // namespace

class TestLostMonitor : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void isRescued_data();
    void isRescued();
    void isRescuedAfterItWasRestored();
    void staysWhenItsMonitorIsBack();
    void staysWhereTheUserHasDraggedIt_data();
    void staysWhereTheUserHasDraggedIt();
    void isNotTheUsersMove_data();
    void isNotTheUsersMove();

private:
    void start(QPoint stored, QPoint shown);
    void dragTo(QPoint topLeft) const;
    void loseMonitor() const;
    void changeDisplay() const;
    void endAndCompareStored(QPoint expected);

    std::unique_ptr<RunningClock> m_clock;
};

void TestLostMonitor::init()
{
    QTest::failOnWarning();
    QVERIFY(QDir(Settings::makerFolder()).removeRecursively());
}

void TestLostMonitor::cleanup()
{
    m_clock.reset();
    QDir(Settings::makerFolder()).removeRecursively();
}

void TestLostMonitor::start(QPoint stored, QPoint shown)
{
    QVERIFY(Settings::write(Settings::geometry(stored.x(), stored.y(), place.width(),
        place.height(), {{u"KeepPositionWhenMonitorDetatched"_s, false}})));
    m_clock = std::make_unique<RunningClock>();
    QVERIFY(m_clock->waitForWindow());
    QTRY_COMPARE(m_clock->geometry(), QRect(shown, place.size()));
    QTRY_VERIFY(m_clock->mask());
    QTest::qWait(settleMs);
    // So that what is stored at the end was also written then.
    QVERIFY(QDir(Settings::makerFolder()).removeRecursively());
}

void TestLostMonitor::dragTo(QPoint topLeft) const
{
    const QRect from = m_clock->geometry();
    WindowsInput::drag(from.center(), from.center() + topLeft - from.topLeft());
    QTRY_COMPARE(m_clock->geometry(), QRect(topLeft, place.size()));
    QTRY_VERIFY(m_clock->mask()); // the button is released
}

// Takes the mask away and posts the message. The clock sets its mask again once it has handled it.
void TestLostMonitor::changeDisplay() const
{
    SetWindowRgn(m_clock->window(), nullptr, FALSE);
    m_clock->post(WM_DISPLAYCHANGE);
    QTRY_VERIFY(m_clock->mask());
}

// The first message arrives before Windows has moved the clock, the second one after that.
void TestLostMonitor::loseMonitor() const
{
    changeDisplay();
    QTest::qWait(rescueMs); // only the second one is to bring it back
    m_clock->moveTo(offScreen);
    QTRY_COMPARE(m_clock->geometry().topLeft(), offScreen);
    changeDisplay();
}

void TestLostMonitor::endAndCompareStored(QPoint expected)
{
    m_clock->post(WM_CLOSE);
    QCOMPARE(m_clock->waitForExit(), 0);
    QCOMPARE(Settings::storedGeometry(), QRectF(QRect(expected, place.size())));
}

void TestLostMonitor::isRescued_data()
{
    QTest::addColumn<QPoint>("stored");
    QTest::addColumn<QPoint>("shown");

    QTest::newRow("its place is on a screen") << place.topLeft() << place.topLeft();
    QTest::newRow("its place is on none") << offScreen << nearest;
}

void TestLostMonitor::isRescued()
{
    QFETCH(QPoint, stored);
    QFETCH(QPoint, shown);

    start(stored, shown);
    loseMonitor();
    QTRY_COMPARE_WITH_TIMEOUT(m_clock->geometry(), QRect(shown, place.size()), rescueLimitMs);
    QTest::qWait(rescueMs);
    QCOMPARE(m_clock->geometry(), QRect(shown, place.size()));
    QVERIFY(m_clock->isVisible());
    endAndCompareStored(stored);
}

// The system puts the clock on a monitor that is there, and the next change restores it to where
// there is none.
void TestLostMonitor::isRescuedAfterItWasRestored()
{
    start(offScreen, nearest);
    loseMonitor();
    QTRY_COMPARE_WITH_TIMEOUT(m_clock->geometry(), QRect(nearest, place.size()), rescueLimitMs);
    QTest::qWait(rescueMs);
    m_clock->moveTo({300, 200});
    changeDisplay();
    QTRY_COMPARE_WITH_TIMEOUT(m_clock->geometry(), QRect(nearest, place.size()), rescueLimitMs);
    endAndCompareStored(offScreen);
}

void TestLostMonitor::staysWhenItsMonitorIsBack()
{
    start(place.topLeft(), place.topLeft());
    loseMonitor();
    QTRY_COMPARE_WITH_TIMEOUT(m_clock->geometry(), place, rescueLimitMs);
    QTest::qWait(rescueMs);
    changeDisplay();
    QTest::qWait(rescueMs);
    QCOMPARE(m_clock->geometry(), place);
    endAndCompareStored(place.topLeft());
}

void TestLostMonitor::staysWhereTheUserHasDraggedIt_data() { isRescued_data(); }

void TestLostMonitor::staysWhereTheUserHasDraggedIt()
{
    QFETCH(QPoint, stored);
    QFETCH(QPoint, shown);

    start(stored, shown);
    loseMonitor();
    QTRY_COMPARE_WITH_TIMEOUT(m_clock->geometry(), QRect(shown, place.size()), rescueLimitMs);
    QTest::qWait(rescueMs);
    const QPoint dragged(97, 83);
    dragTo(dragged);
    changeDisplay();
    QTest::qWait(rescueMs);
    QCOMPARE(m_clock->geometry(), QRect(dragged, place.size()));
    endAndCompareStored(dragged);
}

void TestLostMonitor::isNotTheUsersMove_data()
{
    QTest::addColumn<UINT>("flags");

    QTest::newRow("synchronous") << UINT(0);
    QTest::newRow("asynchronous") << UINT(SWP_ASYNCWINDOWPOS);
}

void TestLostMonitor::isNotTheUsersMove()
{
    QFETCH(UINT, flags);

    start(place.topLeft(), place.topLeft());
    const QPoint elsewhere(97, 83);
    m_clock->moveTo(elsewhere, flags);
    QTRY_COMPARE(m_clock->geometry().topLeft(), elsewhere);
    QTest::qWait(rescueMs);
    QCOMPARE(m_clock->geometry().topLeft(), elsewhere); // it stays there
    endAndCompareStored(place.topLeft());
}

QTEST_GUILESS_MAIN(TestLostMonitor)
#include "tst_lostmonitor.moc"
