// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The desktop's scale is changed while the clock runs.

#include "tests/desktop/runningclock.h"
#include "tests/desktop/xsettings.h"

#include <QtTest/qtest.h>

#include <csignal>

using namespace Qt::StringLiterals;

namespace
{

constexpr QRect inTheMiddle(300, 120, 200, 200); // on a screen of any scale here
constexpr QRect atTheRight(1576, 24, 320, 320); // beyond the edge of one of twice the scale

// Qt sets the pixels of a text a little differently after the change.
const QJsonObject withoutTexts{
    {u"DisplayDate"_s, false}, {u"DisplayLogo"_s, false}, {u"WithDigitalClock"_s, false}};

QByteArray scaledBy(double scale)
{
    constexpr int unit = 96 * 1024; // 1/1024 dots per inch
    return "Xft/DPI " + QByteArray::number(int(scale * unit)) + '\n';
}

} // namespace

class TestScaleChange : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }
    void isAsIfStartedAtThatScale_data();
    void isAsIfStartedAtThatScale();
};

void TestScaleChange::isAsIfStartedAtThatScale_data()
{
    QTest::addColumn<QRect>("place");
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");

    QTest::newRow("1 to 1.25") << inTheMiddle << 1.0 << 1.25;
    QTest::newRow("1 to 2") << inTheMiddle << 1.0 << 2.0;
    QTest::newRow("1 to 2 at the right") << atTheRight << 1.0 << 2.0;
    QTest::newRow("2 to 1") << inTheMiddle << 2.0 << 1.0;
    QTest::newRow("1.5 to 1 at the right") << atTheRight << 1.5 << 1.0;
}

void TestScaleChange::isAsIfStartedAtThatScale()
{
    QFETCH(QRect, place);
    QFETCH(double, from);
    QFETCH(double, to);

    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place, withoutTexts)));
    const ClockStart start{.environment = timeStandingAt(u"2026-11-15 10:08:42"_s)};
    XSettings settings(scaledBy(to));
    QRect expectedPlace;
    QImage expectedPicture;
    {
        RunningClock clock(home, start);
        QVERIFY(clock.waitForWindow());
        expectedPicture = clock.stillPicture();
        expectedPlace = clock.window().geometry();
        QCOMPARE(expectedPlace.size(), place.size() * to);
    }
    settings.change(scaledBy(from));
    RunningClock clock(home, start);
    QVERIFY(clock.waitForWindow());
    QVERIFY(!clock.stillPicture().isNull());
    QCOMPARE(clock.window().geometry().size(), place.size() * from);
    const QRect placeBefore = clock.window().geometry();
    for (int i = 0; i < 2; ++i) {
        settings.change(scaledBy(to));
        QTRY_COMPARE(clock.window().geometry(), expectedPlace);
        QTRY_COMPARE(clock.stillPicture(), expectedPicture); // sharp soon after
        settings.change(scaledBy(from));
        QTRY_COMPARE(clock.window().geometry(), placeBefore);
    }
    clock.signal(SIGTERM);
    QCOMPARE(clock.waitForExit(), 0);
    QCOMPARE(home.storedGeometry(), QRectF(place));
}

QTEST_MAIN(TestScaleChange)
#include "tst_scalechange.moc"
