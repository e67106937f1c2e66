// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The clock among random mouse, wheel, key and menu events. After each of them it is what the
// events so far have made of it. VESPER_EVENTS is how many there are for a seed, VESPER_SEEDS names
// others than the usual one; a failure tells the seed and the last events.

#include "tests/events/dice.h"
#include "tests/events/drivenclock.h"
#include "tests/events/menurows.h"

#include <QtCore/qdebug.h>
#include <QtCore/qjsondocument.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qregion.h>
#include <QtGui/qscreen.h>
#include <QtTest/qtest.h>

#include <algorithm>
#include <array>
#include <cstdlib>

using namespace Qt::StringLiterals;
using Hands::Key;

namespace
{

constexpr QRect firstPlace(860, 440, 200, 200);
constexpr int smallestSide = 72;
constexpr int largestSide = 900; // of this test: the clock has room on the screen
constexpr int edgePx = 40; // the centre of the clock stays so far from the screen's edge

// What the menu shows with a check mark.
struct Checks {
    bool resize = false;
    bool fixed = false;
    bool topmost = true;
    bool taskbar = false; // never stored
};

QRect screen() { return QGuiApplication::primaryScreen()->geometry(); }

QPoint clampedTo(QRect rectangle, QPoint point)
{
    return {std::clamp(point.x(), rectangle.left(), rectangle.right()),
        std::clamp(point.y(), rectangle.top(), rectangle.bottom())};
}

// Where it belongs on the taskbar or comes from it, the clock leaves the screen for a moment and
// comes back; the hand takes longer to come back to it.
void giveTimeForTheTaskbar() { QTest::qWait(500); }

QString textOf(const QList<QPoint> &points)
{
    QStringList texts;
    for (const QPoint point : points)
        texts.append(u"(%1, %2)"_s.arg(point.x()).arg(point.y()));
    return texts.join(u' ');
}

} // namespace

class TestRandomEvents : public QObject
{
    Q_OBJECT

public:
    // From the top; "Minimize" is there only for a clock on the taskbar.
    enum Row {
        Resize,
        Fixed,
        Topmost,
        ShowOnTaskbar,
        Minimize,
        MoveTo,
        Settings,
        About,
        Quit,
        rowCount
    };
    Q_ENUM(Row)
    enum MoveRow { TopRight, TopLeft, BottomRight, BottomLeft, Center, moveRowCount };
    Q_ENUM(MoveRow)

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }
    void cleanup();
    void isWhatTheEventsHaveMadeOfIt_data();
    void isWhatTheEventsHaveMadeOfIt();

private:
    struct Kind;
    static const QList<Kind> &kinds();
    void happen();
    void note(const QString &event);
    void look();
    QString difference() const;

    // What happens. Each leaves in m_place and m_checks what has to become of the clock.
    void drag();
    void dragWithControl();
    void turnWheel();
    void turnWheelAlone();
    void pullCorner();
    void clickTwice();
    void typeKey();
    void clickElsewhere();
    void chooseInMenu();
    void leaveMenu();
    void minimizeAndRestore();

    QPoint pointOnClock();
    QPoint pointElsewhere();
    bool canStandAt(QRect place) const;
    QByteArray complaints() const;

    // Parts of what happens in the menu.
    void openMenu();
    void readMenu();
    void choose(Row row);
    void chooseInMoveMenu();
    void closeDialog(bool byKey);
    void quitAndStart();
    void readSettings();

    std::unique_ptr<DrivenClock> m_clock;
    std::unique_ptr<Dice> m_dice;
    QStringList m_events;
    QRect m_place;
    Checks m_checks;
    QDateTime m_settingsTime; // before the latest choice in the menu
    bool m_firstRowActive = false; // in a menu that was opened by a key
};

struct TestRandomEvents::Kind {
    int weight;
    void (TestRandomEvents::*happen)();
};

const QList<TestRandomEvents::Kind> &TestRandomEvents::kinds()
{
    static const QList<Kind> all{
        {6, &TestRandomEvents::drag},
        {1, &TestRandomEvents::dragWithControl},
        {6, &TestRandomEvents::turnWheel},
        {1, &TestRandomEvents::turnWheelAlone},
        {6, &TestRandomEvents::pullCorner},
        {2, &TestRandomEvents::clickTwice},
        {3, &TestRandomEvents::typeKey},
        {2, &TestRandomEvents::clickElsewhere},
        {5, &TestRandomEvents::chooseInMenu},
        {2, &TestRandomEvents::leaveMenu},
        {2, &TestRandomEvents::minimizeAndRestore},
    };
    return all;
}

void TestRandomEvents::isWhatTheEventsHaveMadeOfIt_data()
{
    QTest::addColumn<uint>("seed");
    const QStringList seeds = qEnvironmentVariable("VESPER_SEEDS", u"1"_s).split(u',');
    for (const QString &seed : seeds)
        QTest::addRow("seed %s", qPrintable(seed)) << seed.toUInt();
}

void TestRandomEvents::isWhatTheEventsHaveMadeOfIt()
{
    QFETCH(uint, seed);
    const int count = std::max(150, qEnvironmentVariableIntValue("VESPER_EVENTS"));

    m_dice = std::make_unique<Dice>(seed);
    m_place = firstPlace;
    m_checks = {};
    const QJsonObject geometry{{u"Left"_s, m_place.x()}, {u"Top"_s, m_place.y()},
        {u"Width"_s, m_place.width()}, {u"Height"_s, m_place.height()}};
    // No update check: its answer is a matter of the network.
    m_clock = std::make_unique<DrivenClock>(
        QJsonObject{{u"Geometry"_s, geometry}, {u"AutoCheckUpdate"_s, false}});
    QVERIFY(m_clock->start());
    for (int i = 0; i < count && !QTest::currentTestFailed(); ++i) {
        happen();
        if (!QTest::currentTestFailed())
            look();
    }
    QCOMPARE(complaints(), QByteArray());
}

void TestRandomEvents::cleanup()
{
    if (QTest::currentTestFailed()) {
        constexpr int lastCount = 20;
        qInfo().noquote()
            << u"VESPER_SEEDS=%1 VESPER_EVENTS=%2; the last events:\n"_s
                   .arg(QString::fromLatin1(QTest::currentDataTag()).section(u' ', -1))
                   .arg(m_events.size())
            << m_events.last(std::min<qsizetype>(lastCount, m_events.size())).join(u'\n');
    }
    m_events.clear();
    m_clock.reset();
}

void TestRandomEvents::happen()
{
    int sum = 0;
    for (const Kind &kind : kinds())
        sum += kind.weight;
    int left = m_dice->below(sum);
    for (const Kind &kind : kinds()) {
        left -= kind.weight;
        if (left < 0)
            return (this->*kind.happen)();
    }
}

void TestRandomEvents::note(const QString &event)
{
    m_events.append(u"%1. %2"_s.arg(m_events.size() + 1).arg(event));
}

void TestRandomEvents::look()
{
    QString what;
    (void)QTest::qWaitFor([&] {
        what = difference();
        return what.isEmpty();
    });
    QVERIFY2(what.isEmpty(), qPrintable(what));
}

// What is not as the events have made it; nothing where all is.
QString TestRandomEvents::difference() const
{
    if (!m_clock->isRunning())
        return u"has ended"_s;
    if (!m_clock->isSeen())
        return u"is not seen"_s;
    if (const QRect place = m_clock->geometry(); place != m_place)
        return QDebug::toString(place) + u" and not "_s + QDebug::toString(m_place);
    if (m_place.width() != m_place.height() || m_place.width() < smallestSide)
        return u"is no square of a size it may have: "_s + QDebug::toString(m_place);
    if (m_clock->isMasked() == m_checks.resize)
        return u"its mask is wrong"_s;
    if (m_clock->isTopmost() != m_checks.topmost)
        return u"topmost or not is wrong"_s;
    if (m_clock->isOnTaskbar() != m_checks.taskbar)
        return u"on the taskbar or not is wrong"_s;
    if (!m_clock->menus().isEmpty() || m_clock->dialogs() > 0)
        return u"another window is open"_s;
    return {};
}

// Away from the corners, on the part of the clock that is on the screen.
QPoint TestRandomEvents::pointOnClock()
{
    const int off = m_place.width() / 4;
    return m_dice->anyPointOf(m_place.adjusted(off, off, -off, -off) & screen());
}

QPoint TestRandomEvents::pointElsewhere()
{
    QPoint point;
    do {
        point = m_dice->anyPointOf(screen());
    } while (m_place.contains(point));
    return point;
}

// Where a hand still reaches it. What grows beyond the screen's edge is moved back by some window
// managers.
bool TestRandomEvents::canStandAt(QRect place) const
{
    const bool isHanging = !screen().contains(place);
    if (isHanging && (place.width() > m_place.width() || !DrivenClock::canHangOverTheEdge()))
        return false;
    return place.width() <= largestSide
        && screen().adjusted(edgePx, edgePx, -edgePx, -edgePx).contains(place.center());
}

// What the program has written, but for what it says each time that its settings are closed.
QByteArray TestRandomEvents::complaints() const
{
    return m_clock->output().replace("Settings Window Destroyed\n", "");
}

void TestRandomEvents::drag()
{
    QList<QPoint> points{pointOnClock()};
    const QRect before = m_place;
    for (int i = m_dice->between(1, 4); i > 0; --i) {
        const QPoint to = m_dice->anyPointOf(screen());
        const QRect after = before.translated(to - points.first());
        if (!canStandAt(after))
            continue;
        points.append(to);
        if (!m_checks.fixed)
            m_place = after;
    }
    note(u"drag "_s + textOf(points));
    Hands::moveTo(points.first());
    Hands::press();
    for (const QPoint point : points)
        Hands::moveTo(point);
    Hands::release();
}

void TestRandomEvents::dragWithControl()
{
    const QPoint from = pointOnClock();
    const QPoint to = m_dice->anyPointOf(screen());
    note(u"drag with Control "_s + textOf({from, to}));
    Hands::hold(Key::Control);
    Hands::moveTo(from);
    Hands::press();
    Hands::moveTo(to);
    Hands::release();
    Hands::letGo(Key::Control);
}

// The limit itself is not reached, and the clock does not shrink away from under the hand.
void TestRandomEvents::turnWheel()
{
    constexpr int notchPx = 12;
    constexpr int handMs = 100;
    const int notches = m_dice->between(1, 6) * (m_dice->oneIn(2) ? 1 : -1);
    const QPoint at = pointOnClock();
    note(u"wheel %1 at "_s.arg(notches) + textOf({at}));
    Hands::moveTo(at);
    Hands::hold(Key::Control);
    QTest::qWait(handMs); // a notch at the moment in which the pointer arrives counts as none
    for (int i = 0; i < std::abs(notches); ++i) {
        const int half = notchPx / 2 * (notches > 0 ? 1 : -1);
        const QRect after = m_place.adjusted(-half, -half, half, half);
        if (!canStandAt(after) || !QRegion(after, QRegion::Ellipse).contains(at))
            break;
        Hands::turnWheel(notches > 0 ? 1 : -1);
        if (after.width() <= smallestSide)
            continue;
        m_place = after;
    }
    // A hand that is still on the key when the clock follows.
    QTRY_COMPARE(m_clock->geometry(), m_place);
    Hands::letGo(Key::Control);
}

void TestRandomEvents::turnWheelAlone()
{
    const QPoint at = pointOnClock();
    note(u"wheel without Control at "_s + textOf({at}));
    Hands::moveTo(at);
    Hands::turnWheel(m_dice->between(-3, 3));
}

// Without "Resize" the corners are not there, and it is a click elsewhere.
void TestRandomEvents::pullCorner()
{
    constexpr int inwardPx = 8; // where the grip is opaque
    constexpr int farPx = 300;
    const int growX = m_dice->oneIn(2) ? 1 : -1;
    const int growY = m_dice->oneIn(2) ? 1 : -1;
    const QRect before = m_place;
    const QPoint from(growX > 0 ? before.right() - inwardPx : before.left() + inwardPx,
        growY > 0 ? before.bottom() - inwardPx : before.top() + inwardPx);
    const QPoint off = m_dice->anyPointOf(QRect(QPoint(-farPx, -farPx), QPoint(farPx, farPx)));
    const QPoint to = clampedTo(screen(), from + off);
    const int outX = (to.x() - from.x()) * growX;
    const int outY = (to.y() - from.y()) * growY;
    const int growth = std::abs(outX) < std::abs(outY) ? outX : outY;
    const QRect after = before.adjusted(growX < 0 ? -growth : 0, growY < 0 ? -growth : 0,
        growX > 0 ? growth : 0, growY > 0 ? growth : 0);
    const bool isAlongTheEdge = (outX >= 0) != (outY >= 0);
    const bool isTaken = m_checks.resize && !isAlongTheEdge && after.width() >= smallestSide;
    if (!screen().contains(from) || (isTaken && !canStandAt(after)))
        return drag();
    if (isTaken)
        m_place = after;
    note(u"pull corner "_s + textOf({from, to}));
    Hands::moveTo(from);
    Hands::press();
    Hands::moveTo(to);
    Hands::release();
}

void TestRandomEvents::clickTwice()
{
    const QPoint at = pointOnClock();
    note(u"double click "_s + textOf({at}));
    Hands::click(at);
    Hands::click(at);
}

void TestRandomEvents::typeKey()
{
    constexpr std::array keys{Key::Return, Key::Escape, Key::Left, Key::Right, Key::Up, Key::Down,
        Key::Tab, Key::Space, Key::M, Key::F5};
    const Key key = keys.at(size_t(m_dice->below(int(keys.size()))));
    const QPoint at = pointOnClock();
    note(u"click "_s + textOf({at}) + u' ' + QDebug::toString(key));
    Hands::click(at);
    QTRY_VERIFY(m_clock->hasKeyboard());
    Hands::type(key);
}

void TestRandomEvents::clickElsewhere()
{
    const QPoint at = pointElsewhere();
    note(u"click elsewhere "_s + textOf({at}));
    Hands::click(at);
}

void TestRandomEvents::openMenu()
{
    const QPoint at = pointOnClock();
    m_firstRowActive = m_dice->oneIn(3);
    note((m_firstRowActive ? u"click and menu key "_s : u"menu "_s) + textOf({at}));
    if (m_firstRowActive) {
        Hands::click(at);
        QTRY_VERIFY(m_clock->hasKeyboard());
        Hands::type(Key::Menu);
    } else {
        Hands::click(at, Hands::Button::Right);
    }
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

// Of the open menu, with the mouse or with the arrow keys.
void TestRandomEvents::choose(Row row)
{
    const int index = row - (row > Minimize && !m_checks.taskbar ? 1 : 0);
    const bool byKeys = m_dice->oneIn(2);
    m_settingsTime = m_clock->settingsTime();
    note(QDebug::toString(row) + (byKeys ? u" by keys"_s : u" by mouse"_s));
    if (byKeys) {
        for (int i = m_firstRowActive ? 1 : 0; i <= index; ++i)
            Hands::type(Key::Down);
        Hands::type(row == MoveTo ? Key::Right : Key::Return);
    } else {
        const QRect place = menuRows(m_clock->menuPicture()).value(index).place;
        Hands::click(m_clock->menus().first().topLeft() + place.center());
    }
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

void TestRandomEvents::chooseInMoveMenu()
{
    const auto rowsOfMenu = [this] { return menuRows(m_clock->menuPicture()); };
    QTRY_COMPARE(rowsOfMenu().size(), moveRowCount);
    const auto row = MoveRow(m_dice->below(moveRowCount));
    const bool byKeys = m_dice->oneIn(2);
    note(QDebug::toString(row) + (byKeys ? u" by keys"_s : u" by mouse"_s));
    if (byKeys) {
        for (int i = m_firstRowActive ? 1 : 0; i <= row; ++i)
            Hands::type(Key::Down);
        Hands::type(Key::Return);
    } else {
        Hands::click(m_clock->menus().last().topLeft() + rowsOfMenu().value(row).place.center());
    }
    QTRY_VERIFY(m_clock->menus().isEmpty());
    const bool isAtRight = row == TopRight || row == BottomRight;
    const bool isAtBottom = row == BottomRight || row == BottomLeft;
    if (row == Center)
        m_place.moveCenter(screen().center());
    else // one pixel short of the right edge and of the bottom edge
        m_place.moveTopLeft({isAtRight ? screen().right() - m_place.width() : screen().left(),
            isAtBottom ? screen().bottom() - m_place.height() : screen().top()});
    QTRY_COMPARE(m_clock->geometry(), m_place);
    QVERIFY(screen().contains(m_clock->geometry()));
    readSettings();
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
            && saved[u"Topmost"_s] == m_checks.topmost && geometry[u"Left"_s] == m_place.left()
            && geometry[u"Top"_s] == m_place.top() && geometry[u"Width"_s] == m_place.width()
            && geometry[u"Height"_s] == m_place.height();
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
        return;
    }
    choose(Minimize);
    QTRY_VERIFY(!m_clock->isSeen());
    if (m_dice->oneIn(2))
        clickElsewhere();
    note(u"restore"_s);
    m_clock->restore();
    // Not QTRY_VERIFY, which looks once more: it may be on its way to the taskbar's style by then.
    QVERIFY(QTest::qWaitFor([this] { return m_clock->isSeen(); }));
    giveTimeForTheTaskbar();
}

QTEST_MAIN(TestRandomEvents)
#include "tst_randomevents.moc"
