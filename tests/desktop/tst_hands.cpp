// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The directions of the hands on the screen, at times that are faked from outside.

#include "tests/desktop/runningclock.h"

#include <QtCore/qmath.h>
#include <QtTest/qtest.h>

#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

constexpr int side = 400;

// Which pixels a hand covers.
using Pixels = QList<bool>;

Pixels differing(const QImage &one, const QImage &other)
{
    constexpr int noticeable = 24; // of the sum of three channels
    Pixels result;
    result.reserve(qsizetype(one.width()) * one.height());
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QColor a = one.pixelColor(x, y);
            const QColor b = other.pixelColor(x, y);
            result.append(std::abs(a.red() - b.red()) + std::abs(a.green() - b.green())
                    + std::abs(a.blue() - b.blue())
                >= noticeable);
        }
    }
    return result;
}

template <typename Operation>
Pixels combined(const Pixels &one, const Pixels &other, Operation operation)
{
    Pixels result(one.size());
    std::transform(one.begin(), one.end(), other.begin(), result.begin(), operation);
    return result;
}

// Where the pixels lie as seen from the middle of the clock: in degrees clockwise from twelve
// o'clock. A hand is the same on both sides of its axis, so its pixels balance there; the end that
// points reaches farther out than the other and outweighs it by the square of the distance. The hub
// is left out: all hands meet there. Not a number without any pixel.
double direction(const Pixels &pixels)
{
    constexpr double hubRadius = 0.1 * side;
    double right = 0.0;
    double down = 0.0;
    for (int i = 0; i < pixels.size(); ++i) {
        const double dx = i % side + 0.5 - side / 2.0;
        const int row = i / side;
        const double dy = row + 0.5 - side / 2.0;
        const double distance = std::hypot(dx, dy);
        if (!pixels.at(i) || distance < hubRadius)
            continue;
        right += dx * distance * distance;
        down += dy * distance * distance;
    }
    if (right == 0.0 && down == 0.0)
        return qQNaN();
    return std::fmod(qRadiansToDegrees(std::atan2(right, -down)) + 360.0, 360.0);
}

double degreesBetween(double one, double other)
{
    return std::abs(std::remainder(one - other, 360.0));
}

// The clock at a time that stands still, without any text.
QImage pictureAt(const QString &dateTime, QJsonObject settings)
{
    settings.insert(u"Geometry"_s,
        QJsonObject{{u"Left"_s, 100}, {u"Top"_s, 100}, {u"Width"_s, side}, {u"Height"_s, side}});
    for (const QString &text : {u"DisplayDate"_s, u"DisplayLogo"_s, u"WithDigitalClock"_s})
        settings.insert(text, false);
    const ClockHome home;
    if (!home.writeSettings(settings))
        return {};
    RunningClock clock(home, {.environment = timeStandingAt(dateTime)});
    return clock.waitForWindow() ? clock.stillPicture() : QImage();
}

} // namespace

class TestHands : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }

    void pointToTheTime_data();
    void pointToTheTime();
};

void TestHands::pointToTheTime_data()
{
    QTest::addColumn<QString>("time");
    QTest::addColumn<QString>("hourLater");
    QTest::addColumn<double>("hourHand");
    QTest::addColumn<double>("minuteHand");
    QTest::addColumn<double>("secondHand");
    QTest::addColumn<QString>("tone");

    for (const char *tone : {"DarkBlue", "LightGray"}) {
        const auto name = QString::fromLatin1(tone);
        QTest::addRow("10:08:42, %s", tone)
            << u"10:08:42"_s << u"11:08:42"_s << 304.35 << 52.2 << 252.0 << name;
        QTest::addRow("03:00:00, %s", tone)
            << u"03:00:00"_s << u"04:00:00"_s << 90.0 << 0.0 << 0.0 << name;
        QTest::addRow("20:31:15, %s", tone)
            << u"20:31:15"_s << u"21:31:15"_s << 255.625 << 187.5 << 90.0 << name;
    }
}

void TestHands::pointToTheTime()
{
    QFETCH(QString, time);
    QFETCH(QString, hourLater);
    QFETCH(double, hourHand);
    QFETCH(double, minuteHand);
    QFETCH(double, secondHand);
    QFETCH(QString, tone);

    // Each hand by what changes in the picture: the second hand by taking it away, the two others
    // together by making them invisible. Of these two only the hour hand is elsewhere an hour
    // later.
    const QString day = u"2026-11-15 "_s;
    QJsonObject settings{{u"Theme"_s, QJsonObject{{u"ColorToneName"_s, tone}}}};
    const QImage all = pictureAt(day + time, settings);
    settings.insert(u"SecondHand"_s, false);
    const QImage two = pictureAt(day + time, settings);
    const QImage twoLater = pictureAt(day + hourLater, settings);
    settings.insert(u"OpacityGroup"_s, QJsonObject{{u"HandsOpacity"_s, 0.0}});
    const QImage none = pictureAt(day + time, settings);
    for (const QImage &picture : {all, two, twoLater, none})
        QCOMPARE(picture.size(), QSize(side, side));

    const Pixels inEither = differing(two, none);
    const Pixels moved = differing(two, twoLater);
    const double second = direction(differing(all, two));
    const double minute = direction(combined(inEither, moved, std::greater<bool>()));
    const double hour = direction(combined(inEither, moved, std::logical_and<bool>()));
    qInfo("hour %.2f, minute %.2f, second %.2f degrees", hour, minute, second);
    QCOMPARE_LE(degreesBetween(hour, hourHand), 1.0);
    QCOMPARE_LE(degreesBetween(minute, minuteHand), 1.0);
    QCOMPARE_LE(degreesBetween(second, secondHand), 1.0);
}

QTEST_MAIN(TestHands)
#include "tst_hands.moc"
