// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Which events happen, and what is looked at after each. VESPER_EVENTS is how many there are for a
// seed, VESPER_SEEDS names others than the usual one; a failure tells the seed and the last events.

#include "tests/events/tst_randomevents.h"

#include <QtCore/qdebug.h>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

constexpr QRect firstPlace(860, 440, 200, 200);

} // namespace

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
        {2, &TestRandomEvents::changeMonitors}, // these two come last, and take seconds
        {1, &TestRandomEvents::switchKeepPosition},
    };
    static const QList<Kind> withoutMonitors = all.first(all.size() - 2);
    return DrivenClock::hasTwoMonitors() ? all : withoutMonitors;
}

void TestRandomEvents::init()
{
    QTest::failOnWarning();
    QVERIFY(!DrivenClock::hasTwoMonitors() || DrivenClock::isMonitorConnected()
        || DrivenClock::connectMonitor(true));
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
    m_place = m_wanted = firstPlace;
    m_keepsPosition = false;
    m_checks = {};
    m_events = 0;
    m_monitorChanges = 0;
    m_lost = 0;
    const QJsonObject geometry{{u"Left"_s, m_place.x()}, {u"Top"_s, m_place.y()},
        {u"Width"_s, m_place.width()}, {u"Height"_s, m_place.height()}};
    // No update check: its answer is a matter of the network.
    m_clock = std::make_unique<DrivenClock>(
        QJsonObject{{u"Geometry"_s, geometry}, {u"AutoCheckUpdate"_s, false}});
    QVERIFY(m_clock->start());
    while (m_events < count && !QTest::currentTestFailed()) {
        ++m_events;
        happen();
        if (!QTest::currentTestFailed())
            look();
    }
    QCOMPARE(complaints(), QByteArray());
    qInfo("%d events, %d changes of the monitors, %d inputs got lost", m_events, m_monitorChanges,
        m_lost);
    QCOMPARE_LE(m_lost, 1 + count / 100);
}

void TestRandomEvents::cleanup()
{
    if (QTest::currentTestFailed()) {
        constexpr int lastCount = 20;
        qInfo().noquote()
            << u"VESPER_SEEDS=%1 VESPER_EVENTS=%2; the last events:\n"_s
                   .arg(QString::fromLatin1(QTest::currentDataTag()).section(u' ', -1))
                   .arg(m_events)
            << m_notes.last(std::min<qsizetype>(lastCount, m_notes.size())).join(u'\n');
    }
    m_notes.clear();
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

void TestRandomEvents::note(const QString &what)
{
    m_notes.append(u"%1. %2"_s.arg(m_events).arg(what));
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

// What the program has written, but for what it says each time that its settings are closed or the
// monitors change.
QByteArray TestRandomEvents::complaints() const
{
    QByteArrayList lines = m_clock->output().split('\n');
    lines.removeIf([](const QByteArray &line) {
        return line == "Settings Window Destroyed" || line == "Display Change"
            || line == "Monitor is Avialable" || line == "Monitor is lost"
            || line.startsWith("QRect(");
    });
    return lines.join('\n');
}

QTEST_MAIN(TestRandomEvents)
