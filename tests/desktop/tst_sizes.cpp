// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The face at sides and pixel ratios up to 4096 pixels of the screen: no layer may be missing.

#include "tests/desktop/runningclock.h"

#include <QtTest/qtest.h>

#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

constexpr int referenceSide = 320;
constexpr int comparedSide = 72; // pictures are compared at the smallest size that there is

// A layer, or some, that a setting takes away.
struct Layer {
    const char *name;
    QJsonObject without;
};

const QList<Layer> &layers()
{
    static const QList<Layer> all{
        {"base", {{u"OpacityGroup"_s, QJsonObject{{u"BackgroundOpacity"_s, 0.0}}}}},
        {"background", {{u"UseDefaultBackgroundImage"_s, false}}},
        {"dial", {{u"OpacityGroup"_s, QJsonObject{{u"FacOpacity"_s, 0.0}}}}},
        {"hands", {{u"OpacityGroup"_s, QJsonObject{{u"HandsOpacity"_s, 0.0}}}}},
        {"second hand", {{u"SecondHand"_s, false}}},
    };
    return all;
}

// The clock without texts, which have sizes of their own, made small.
QImage pictureOf(QJsonObject settings, int side, const QString &ratio)
{
    settings.insert(u"Geometry"_s,
        QJsonObject{{u"Left"_s, 8}, {u"Top"_s, 8}, {u"Width"_s, side}, {u"Height"_s, side}});
    for (const QString &text : {u"DisplayDate"_s, u"DisplayLogo"_s, u"WithDigitalClock"_s})
        settings.insert(text, false);
    const ClockHome home;
    auto environment = timeStandingAt(u"2026-11-15 10:08:42"_s);
    environment.insert(u"QT_SCALE_FACTOR"_s, ratio);
    if (!home.writeSettings(settings))
        return {};
    RunningClock clock(home, {.environment = environment});
    if (!clock.waitForWindow())
        return {};
    const QImage picture = clock.stillPicture();
    // At a broken ratio Qt asks the window manager for sizes in steps of two pixels.
    if (std::abs(picture.width() - side * ratio.toDouble()) > 1.0)
        return {};
    return picture.scaled(
        comparedSide, comparedSide, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

int difference(QRgb one, QRgb other)
{
    return std::abs(qRed(one) - qRed(other)) + std::abs(qGreen(one) - qGreen(other))
        + std::abs(qBlue(one) - qBlue(other));
}

// Whether \a picture looks like \a with rather than like \a without, where these two differ.
bool shows(const QImage &picture, const QImage &with, const QImage &without)
{
    constexpr int noticeable = 40;
    qint64 toWith = 0;
    qint64 toWithout = 0;
    for (int y = 0; y < comparedSide; ++y) {
        for (int x = 0; x < comparedSide; ++x) {
            if (difference(with.pixel(x, y), without.pixel(x, y)) < noticeable)
                continue;
            toWith += difference(picture.pixel(x, y), with.pixel(x, y));
            toWithout += difference(picture.pixel(x, y), without.pixel(x, y));
        }
    }
    return toWithout > 0 && toWith * 2 < toWithout;
}

} // namespace

class TestSizes : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }
    void initTestCase();

    void paintsEveryLayer_data();
    void paintsEveryLayer();

private:
    QImage m_whole;
    QList<QImage> m_withoutLayer; // in the order of the layers
};

void TestSizes::initTestCase()
{
    m_whole = pictureOf({}, referenceSide, u"1"_s);
    QVERIFY(!m_whole.isNull());
    for (const Layer &layer : layers()) {
        m_withoutLayer.append(pictureOf(layer.without, referenceSide, u"1"_s));
        QVERIFY2(!m_withoutLayer.last().isNull(), layer.name);
        QVERIFY2(!shows(m_withoutLayer.last(), m_whole, m_withoutLayer.last()), layer.name);
        QVERIFY2(shows(m_whole, m_whole, m_withoutLayer.last()), layer.name);
    }
}

void TestSizes::paintsEveryLayer_data()
{
    QTest::addColumn<int>("side");
    QTest::addColumn<QString>("ratio");

    constexpr int largest = 4096;
    for (const char *ratio : {"1", "1.5", "2", "3"}) {
        for (const int side : {72, 320, 1080, 1820, 2730, 2731, 4096}) {
            if (side * std::atof(ratio) <= largest)
                QTest::addRow("%d at %s", side, ratio) << side << QString::fromLatin1(ratio);
        }
    }
}

void TestSizes::paintsEveryLayer()
{
    QFETCH(int, side);
    QFETCH(QString, ratio);

    const QImage picture = pictureOf({}, side, ratio);
    QVERIFY(!picture.isNull());
    for (qsizetype i = 0; i < layers().size(); ++i)
        QVERIFY2(shows(picture, m_whole, m_withoutLayer.at(i)), layers().at(i).name);
}

QTEST_MAIN(TestSizes)
#include "tst_sizes.moc"
