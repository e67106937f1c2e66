// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// What a screen reader finds.

#include "tests/desktop/clockmenu.h"
#include "tests/desktop/runningclock.h"

#include <QtCore/qjsonarray.h>
#include <QtCore/qjsondocument.h>
#include <QtCore/qregularexpression.h>
#include <QtTest/qtest.h>

#include <algorithm>
#include <iterator>

using namespace Qt::StringLiterals;

namespace
{

constexpr QRect place(60, 60, 200, 200);
const QSet<QString> controls{u"button"_s, u"check box"_s, u"combo box"_s, u"link"_s, u"slider"_s};

struct Look {
    QList<QJsonObject> tree;
    QStringList events;
};

// As a screen reader sees the program, and what it is told of in the \a seconds after that.
Look lookAt(qint64 pid, double seconds = 0)
{
    QProcess reader;
    reader.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    reader.start(u"python3"_s,
        {u"-Wignore"_s, QStringLiteral(VESPER_SOURCE_FOLDER "/tests/desktop/accessible_tree.py"),
            QString::number(pid), QString::number(seconds)});
    if (!reader.waitForFinished())
        return {};
    const QJsonObject told = QJsonDocument::fromJson(reader.readAllStandardOutput()).object();
    Look look;
    const QJsonArray tree = told[u"tree"_s].toArray();
    std::ranges::transform(
        tree, std::back_inserter(look.tree), [](const auto &entry) { return entry.toObject(); });
    const QJsonArray events = told[u"events"_s].toArray();
    std::ranges::transform(events, std::back_inserter(look.events),
        [](const auto &event) { return event.toString(); });
    return look;
}

QString nameOfRole(const Look &look, const QString &role)
{
    for (const QJsonObject &entry : look.tree) {
        if (entry[u"role"_s] == role)
            return entry[u"name"_s].toString();
    }
    return {};
}

} // namespace

class TestAccessibility : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }

    void faceTellsTimeAndDate_data();
    void faceTellsTimeAndDate();
    void ticksAreNotAnnounced();
    void controlsHaveNames();
    void speaksJapanese();
};

void TestAccessibility::faceTellsTimeAndDate_data()
{
    QTest::addColumn<QJsonObject>("settings");
    QTest::addColumn<QString>("expected");

    QTest::newRow("24 hours") << QJsonObject{} << u"22:08:42 Sun Nov 15 2026"_s;
    QTest::newRow("12 hours") << QJsonObject{{u"TweleveHours"_s, true}}
                              << u"10:08:42 PM Sun Nov 15 2026"_s;
    QTest::newRow("both hidden") << QJsonObject{{u"WithDigitalClock"_s, false},
        {u"DisplayDate"_s, false}}
                                 << u"22:08:42 Sun Nov 15 2026"_s;
}

void TestAccessibility::faceTellsTimeAndDate()
{
    QFETCH(QJsonObject, settings);
    QFETCH(QString, expected);

    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place, settings)));
    QMap<QString, QString> environment = timeStandingAt(u"2026-11-15 22:08:42"_s);
    environment[u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s] = u"1"_s;
    RunningClock clock(home, {.environment = environment});
    QVERIFY(clock.waitForWindow());
    const Look look = lookAt(clock.pid());
    QCOMPARE(nameOfRole(look, u"frame"_s), u"Vesper"_s);
    QCOMPARE(nameOfRole(look, u"label"_s), expected);
}

void TestAccessibility::ticksAreNotAnnounced()
{
    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place)));
    RunningClock clock(home, {.environment = {{u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s, u"1"_s}}});
    QVERIFY(clock.waitForWindow());
    const Look first = lookAt(clock.pid(), 3);
    QCOMPARE(first.events, QStringList());
    const QString earlier = nameOfRole(first, u"label"_s);
    QVERIFY(!earlier.isEmpty());
    QVERIFY(nameOfRole(lookAt(clock.pid()), u"label"_s) > earlier); // later the same day
}

void TestAccessibility::controlsHaveNames()
{
    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place)));
    RunningClock clock(home, {.environment = {{u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s, u"1"_s}}});
    QVERIFY(clock.waitForWindow());
    QVERIFY(ClockMenu::choose(place.center(), ClockMenu::Settings));
    QTRY_COMPARE(XWindow::allOfProcess(clock.pid()).size(), 2);
    const Look look = lookAt(clock.pid());
    QStringList found;
    for (const QJsonObject &entry : look.tree) {
        if (!controls.contains(entry[u"role"_s].toString()))
            continue;
        found += entry[u"name"_s].toString();
        QVERIFY2(!found.last().isEmpty(), QJsonDocument(entry).toJson().constData());
        QVERIFY(!entry[u"actions"_s].toArray().isEmpty());
    }
    // Twelve boxes, the tones, thirteen sliders with their buttons, four that open and close, the
    // link and Close.
    QCOMPARE(found.size(), 12 + 1 + 2 * 13 + 4 + 2);
    for (const QString &name : {u"Color Tone"_s, u"Overall Opacity"_s, u"Close"_s})
        QVERIFY(found.contains(name));
}

void TestAccessibility::speaksJapanese()
{
    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place, {{u"UseEra"_s, true}})));
    QMap<QString, QString> environment = timeStandingAt(u"2026-11-15 22:08:42"_s);
    environment[u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s] = u"1"_s;
    environment[u"LC_ALL"_s] = u"ja_JP.UTF-8"_s;
    RunningClock clock(home, {.environment = environment});
    QVERIFY(clock.waitForWindow());
    QCOMPARE(nameOfRole(lookAt(clock.pid()), u"label"_s), u"22:08:42 令和8年11月15日㈰"_s);
    QVERIFY(ClockMenu::choose(place.center(), ClockMenu::Settings));
    QTRY_COMPARE(XWindow::allOfProcess(clock.pid()).size(), 2);
    const Look look = lookAt(clock.pid());
    static const QRegularExpression japanese(u"\\p{Han}|\\p{Hiragana}|\\p{Katakana}"_s);
    for (const QJsonObject &entry : look.tree) {
        if (controls.contains(entry[u"role"_s].toString()) && entry[u"role"_s] != u"link"_s)
            QVERIFY2(entry[u"name"_s].toString().contains(japanese),
                QJsonDocument(entry).toJson().constData());
    }
}

QTEST_MAIN(TestAccessibility)
#include "tst_accessibility.moc"
