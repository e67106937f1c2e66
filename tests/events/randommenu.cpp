// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// What the hand does with the menu and the windows that it opens.

#include "tests/events/menurows.h"
#include "tests/events/tst_randomevents.h"

#include <QtCore/qdebug.h>
#include <QtCore/qjsondocument.h>
#include <QtGui/qcursor.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qscreen.h>

#include <cstdlib>

using namespace Qt::StringLiterals;
using Hands::Key;

// Where it belongs on the taskbar or comes from it, the clock leaves the screen for a moment and
// comes back; the hand takes longer to come back to it. Without its monitor it could leave its
// place later.
void TestRandomEvents::giveTimeForTheTaskbar() const
{
    QTest::qWait(m_place == m_wanted ? 500 : 2000);
}

void TestRandomEvents::openMenu()
{
    const QPoint at = pointOnClock();
    m_firstRowActive = m_dice->oneIn(3);
    note((m_firstRowActive ? u"click and menu key "_s : u"menu "_s) + textOf({at}));
    if (m_firstRowActive)
        clickForKeyboard(at);
    const auto ask = [this, at] {
        if (m_firstRowActive)
            Hands::type(Key::Menu);
        else
            Hands::click(at, Hands::Button::Right);
    };
    ask();
    if (!QTest::qWaitFor([this] { return m_clock->menus().size() == 1; }) && mayRepeat())
        ask();
    QTRY_COMPARE(m_clock->menus().size(), 1);
    readMenu();
}

void TestRandomEvents::readMenu()
{
    QList<bool> expected(rowCount - (m_checks.taskbar ? 0 : 1));
    expected[Resize] = m_checks.resize;
    expected[Fixed] = m_checks.fixed;
    expected[Topmost] = m_checks.topmost;
    expected[ShowOnTaskbar] = m_checks.taskbar;
    const auto checks = [this] {
        QList<bool> result;
        for (const MenuRow &row : menuRows(m_clock->menuPicture()))
            result.append(row.isChecked);
        return result;
    };
    QTRY_COMPARE(checks(), expected); // painted a moment after it has come
}

// Of the menu that was opened last, with the mouse or with the arrow keys and \a key. Returns
// whether it was by keys.
bool TestRandomEvents::takeRow(int index, const QString &name, Key key)
{
    const bool byKeys = m_dice->oneIn(2);
    note(name + (byKeys ? u" by keys"_s : u" by mouse"_s));
    if (byKeys) {
        for (int i = m_firstRowActive ? 1 : 0; i <= index; ++i)
            Hands::type(Key::Down);
        Hands::type(key);
    } else {
        constexpr int farPx = 20;
        const QRect place = menuRows(m_clock->menuPicture()).value(index).place;
        QPoint at = m_clock->menus().last().topLeft() + place.center();
        // A click where the pointer lay when the menu opened only closes it.
        if ((at - QCursor::pos()).manhattanLength() < farPx)
            at.rx() -= 2 * farPx;
        Hands::click(at);
    }
    return byKeys;
}

void TestRandomEvents::choose(Row row)
{
    const int index = row - (row > Minimize && !m_checks.taskbar ? 1 : 0);
    m_settingsTime = m_clock->settingsTime();
    const bool byKeys
        = takeRow(index, QDebug::toString(row), row == MoveTo ? Key::Right : Key::Return);
    if (row == MoveTo) {
        QTRY_COMPARE(m_clock->menus().size(), 2);
        m_firstRowActive = byKeys;
    } else {
        QTRY_VERIFY(m_clock->menus().isEmpty());
    }
}

void TestRandomEvents::chooseInMenu()
{
    openMenu();
    if (QTest::currentTestFailed())
        return;
    Row row = Row(m_dice->below(rowCount));
    if (row == Minimize || (row == Quit && !m_dice->oneIn(4)))
        row = MoveTo;
    choose(row);
    if (QTest::currentTestFailed())
        return;
    switch (row) {
    case Resize:
        m_checks.resize = !m_checks.resize;
        break;
    case Fixed:
        m_checks.fixed = !m_checks.fixed;
        break;
    case Topmost:
        m_checks.topmost = !m_checks.topmost;
        break;
    case ShowOnTaskbar:
        m_checks.taskbar = !m_checks.taskbar;
        giveTimeForTheTaskbar();
        allowForFrame();
        break;
    case MoveTo:
        chooseInMoveMenu();
        break;
    case Settings:
        closeDialog(false);
        if (!QTest::currentTestFailed())
            readSettings();
        break;
    case About:
        closeDialog(m_dice->oneIn(2));
        break;
    default:
        quitAndStart();
    }
}

// A clock on the taskbar may have a frame under Wine, which the window manager keeps on the screen
// together with it.
void TestRandomEvents::allowForFrame()
{
    constexpr int framePx = 4;
    const bool isAtTheEdge
        = !screen().adjusted(framePx, framePx, -framePx, -framePx).contains(m_place);
    const QPoint off = m_clock->geometry().topLeft() - m_place.topLeft();
    if (DrivenClock::mayHaveFrame() && isAtTheEdge && std::abs(off.x()) <= framePx
        && std::abs(off.y()) <= framePx)
        placeByUser(m_place.translated(off));
}

void TestRandomEvents::chooseInMoveMenu()
{
    const auto rowsOfMenu = [this] { return menuRows(m_clock->menuPicture()); };
    QTRY_COMPARE(rowsOfMenu().size(), moveRowCount);
    const auto row = MoveRow(m_dice->below(moveRowCount));
    takeRow(row, QDebug::toString(row), Key::Return);
    QTRY_VERIFY(m_clock->menus().isEmpty());
    const QList<QRect> places = placesAfterMove(row);
    if (places.size() > 1)
        QTest::qWait(2000); // it may come by the one place on its way to the other
    if (QTest::qWaitFor([&] { return places.contains(m_clock->geometry()); }))
        placeByUser(m_clock->geometry());
    else
        placeByUser(places.first());
    QCOMPARE(m_clock->geometry(), m_place);
    QVERIFY(screen().contains(m_clock->geometry()));
    readSettings();
}

// Of the two monitors that it lies on, the window's is still the one that stayed when the other has
// come back without the clock being moved.
QList<QRect> TestRandomEvents::placesAfterMove(MoveRow row) const
{
    const bool isAtRight = row == TopRight || row == BottomRight;
    const bool isAtBottom = row == BottomRight || row == BottomLeft;
    QRect place = m_place;
    if (row == Center) {
        place.moveCenter(monitorAt(QCursor::pos()).center());
        return {place};
    }
    QList<QRect> places;
    const QList<QScreen *> screens = QGuiApplication::screens();
    for (const QScreen *screen : screens) {
        const QRect monitor = screen->geometry();
        if (!monitor.intersects(m_place))
            continue;
        // One pixel short of the right edge and of the bottom edge.
        place.moveTopLeft({isAtRight ? monitor.right() - place.width() : monitor.left(),
            isAtBottom ? monitor.bottom() - place.height() : monitor.top()});
        places.append(place);
    }
    return places;
}

void TestRandomEvents::closeDialog(bool byKey)
{
    QTRY_COMPARE(m_clock->dialogs(), 1);
    QTRY_VERIFY(m_clock->dialogHasKeyboard());
    if (byKey)
        Hands::type(Key::Escape);
    else
        m_clock->closeDialogs();
    QTRY_COMPARE(m_clock->dialogs(), 0);
    DrivenClock::settleFocus();
}

void TestRandomEvents::quitAndStart()
{
    QCOMPARE(m_clock->waitForExit(), 0);
    QCOMPARE(complaints(), QByteArray());
    readSettings();
    m_checks.taskbar = false;
    // What keeps its place is not shown where nobody sees it.
    if (isHiddenByMonitor()) {
        plugMonitor(true);
        followMonitors();
    }
    QVERIFY(m_clock->start());
}

// After something that saves them.
void TestRandomEvents::readSettings()
{
    const auto isSaved = [this] {
        if (m_clock->settingsTime() == m_settingsTime)
            return false;
        const QJsonObject saved = m_clock->settings();
        const QJsonObject geometry = saved[u"Geometry"_s].toObject();
        return saved[u"ResizeEnabled"_s] == m_checks.resize && saved[u"Fixed"_s] == m_checks.fixed
            && saved[u"Topmost"_s] == m_checks.topmost
            && saved[u"KeepPositionWhenMonitorDetatched"_s] == m_keepsPosition
            && geometry[u"Left"_s] == m_wanted.left() && geometry[u"Top"_s] == m_wanted.top()
            && geometry[u"Width"_s] == m_wanted.width()
            && geometry[u"Height"_s] == m_wanted.height();
    };
    if (!QTest::qWaitFor(isSaved))
        QFAIL(QJsonDocument(m_clock->settings()).toJson().constData());
}

// By Escape, or by a click elsewhere, which only closes the menu.
void TestRandomEvents::leaveMenu()
{
    openMenu();
    if (QTest::currentTestFailed())
        return;
    const bool byKey = m_dice->oneIn(2);
    note(byKey ? u"Escape"_s : u"click beside the menu"_s);
    if (byKey) {
        Hands::type(Key::Escape);
    } else {
        const QRect menu = m_clock->menus().first();
        QPoint at;
        do {
            at = pointElsewhere();
        } while (menu.contains(at));
        Hands::click(at);
    }
    QTRY_VERIFY(m_clock->menus().isEmpty());
}

void TestRandomEvents::minimizeAndRestore()
{
    openMenu();
    if (QTest::currentTestFailed())
        return;
    if (!m_checks.taskbar) {
        choose(ShowOnTaskbar);
        m_checks.taskbar = true;
        giveTimeForTheTaskbar();
        allowForFrame();
        return;
    }
    choose(Minimize);
    QTRY_VERIFY(!m_clock->isSeen());
    if (m_dice->oneIn(2))
        clickElsewhere();
    const bool changesMonitors = DrivenClock::hasTwoMonitors() && m_dice->oneIn(4);
    if (changesMonitors)
        changeMonitorsUnseen();
    if (QTest::currentTestFailed())
        return;
    note(u"restore"_s);
    m_clock->restore();
    // Not QTRY_VERIFY, which looks once more: it may be on its way to the taskbar's style by then.
    QVERIFY(QTest::qWaitFor([this] { return m_clock->isSeen(); }));
    giveTimeForTheTaskbar();
    allowForFrame();
}
