// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "artworkfiles.h"
#include "tools/artwork/picture/clockpicture.h"
#include "tools/artwork/picture/colourmath.h"
#include "tools/artwork/picture/measures.h"

#include <QDirIterator>
#include <QPainter>
#include <QRegion>
#include <QRegularExpression>
#include <QTest>
#include <QXmlStreamReader>
#include <QtMath>

#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

QByteArray contents(const QString &path)
{
    QFile file(sourceRoot() + u'/' + path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

QImage drawn(const QString &path, int sidePx)
{
    return rasterised(sourceRoot() + u'/' + path, sidePx);
}

/// What every renderer draws alike. Units, text, style sheets and references other than to a
/// gradient are not among it.
const QHash<QString, QStringList> &allowed()
{
    static const QStringList painted{u"fill"_s, u"stroke"_s, u"stroke-width"_s, u"stroke-linecap"_s,
        u"stroke-linejoin"_s, u"opacity"_s, u"transform"_s};
    static const QHash<QString, QStringList> table{
        {u"svg"_s, {u"width"_s, u"height"_s, u"viewBox"_s}},
        {u"defs"_s, {}},
        {u"linearGradient"_s, {u"id"_s, u"gradientUnits"_s, u"x1"_s, u"y1"_s, u"x2"_s, u"y2"_s}},
        {u"radialGradient"_s, {u"id"_s, u"gradientUnits"_s, u"cx"_s, u"cy"_s, u"r"_s}},
        {u"stop"_s, {u"offset"_s, u"stop-color"_s, u"stop-opacity"_s}},
        {u"path"_s, painted + QStringList{u"d"_s}},
        {u"circle"_s, painted + QStringList{u"cx"_s, u"cy"_s, u"r"_s}},
    };
    return table;
}

/// What the document holds beside the allowed; empty when nothing.
QStringList strangers(const QByteArray &svg)
{
    static const QRegularExpression value(
        u"^(#[0-9a-f]{6}|none|round|url\\(#g\\d+\\)|g\\d+|userSpaceOnUse|-?[0-9.]+|[0-9 ]+"
        "|[-MLAQHVz0-9. ]+|100%)$"_s);
    QStringList found;
    QXmlStreamReader reader(svg);
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::Characters && !reader.isWhitespace())
            found += u"text"_s;
        if (reader.tokenType() != QXmlStreamReader::StartElement)
            continue;
        const QString element = reader.name().toString();
        if (!allowed().contains(element)) {
            found += element;
            continue;
        }
        for (const QXmlStreamAttribute &attribute : reader.attributes()) {
            if (!allowed()[element].contains(attribute.name()) || !attribute.prefix().isEmpty()
                || !value.matchView(attribute.value()).hasMatch())
                found += u"%1 %2=%3"_s.arg(element, attribute.name(), attribute.value());
        }
        if (element.endsWith("Gradient"_L1)
            && reader.attributes().value("gradientUnits"_L1) != "userSpaceOnUse"_L1)
            found += element + u" without units"_s;
    }
    if (reader.hasError())
        found += reader.errorString();
    return found;
}

/// What the shape leaves of the window that it gives itself, in opaque pixels.
QImage roundMask(int sidePx)
{
    QImage image(sidePx, sidePx, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setClipRegion(QRegion(QRect(-1, -1, sidePx + 1, sidePx + 1), QRegion::Ellipse));
    painter.fillRect(image.rect(), Qt::black);
    return image;
}

QString toneName(const ToneColours &tone) { return tone.folder; }

} // namespace

class TestArtwork : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void treeHoldsExactlyTheNamedFiles();
    void fileIsWellFormed_data();
    void fileIsWellFormed();
    void glyphPairsDifferInFillOnly_data();
    void glyphPairsDifferInFillOnly();
    void templateIconIsBlack();
    void handPointsToThreeOClock_data();
    void handPointsToThreeOClock();
    void handsDiffer();
    void outlineLiesInsideTheMask_data();
    void outlineLiesInsideTheMask();
    void handsStayInsideTheTrack_data();
    void handsStayInsideTheTrack();
    void dialHasSixtyTicksAndStrongQuarters_data();
    void dialHasSixtyTicksAndStrongQuarters();
    void textsLieInFreePlaces_data();
    void textsLieInFreePlaces();
    void gripFillsItsCornerOnly_data();
    void gripFillsItsCornerOnly();
    void differenceFollowsItsReference_data();
    void differenceFollowsItsReference();
    void contrastsSuffice_data();
    void contrastsSuffice();
    void tonesAreToldApart();
};

void TestArtwork::init() { QTest::failOnWarning(); }

void TestArtwork::treeHoldsExactlyTheNamedFiles()
{
    QStringList expected;
    for (const ArtworkFile &file : artworkFiles())
        expected += file.path;
    QStringList found;
    for (const QString &folder : {u"images"_s, u"themes"_s}) {
        QDirIterator files(sourceRoot() + u'/' + folder, QDir::Files, QDirIterator::Subdirectories);
        while (files.hasNext())
            found += files.next().mid(sourceRoot().size() + 1);
    }
    expected.sort();
    found.sort();
    QCOMPARE(found, expected);
}

void TestArtwork::fileIsWellFormed_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QSize>("viewBox");
    for (const ArtworkFile &file : artworkFiles())
        QTest::newRow(qPrintable(file.path)) << file.path << file.viewBox;
}

void TestArtwork::fileIsWellFormed()
{
    QFETCH(const QString, path);
    QFETCH(const QSize, viewBox);
    const QByteArray svg = contents(path);
    QVERIFY(!svg.isEmpty());
    QVERIFY2(svg.size() < qsizetype(12) * 1024, QByteArray::number(svg.size()));
    // Image plug-ins look for the element in the first bytes only.
    QVERIFY(svg.left(512).contains("<svg"));
    QVERIFY(svg.contains("SPDX-FileCopyrightText: ") && svg.contains("SPDX-License-Identifier: "));

    QXmlStreamReader reader(svg);
    QVERIFY(reader.readNextStartElement());
    QCOMPARE(reader.attributes().value("width"_L1), "100%"_L1);
    QCOMPARE(reader.attributes().value("height"_L1), "100%"_L1);
    QCOMPARE(reader.attributes().value("viewBox"_L1).toString(),
        u"0 0 %1 %2"_s.arg(viewBox.width()).arg(viewBox.height()));
    QCOMPARE(strangers(svg), QStringList());
}

void TestArtwork::glyphPairsDifferInFillOnly_data()
{
    QTest::addColumn<QString>("glyph");
    for (const char *glyph : {"check", "toright", "tolower", "toupper"})
        QTest::newRow(glyph) << QString::fromLatin1(glyph);
}

void TestArtwork::glyphPairsDifferInFillOnly()
{
    QFETCH(const QString, glyph);
    QByteArray black = contents(u"images/%1_black.svg"_s.arg(glyph));
    const QByteArray white = contents(u"images/%1_white.svg"_s.arg(glyph));
    QCOMPARE(black.count("fill=\"#000000\""), 1);
    QVERIFY(!black.contains("stroke"));
    QCOMPARE(black.replace("fill=\"#000000\"", "fill=\"#ffffff\""), white);
}

void TestArtwork::templateIconIsBlack()
{
    const QImage icon = drawn(u"images/app_tray_icon_tmpl.svg"_s, 128);
    QCOMPARE(meanColour(icon), QColor(Qt::black));
    QCOMPARE(icon.pixelColor(0, 0).alpha(), 0);
    QCOMPARE(icon.pixelColor(64, 100).alpha(), 0); // the face is open
}

void TestArtwork::handPointsToThreeOClock_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<double>("length"); // fractions of the side from the centre
    QTest::addColumn<double>("tail");
    for (const QString &folder : {u"dark_gray"_s, u"light_gray"_s}) {
        const auto add = [&folder](const char *hand, double length, double tail) {
            const QString path = themeFile(folder, QLatin1StringView(hand));
            QTest::newRow(qPrintable(path)) << path << length << tail;
        };
        add("hand_hour", 284.0 / 1024, 66.0 / 1024);
        add("hand_minute", 446.0 / 1024, 84.0 / 1024);
        add("hand_second", 472.0 / 1024, 168.0 / 1024);
    }
}

void TestArtwork::handPointsToThreeOClock()
{
    QFETCH(const QString, path);
    QFETCH(const double, length);
    QFETCH(const double, tail);
    constexpr int sidePx = 1024;
    const QImage hand = drawn(path, sidePx);
    QCOMPARE(hand.size(), QSize(sidePx, sidePx));
    int left = sidePx;
    int right = 0;
    double moment = 0; // of the alpha about the middle line, beyond the cap
    double weight = 0;
    int strays = 0; // the hand is nowhere as wide as the cap
    for (int y = 0; y < sidePx; ++y) {
        for (int x = 0; x < sidePx; ++x) {
            const int alpha = qAlpha(hand.pixel(x, y));
            if (alpha > 128) {
                left = std::min(left, x);
                right = std::max(right, x);
            }
            if (x > 560) {
                moment += alpha * (y + 0.5 - sidePx / 2.0);
                weight += alpha;
                strays += alpha > 0 && std::abs(y - sidePx / 2) >= 28;
            }
        }
    }
    QVERIFY(weight > 0);
    QCOMPARE(strays, 0);
    QVERIFY2(std::abs(moment / weight) < 0.1, QByteArray::number(moment / weight));
    // The tip is thinner than a pixel at its very end.
    QVERIFY2(std::abs(right - sidePx * (0.5 + length)) < 8, QByteArray::number(right));
    QVERIFY2(std::abs(left - sidePx * (0.5 - tail)) < 8, QByteArray::number(left));
}

void TestArtwork::handsDiffer()
{
    const auto widthAt = [](const QImage &hand, int x) {
        int count = 0;
        for (int y = 0; y < hand.height(); ++y)
            count += qAlpha(hand.pixel(x, y)) > 128;
        return count;
    };
    for (const QString &folder : {u"dark_gray"_s, u"light_gray"_s}) {
        const QImage hour = drawn(themeFile(folder, u"hand_hour"_s), 1024);
        const QImage minute = drawn(themeFile(folder, u"hand_minute"_s), 1024);
        const QImage second = drawn(themeFile(folder, u"hand_second"_s), 1024);
        QVERIFY(widthAt(hour, 580) > 1.3 * widthAt(minute, 580));
        QVERIFY(widthAt(minute, 580) > 2.0 * widthAt(second, 580));
        // Two facets, and a taper.
        for (const QImage &hand : {hour, minute}) {
            const QList<QColor> facets = handColours(hand, 0.08, 0.2);
            QCOMPARE(facets.size(), 2);
            QVERIFY(contrast(facets[0], facets[1]) > 1.5);
            QVERIFY(widthAt(hand, 580) > 1.15 * widthAt(hand, 740));
        }
        // The second hand alone is coloured.
        QVERIFY(handColours(second, 0.1, 0.4).constFirst().hsvSaturationF() > 0.5);
        QVERIFY(handColours(hour, 0.1, 0.2).constFirst().hsvSaturationF() < 0.3);
    }
}

void TestArtwork::outlineLiesInsideTheMask_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<int>("sidePx");
    for (const ToneColours &tone : toneColours()) {
        for (int sidePx : {200, 320, 1080})
            QTest::addRow("%s %d", qPrintable(tone.folder), sidePx) << tone.folder << sidePx;
    }
}

void TestArtwork::outlineLiesInsideTheMask()
{
    QFETCH(const QString, folder);
    QFETCH(const int, sidePx);
    const QImage mask = roundMask(sidePx);
    const QImage base = drawn(themeFile(folder, u"base"_s), sidePx);
    const QImage background = drawn(themeFile(folder, u"background"_s), sidePx);
    // A pixel at side 320, so that the smooth edge shows and not the mask's.
    const double centre = sidePx / 2.0;
    const double outline = centre * 508 / 512;
    int soft = 0;
    int cut = 0;
    int holes = 0;
    for (int y = 0; y < sidePx; ++y) {
        for (int x = 0; x < sidePx; ++x) {
            const int alpha = qAlpha(base.pixel(x, y));
            const double radius = std::hypot(x + 0.5 - centre, y + 0.5 - centre);
            soft += alpha > 0 && alpha < 255;
            if (radius > outline + 1 || qAlpha(mask.pixel(x, y)) == 0)
                cut += alpha > 0 || qAlpha(background.pixel(x, y)) > 0;
            if (radius < outline - 1)
                holes += alpha < 255;
        }
    }
    QCOMPARE(cut, 0);
    QCOMPARE(holes, 0);
    // All the way round there is one or two pixels of edge.
    QVERIFY2(soft > 4 * sidePx * 508 / 1024 && soft < 12 * sidePx, QByteArray::number(soft));
}

void TestArtwork::handsStayInsideTheTrack_data()
{
    QTest::addColumn<QString>("path");
    for (const QString &folder : {u"dark_gray"_s, u"light_gray"_s}) {
        for (const char *layer : {"dial", "hand_hour", "hand_minute", "hand_second"}) {
            const QString path = themeFile(folder, QLatin1StringView(layer));
            QTest::newRow(qPrintable(path)) << path;
        }
    }
}

void TestArtwork::handsStayInsideTheTrack()
{
    QFETCH(const QString, path);
    constexpr int sidePx = 512;
    const QImage image = drawn(path, sidePx);
    double furthest = 0;
    for (int y = 0; y < sidePx; ++y) {
        for (int x = 0; x < sidePx; ++x) {
            if (qAlpha(image.pixel(x, y)) > 0)
                furthest = std::max(furthest, std::hypot(x + 0.5 - 256, y + 0.5 - 256));
        }
    }
    // The face ends at 483 of 512; the bezel is nobody's but the base's.
    QVERIFY2(furthest > 100 && furthest < 483.0 / 2, QByteArray::number(furthest));
}

void TestArtwork::dialHasSixtyTicksAndStrongQuarters_data()
{
    QTest::addColumn<QString>("folder");
    QTest::newRow("dark") << u"dark_gray"_s;
    QTest::newRow("light") << u"light_gray"_s;
}

void TestArtwork::dialHasSixtyTicksAndStrongQuarters()
{
    QFETCH(const QString, folder);
    const QImage dial = drawn(themeFile(folder, u"dial"_s), 1024);
    // Alpha summed over a sector, between two radii.
    const auto ink = [&dial](double minute, double halfDegrees, double from, double to) {
        double sum = 0;
        for (int step = int(-halfDegrees * 20); step <= halfDegrees * 20; ++step) {
            const double angle = qDegreesToRadians(minute * 6 + step / 20.0 - 90);
            for (int half = int(2 * from); half < 2 * to; ++half) {
                const double radius = half / 2.0;
                const QPoint at(
                    int(512 + radius * std::cos(angle)), int(512 + radius * std::sin(angle)));
                sum += qAlpha(dial.pixel(at));
            }
        }
        return sum;
    };
    const double tick = ink(1, 1.5, 448, 480);
    QVERIFY(tick > 0);
    for (int minute = 0; minute < 60; ++minute) {
        const double here = ink(minute, 1.5, 448, 480);
        if (minute % 5)
            QVERIFY2(std::abs(here / tick - 1) < 0.1, QByteArray::number(minute));
        else
            QVERIFY2(here > 1.5 * tick, QByteArray::number(minute));
        QVERIFY2(ink(minute + 0.5, 1.5, 448, 480) == 0, QByteArray::number(minute));
    }
    const double mark = ink(5, 5, 360, 443);
    for (int hour = 0; hour < 12; ++hour) {
        const double here = ink(hour * 5, 5, 360, 443);
        if (hour % 3)
            QVERIFY2(std::abs(here / mark - 1) < 0.1, QByteArray::number(hour));
        else
            QVERIFY2(here > 1.5 * mark, QByteArray::number(hour));
    }
    // Twelve is two bars with a gap, as no other mark is.
    QVERIFY(qAlpha(dial.pixel(512, 100)) < 128);
    QCOMPARE(qAlpha(dial.pixel(512, 924)), 255);
}

void TestArtwork::textsLieInFreePlaces_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QRectF>("area");
    for (const QString &folder : {u"dark_gray"_s, u"light_gray"_s}) {
        QTest::addRow("%s logo", qPrintable(folder)) << folder << logoArea();
        QTest::addRow("%s time", qPrintable(folder)) << folder << timeArea();
        QTest::addRow("%s date", qPrintable(folder)) << folder << dateArea();
        QTest::addRow("%s AM/PM", qPrintable(folder)) << folder << amPmArea();
    }
}

void TestArtwork::textsLieInFreePlaces()
{
    QFETCH(const QString, folder);
    QFETCH(const QRectF, area);
    constexpr int sidePx = 1024;
    const QImage dial = drawn(themeFile(folder, u"dial"_s), sidePx);
    const QRect pixels = QRectF(area.topLeft() * sidePx, area.size() * sidePx).toRect();
    QImage empty = dial.copy(pixels);
    empty.fill(Qt::transparent);
    QCOMPARE(dial.copy(pixels), empty);
}

void TestArtwork::gripFillsItsCornerOnly_data()
{
    QTest::addColumn<QString>("folder");
    for (const ToneColours &tone : toneColours())
        QTest::newRow(qPrintable(tone.folder)) << tone.folder;
}

void TestArtwork::gripFillsItsCornerOnly()
{
    QFETCH(const QString, folder);
    const QString path = themeFile(folder, u"resize_grip"_s);
    const QImage grip = drawn(path, 64);
    double opaque = 0;
    QColor lightest(Qt::black);
    QColor darkest(Qt::white);
    for (int y = 0; y < 64; ++y) {
        for (int x = 0; x < 64; ++x) {
            const QColor pixel = grip.pixelColor(x, y);
            if (x >= 4 && y >= 4 && x < 24 && y < 24)
                QVERIFY2(pixel.alpha() == 255, qPrintable(u"%1, %2"_s.arg(x).arg(y)));
            if (x + y > 72)
                QVERIFY2(pixel.alpha() == 0, qPrintable(u"%1, %2"_s.arg(x).arg(y)));
            if (pixel.alpha() < 255)
                continue;
            ++opaque;
            lightest = pixel.lightness() > lightest.lightness() ? pixel : lightest;
            darkest = pixel.lightness() < darkest.lightness() ? pixel : darkest;
        }
    }
    QVERIFY(opaque > 0.25 * 64 * 64 && opaque < 0.6 * 64 * 64);
    // The face shows it at four fifths; it stands out from a white and from a black wallpaper.
    QVERIFY(contrast(blended(darkest, 0.8, Qt::white), Qt::white) >= 3);
    QVERIFY(contrast(blended(lightest, 0.8, Qt::black), Qt::black) >= 3);

    // At side 320 the clock leaves all of it free.
    const QImage base = drawn(themeFile(folder, u"base"_s), 320);
    const QImage shown = drawn(path, 32);
    for (int y = 0; y < 32; ++y) {
        for (int x = 0; x < 32; ++x)
            QVERIFY(qAlpha(shown.pixel(x, y)) == 0 || qAlpha(base.pixel(x, y)) == 0);
    }
}

void TestArtwork::differenceFollowsItsReference_data()
{
    QTest::addColumn<Lab>("first");
    QTest::addColumn<Lab>("second");
    QTest::addColumn<double>("difference");
    const auto add = [](const char *name, Lab first, Lab second, double difference) {
        QTest::newRow(name) << first << second << difference;
    };
    // From the test data that G. Sharma, W. Wu and E. Dalal published with the formula.
    add("blue 1", {50, 2.6772, -79.7751}, {50, 0, -82.7485}, 2.0425);
    add("blue 3", {50, 2.8361, -74.0200}, {50, 0, -82.7485}, 3.4412);
    add("from grey", {50, 0, 0}, {50, -1, 2}, 2.3669);
    add("across 180 degrees", {50, 2.49, -0.001}, {50, -2.49, 0.0009}, 7.1792);
    add("just past it", {50, 2.49, -0.001}, {50, -2.49, 0.0011}, 7.2195);
    add("large 1", {50, 2.5, 0}, {73, 25, -18}, 27.1492);
    add("large 2", {50, 2.5, 0}, {61, -5, 29}, 22.8977);
    add("large 3", {50, 2.5, 0}, {56, -27, -3}, 31.9030);
    add("green", {60.2574, -34.0099, 36.2677}, {60.4626, -34.1751, 39.4387}, 1.2644);
    add("near black", {2.0776, 0.0795, -1.1350}, {0.9033, -0.0636, -0.5514}, 0.9082);
}

void TestArtwork::differenceFollowsItsReference()
{
    QFETCH(const Lab, first);
    QFETCH(const Lab, second);
    QFETCH(const double, difference);
    const double found = colourDifference(first, second);
    QVERIFY2(std::abs(found - difference) < 0.0001, QByteArray::number(found));
    QVERIFY(std::abs(colourDifference(second, first) - difference) < 0.0001);
    // sRGB's corners, by daylight.
    QVERIFY(std::abs(colourDifference(QColor(Qt::black), QColor(Qt::white)) - 100) < 0.01);
    QVERIFY(std::abs(colourDifference(QColor(255, 0, 0), QColor(0, 255, 0)) - 86.61) < 0.01);
}

void TestArtwork::contrastsSuffice_data()
{
    QTest::addColumn<int>("tone");
    QTest::addColumn<bool>("background");
    for (int i = 0; i < toneColours().size(); ++i) {
        const QString name = toneName(toneColours()[i]);
        QTest::addRow("%s", qPrintable(name)) << i << true;
        QTest::addRow("%s plate", qPrintable(name)) << i << false;
    }
}

void TestArtwork::contrastsSuffice()
{
    QFETCH(const int, tone);
    QFETCH(const bool, background);
    const ToneContrasts low = toneContrasts(sourceRoot(), toneColours()[tone], background);
    const auto text = [](double value) { return QByteArray::number(value); };
    QVERIFY2(low.hands >= 3, text(low.hands));
    QVERIFY2(low.accent >= 3, text(low.accent));
    QVERIFY2(low.marks >= 3, text(low.marks));
    QVERIFY2(low.logo >= 4.5, text(low.logo));
    // Large texts; the fixed colours at the default opacities allow little more on a saturated
    // face.
    QVERIFY2(low.time >= 4.2, text(low.time));
    QVERIFY2(low.date >= 4.2, text(low.date));
}

void TestArtwork::tonesAreToldApart()
{
    PictureOptions options;
    options.sidePx = 72;
    options.texts = false;
    options.time = QDateTime(QDate(2026, 11, 20), QTime(10, 8, 42));
    QList<QColor> means;
    for (const ToneColours &tone : toneColours())
        means += meanColour(clockPicture(sourceRoot(), tone, options));
    for (qsizetype i = 0; i < means.size(); ++i) {
        for (qsizetype j = 0; j < i; ++j) {
            const double difference = colourDifference(means[i], means[j]);
            QVERIFY2(difference >= 10,
                qPrintable(u"%1 and %2: %3"_s.arg(toneName(toneColours()[i]),
                    toneName(toneColours()[j]), QString::number(difference))));
        }
    }
}

QTEST_MAIN(TestArtwork)
#include "tst_artwork.moc"
