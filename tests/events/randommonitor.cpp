// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// A monitor that goes and comes back, and whether the clock keeps its place meanwhile.

#include "tests/events/tst_randomevents.h"

#include <QtGui/qguiapplication.h>
#include <QtGui/qscreen.h>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace
{

// Longer than the clock takes to answer a change of the monitors and to correct the answer.
void giveTimeForTheMonitors() { QTest::qWait(2000); }

// The one that stays. It begins at (0, 0).
QRect leftMonitor() { return QGuiApplication::primaryScreen()->geometry(); }

QRect nearestOnLeftMonitor(QRect place)
{
    const QRect left = leftMonitor();
    place.moveTo(std::clamp(place.left(), 0, left.width() - place.width()),
        std::clamp(place.top(), 0, left.height() - place.height()));
    return place;
}

} // namespace

void TestRandomEvents::plugMonitor(bool on)
{
    note(on ? u"monitor comes"_s : u"monitor goes"_s);
    ++m_monitorChanges;
    QVERIFY(DrivenClock::connectMonitor(on));
}

bool TestRandomEvents::belongsOnScreen() const { return screen().intersects(m_wanted); }

bool TestRandomEvents::isHiddenByMonitor() const { return m_keepsPosition && !belongsOnScreen(); }

// A clock that belongs on both monitors needs to be in reach of the hand on the other one.
bool TestRandomEvents::canDoWithoutMonitor() const
{
    const QRect left = leftMonitor();
    return !left.intersects(m_wanted) || canStandOn(left, m_wanted);
}

void TestRandomEvents::followMonitors()
{
    m_place = belongsOnScreen() ? m_wanted : nearestOnLeftMonitor(m_wanted);
}

// Once, or there and back after any time.
void TestRandomEvents::plugAtRandom()
{
    constexpr std::array pausesMs{0, 60, 150, 400, 1100};
    const bool isThere = DrivenClock::isMonitorConnected();
    // Kept elsewhere since before it was to keep its place: only what it sees can hide it.
    const bool isKeptElsewhere = isHiddenByMonitor();
    const bool isBothWays = isThere && !canDoWithoutMonitor();
    const bool goesBack = !isKeptElsewhere && (m_dice->oneIn(3) || isBothWays);
    plugMonitor(!isThere);
    if (!goesBack || QTest::currentTestFailed())
        return;
    QTest::qWait(pausesMs.at(size_t(m_dice->below(int(pausesMs.size())))));
    plugMonitor(isThere);
}

// Where it is of more interest that the monitor goes.
void TestRandomEvents::dragToRightMonitor()
{
    const QRect left = leftMonitor();
    const QRect right = screen().adjusted(left.width(), 0, 0, 0);
    const QSize room = right.size() - m_place.size();
    if (m_checks.fixed || room.isEmpty())
        return;
    const QPoint from = pointOnClock();
    const QPoint corner = m_dice->anyPointOf(QRect(right.topLeft(), room));
    const QPoint to = from + corner - m_place.topLeft();
    note(u"drag "_s + textOf({from, to}));
    placeByUser({corner, m_place.size()});
    pull({from, to});
}

void TestRandomEvents::changeMonitors()
{
    if (DrivenClock::isMonitorConnected() && m_dice->oneIn(2))
        dragToRightMonitor();
    plugAtRandom();
    if (QTest::currentTestFailed())
        return;
    if (isHiddenByMonitor())
        return bringBack();
    followMonitors();
    giveTimeForTheMonitors();
}

// To be called for a minimised clock, which stays so.
void TestRandomEvents::changeMonitorsUnseen()
{
    plugAtRandom();
    if (QTest::currentTestFailed())
        return;
    giveTimeForTheMonitors();
    QVERIFY(!m_clock->isSeen());
    if (isHiddenByMonitor()) {
        plugMonitor(true);
        if (QTest::currentTestFailed())
            return;
        giveTimeForTheMonitors();
        QVERIFY(!m_clock->isSeen());
    }
    followMonitors();
}

// By what a user has for a clock that is hidden because its monitor is away.
void TestRandomEvents::bringBack()
{
    QTRY_VERIFY(!m_clock->isSeen());
    giveTimeForTheMonitors();
    QVERIFY(!m_clock->isSeen());
    m_settingsTime = m_clock->settingsTime();
    switch (m_dice->below(4)) {
    case 0:
        plugMonitor(true);
        break;
    case 1:
        centerFromTray();
        break;
    case 2:
        note(u"Settings from the tray"_s);
        QVERIFY(m_clock->chooseInTray(u"Settings..."_s));
        pressKeepPosition();
        break;
    default:
        note(u"Quit from the tray"_s);
        QVERIFY(m_clock->chooseInTray(u"Quit"_s));
        quitAndStart();
    }
    if (QTest::currentTestFailed())
        return;
    followMonitors();
    QTRY_VERIFY(m_clock->isSeen());
    giveTimeForTheMonitors();
}

void TestRandomEvents::centerFromTray()
{
    note(u"Center from the tray"_s);
    const QRect left = leftMonitor();
    Hands::moveTo(m_dice->anyPointOf(left));
    QVERIFY(m_clock->chooseInTray(u"Center at This Monitor"_s));
    QRect place = m_wanted;
    place.moveCenter(left.center());
    placeByUser(place);
    readSettings();
}

void TestRandomEvents::switchKeepPosition()
{
    openMenu();
    if (QTest::currentTestFailed())
        return;
    choose(Settings);
    if (!QTest::currentTestFailed())
        pressKeepPosition();
}

// In the settings, which have been asked for already.
void TestRandomEvents::pressKeepPosition()
{
    note(m_keepsPosition ? u"Keep Position off"_s : u"Keep Position on"_s);
    QTRY_COMPARE(m_clock->dialogs(), 1);
    QVERIFY(m_clock->pressControl(u"Maintain Position even when the Monitor is Disconnected"_s));
    m_keepsPosition = !m_keepsPosition;
    closeDialog(false);
    if (!QTest::currentTestFailed())
        readSettings();
}
