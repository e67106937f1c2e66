// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The texts on the face. A picture cannot be read, so each text that might stand there is drawn in
// the same font, and the one that resembles the picture most is what it shows.

#include "tests/desktop/runningclock.h"

#include <QtGui/qfont.h>
#include <QtGui/qpainter.h>
#include <QtTest/qtest.h>

#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

constexpr int side = 600;

// Where and how a text stands on the face, in fractions of the side.
struct TextPlace {
    QString opacityKey;
    QPointF centre;
    double points;
};

// The part of the face that holds the text.
QRect lineOf(const TextPlace &place)
{
    const int height = int(place.points * side * 3);
    return QRect(0, int(place.centre.y() * side) - height / 2, side, height);
}

// Gray values: how much of each pixel the text covers.
QImage inkOf(const QImage &withText, const QImage &withoutText)
{
    QImage ink(withText.size(), QImage::Format_Grayscale8);
    for (int y = 0; y < ink.height(); ++y) {
        for (int x = 0; x < ink.width(); ++x) {
            const int difference = qGray(withText.pixel(x, y)) - qGray(withoutText.pixel(x, y));
            ink.scanLine(y)[x] = uchar(std::abs(difference));
        }
    }
    return ink;
}

QImage drawn(const QString &text, const QString &family, const TextPlace &place)
{
    QImage ink(side, side, QImage::Format_Grayscale8);
    ink.fill(Qt::black);
    QPainter painter(&ink);
    QFont font(family);
    font.setPointSizeF(place.points * side);
    painter.setFont(font);
    painter.setPen(Qt::white);
    QRectF box(0, 0, side, side);
    box.moveCenter(place.centre * side);
    painter.drawText(box, Qt::AlignCenter, text);
    return ink.copy(lineOf(place));
}

// The correlation of two pictures, the second shifted against the first: 1 when they are alike.
double resemblance(const QImage &one, const QImage &other, QPoint shift)
{
    double both = 0.0;
    double ofOne = 0.0;
    double ofOther = 0.0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QPoint there = QPoint(x, y) + shift;
            const double a = one.constScanLine(y)[x];
            const double b = other.valid(there) ? other.constScanLine(there.y())[there.x()] : 0.0;
            both += a * b;
            ofOne += a * a;
            ofOther += b * b;
        }
    }
    return ofOne > 0.0 && ofOther > 0.0 ? both / std::sqrt(ofOne * ofOther) : 0.0;
}

// The same, at the shift that fits best: the text's place is rounded to pixels somewhere.
double bestResemblance(const QImage &one, const QImage &other)
{
    constexpr int furthest = 3;
    double best = 0.0;
    for (int dy = -furthest; dy <= furthest; ++dy) {
        for (int dx = -furthest; dx <= furthest; ++dx)
            best = std::max(best, resemblance(one, other, QPoint(dx, dy)));
    }
    return best;
}

// The text that the picture shows, out of some; empty if it resembles none of them.
QString read(const QImage &ink, const TextPlace &place, const QStringList &candidates)
{
    constexpr double alike = 0.85;
    // The face asks for the first. Where that is missing it gets what the system has for its
    // language, and under a Japanese one that is the second.
    const QStringList families{u"Yu Gothic UI"_s, u"Noto Sans CJK JP"_s};
    double best = alike;
    QString result;
    for (const QString &text : candidates) {
        for (const QString &family : families) {
            const double value
                = bestResemblance(ink.copy(lineOf(place)), drawn(text, family, place));
            if (value > best) {
                best = value;
                result = text;
            }
        }
    }
    qInfo("resemblance %.3f", best);
    return result;
}

QImage pictureOf(
    QJsonObject settings, const TextPlace &place, double opacity, const QString &locale)
{
    settings.insert(u"Geometry"_s,
        QJsonObject{{u"Left"_s, 100}, {u"Top"_s, 100}, {u"Width"_s, side}, {u"Height"_s, side}});
    settings.insert(
        u"OpacityGroup"_s, QJsonObject{{u"HandsOpacity"_s, 0.0}, {place.opacityKey, opacity}});
    const ClockHome home;
    if (!home.writeSettings(settings))
        return {};
    auto environment = timeStandingAt(u"2026-11-15 22:08:42"_s); // a Sunday
    environment.insert(u"LANG"_s, locale);
    RunningClock clock(home, {.environment = environment});
    return clock.waitForWindow() ? clock.stillPicture() : QImage();
}

const TextPlace datePlace{u"DateForegroundOpacity"_s, {0.515, 0.37}, 0.06};
const TextPlace timePlace{u"DigitalClockForegroundOpacity"_s, {0.49, 0.68}, 0.07};

} // namespace

class TestTexts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }

    void showsTheDate_data();
    void showsTheDate();
    void showsTheTime_data();
    void showsTheTime();
};

void TestTexts::showsTheDate_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<bool>("useEra");
    QTest::addColumn<QString>("expected");

    QTest::newRow("English") << u"en_US.UTF-8"_s << false << u"Sun Nov 15 2026"_s;
    QTest::newRow("German") << u"de_DE.UTF-8"_s << true << u"Sun Nov 15 2026"_s;
    QTest::newRow("Japanese") << u"ja_JP.UTF-8"_s << false << u"2026年11月15日㈰"_s;
    QTest::newRow("Japanese era") << u"ja_JP.UTF-8"_s << true << u"令和8年11月15日㈰"_s;
}

void TestTexts::showsTheDate()
{
    QFETCH(QString, locale);
    QFETCH(bool, useEra);
    QFETCH(QString, expected);

    const QJsonObject settings{{u"UseEra"_s, useEra}};
    const QImage picture = pictureOf(settings, datePlace, 1.0, locale);
    const QImage withoutText = pictureOf(settings, datePlace, 0.0, locale);
    QVERIFY(!picture.isNull() && !withoutText.isNull());
    const QStringList candidates{
        u"Sun Nov 15 2026"_s,
        u"Sat Nov 14 2026"_s,
        u"Mon Nov 16 2026"_s,
        u"15.11.2026"_s,
        u"2026年11月15日㈰"_s,
        u"2026年11月15日㈪"_s,
        u"2026年11月16日㈪"_s,
        u"2026年11月15日"_s,
        u"令和8年11月15日㈰"_s,
        u"令和9年11月15日㈰"_s,
        u"平成38年11月15日㈰"_s,
    };
    QCOMPARE(read(inkOf(picture, withoutText), datePlace, candidates), expected);
}

void TestTexts::showsTheTime_data()
{
    QTest::addColumn<bool>("twelveHours");
    QTest::addColumn<QString>("expected");

    QTest::newRow("24 hours") << false << u"22:08:42"_s;
    QTest::newRow("12 hours") << true << u"10:08:42"_s;
}

void TestTexts::showsTheTime()
{
    QFETCH(bool, twelveHours);
    QFETCH(QString, expected);

    // The tag has the colour of the time, so it is part of the picture: as noise, beside the time.
    const QJsonObject settings{{u"TweleveHours"_s, twelveHours}};
    const QImage picture = pictureOf(settings, timePlace, 1.0, u"C.UTF-8"_s);
    const QImage withoutText = pictureOf(settings, timePlace, 0.0, u"C.UTF-8"_s);
    QVERIFY(!picture.isNull() && !withoutText.isNull());
    const QStringList candidates{u"22:08:42"_s, u"10:08:42"_s, u"22:08:43"_s, u"10:08:41"_s,
        u"22:08"_s, u"10:08"_s, u"00:00:00"_s};
    QCOMPARE(read(inkOf(picture, withoutText), timePlace, candidates), expected);
}

QTEST_MAIN(TestTexts)
#include "tst_texts.moc"
