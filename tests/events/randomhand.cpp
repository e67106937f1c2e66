// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// What the hand does with mouse and keys, but for the menu.

#include "tests/events/tst_randomevents.h"

#include <QtCore/qdebug.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qregion.h>
#include <QtGui/qscreen.h>

#include <algorithm>
#include <array>
#include <cstdlib>

using namespace Qt::StringLiterals;
using Hands::Key;

namespace
{

constexpr int largestSide = 900; // of this test: the clock has room on the screen
constexpr int edgePx = 40; // the centre of the clock stays so far from the screen's edge

QPoint clampedTo(QRect rectangle, QPoint point)
{
    return {std::clamp(point.x(), rectangle.left(), rectangle.right()),
        std::clamp(point.y(), rectangle.top(), rectangle.bottom())};
}

} // namespace

QRect TestRandomEvents::screen()
{
    return DrivenClock::hasTwoMonitors() ? QGuiApplication::primaryScreen()->virtualGeometry()
                                         : QGuiApplication::primaryScreen()->geometry();
}

QRect TestRandomEvents::monitorAt(QPoint point)
{
    const QScreen *screen = QGuiApplication::screenAt(point);
    return screen ? screen->geometry() : QRect();
}

void TestRandomEvents::placeByUser(QRect place) { m_place = m_wanted = place; }

QString TestRandomEvents::textOf(const QList<QPoint> &points)
{
    QStringList texts;
    for (const QPoint point : points)
        texts.append(u"(%1, %2)"_s.arg(point.x()).arg(point.y()));
    return texts.join(u' ');
}

// What has had no effect at all, a person does once more.
bool TestRandomEvents::mayRepeat()
{
    if (!DrivenClock::losesInput())
        return false;
    ++m_lost;
    note(u"lost"_s);
    return true;
}

// With the left button down, from the first of them to the last.
void TestRandomEvents::pull(const QList<QPoint> &points)
{
    const QRect before = m_clock->geometry();
    const auto pullOnce = [&points] {
        Hands::moveTo(points.first());
        Hands::press();
        for (const QPoint point : points)
            Hands::moveTo(point);
        Hands::release();
    };
    pullOnce();
    const auto hasCome = [this] { return m_clock->geometry() == m_place; };
    if (!QTest::qWaitFor(hasCome) && m_clock->geometry() == before && mayRepeat())
        pullOnce();
}

void TestRandomEvents::clickForKeyboard(QPoint at)
{
    Hands::click(at);
    const auto hasKeyboard = [this] { return m_clock->hasKeyboard(); };
    if (!QTest::qWaitFor(hasKeyboard) && mayRepeat())
        Hands::click(at);
    QTRY_VERIFY(m_clock->hasKeyboard());
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

// Where a hand still reaches it. What grows beyond the edge of a monitor is moved back by some
// window managers.
bool TestRandomEvents::canStandAt(QRect place) const
{
    const bool hasGrown = place.width() > m_place.width();
    return place.width() <= largestSide && canStandOn(screen(), place)
        && (!hasGrown || monitorAt(place.center()).contains(place));
}

bool TestRandomEvents::canStandOn(QRect room, QRect place)
{
    return room.adjusted(edgePx, edgePx, -edgePx, -edgePx).contains(place.center())
        && (DrivenClock::canHangOverTheEdge() || room.contains(place));
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
            placeByUser(after);
    }
    note(u"drag "_s + textOf(points));
    pull(points);
}

void TestRandomEvents::dragWithControl()
{
    constexpr int moveMs = 200;
    const QPoint from = pointOnClock();
    const QPoint to = m_dice->anyPointOf(screen());
    note(u"drag with Control "_s + textOf({from, to}));
    Hands::hold(Key::Control);
    Hands::moveTo(from);
    Hands::press();
    Hands::moveTo(to);
    Hands::release();
    Hands::letGo(Key::Control);
    const auto hasGone = [&] { return m_clock->geometry() == m_place.translated(to - from); };
    if (!DrivenClock::losesInput() || !QTest::qWaitFor(hasGone, moveMs) || !mayRepeat())
        return;
    // Without the key it is an ordinary drag, and what hangs over the screen's edge is moved back.
    QTest::qWait(moveMs);
    placeByUser(m_clock->geometry());
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
    const QPoint corner = m_place.topLeft();
    for (int i = 0; i < std::abs(notches); ++i) {
        const int half = notchPx / 2 * (notches > 0 ? 1 : -1);
        const QRect after = m_place.adjusted(-half, -half, half, half);
        // The mask gets its size at once, the window its place when the window manager has looked.
        const QRect early(corner, after.size());
        if (!canStandAt(after) || !QRegion(after, QRegion::Ellipse).contains(at)
            || !QRegion(early, QRegion::Ellipse).contains(at))
            break;
        Hands::turnWheel(notches > 0 ? 1 : -1);
        if (after.width() <= smallestSide)
            continue;
        placeByUser(after);
    }
    // A hand that is still on the key when the clock follows.
    if (!QTest::qWaitFor([this] { return m_clock->geometry() == m_place; }) && mayRepeat()) {
        for (int i = std::abs(m_place.width() - m_clock->geometry().width()) / notchPx; i > 0; --i)
            Hands::turnWheel(notches > 0 ? 1 : -1);
    }
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
        placeByUser(after);
    note(u"pull corner "_s + textOf({from, to}));
    pull({from, to});
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
    clickForKeyboard(at);
    Hands::type(key);
}

void TestRandomEvents::clickElsewhere()
{
    const QPoint at = pointElsewhere();
    note(u"click elsewhere "_s + textOf({at}));
    Hands::click(at);
}
