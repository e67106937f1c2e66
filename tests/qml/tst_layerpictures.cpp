// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The layers as the screen shows them, beside the same drawing some times as large, turned as a
// drawing and reduced by taking averages. The screen's pixel ratio comes from outside.

#include "qml/layerdrawing.h"
#include "qml/layerpictures.h"
#include "tests/qml/documents.h"

#include <QtCore/qbuffer.h>
#include <QtCore/qfile.h>
#include <QtCore/qmath.h>
#include <QtCore/qregularexpression.h>
#include <QtGui/qimagereader.h>

#include <array>
#include <cmath>
#include <map>

using namespace Qt::StringLiterals;

namespace
{

constexpr int readyStatus = 1; // Image.Ready
constexpr int errorStatus = 3; // Image.Error
constexpr int secondsAMinute = 60;

enum Column { Hour, Minute, Second, Standing };

struct Layer {
    const char *name; // of the theme's property
    int index; // among the face's images
    Column column;
};
constexpr Layer layers[]
    = {{"base", 0, Standing}, {"background", 1, Standing}, {"dial", 2, Standing},
        {"handHour", 3, Hour}, {"handMinute", 4, Minute}, {"handSecond", 5, Second}};

// The mean difference of a channel, of 255, that was measured when the layers were first reduced by
// area, by pixels of the screen. It may be a tenth more.
struct Measured {
    int pixels;
    std::array<double, 4> difference;
};
constexpr Measured measured[] = {{72, {6.6, 7.7, 4.4, 2.6}}, {100, {4.6, 6.8, 4.5, 1.3}},
    {160, {3.4, 4.6, 4.7, 1.1}}, {320, {1.9, 2.6, 3.6, 0.9}}, {720, {1.0, 1.2, 1.6, 0.4}}};
constexpr double tolerance = 1.1;

double mostDifference(Column column, int pixels)
{
    const auto *after = std::ranges::find_if(
        measured, [pixels](const Measured &row) { return row.pixels >= pixels; });
    if (after == std::begin(measured))
        return tolerance * after->difference[column];
    const auto *before = std::prev(after);
    if (after == std::end(measured))
        return tolerance * before->difference[column];
    const double share = double(pixels - before->pixels) / (after->pixels - before->pixels);
    return tolerance * std::lerp(before->difference[column], after->difference[column], share);
}

const QRgb *row(const QImage &image, int y)
{
    return reinterpret_cast<const QRgb *>(image.constScanLine(y));
}

// A layer drawn at \a angleDegrees on \a ground, and which pixels are its own.
struct Reference {
    QImage picture;
    QImage coverage; // 0 where nothing is drawn
};

QByteArray turnedDrawing(const QString &path, double angleDegrees)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("no drawing %s", qPrintable(path));
    QByteArray svg = file.readAll();
    const auto begin = svg.indexOf('>', svg.indexOf("<svg")) + 1;
    svg.insert(begin, "<g transform=\"rotate(" + QByteArray::number(angleDegrees) + " 512 512)\">");
    return svg.replace("</svg>", "</g></svg>");
}

// The mean of \a factor times \a factor pixels at (\a x, \a y) of the reduced picture.
std::array<int, 4> meanPixel(const QImage &large, int x, int y, int factor)
{
    std::array<int, 4> sum{};
    for (int i = 0; i < factor; ++i) {
        const QRgb *pixel = row(large, y * factor + i) + x * factor;
        for (const QRgb *end = pixel + factor; pixel != end; ++pixel) {
            sum[0] += qRed(*pixel);
            sum[1] += qGreen(*pixel);
            sum[2] += qBlue(*pixel);
            sum[3] += qAlpha(*pixel);
        }
    }
    for (int &channel : sum)
        channel = qRound(double(channel) / (factor * factor));
    return sum;
}

Reference reference(const QString &path, double angleDegrees, int pixels, QColor ground)
{
    const int factor = pixels <= 320 ? 8 : pixels <= 960 ? 4 : 2;
    constexpr int band = 32; // rows at a time, as the whole would take much memory
    QByteArray svg = turnedDrawing(path, angleDegrees);
    Reference result{QImage(pixels, pixels, QImage::Format_RGB32),
        QImage(pixels, pixels, QImage::Format_Grayscale8)};
    for (int top = 0; top < pixels; top += band) {
        const int rows = std::min(band, pixels - top);
        QBuffer buffer(&svg);
        QImageReader reader(&buffer, "svg");
        reader.setScaledSize(QSize(pixels, pixels) * factor);
        reader.setScaledClipRect({0, top * factor, pixels * factor, rows * factor});
        const QImage large = reader.read();
        for (int y = 0; y < rows; ++y) {
            auto *pixel = reinterpret_cast<QRgb *>(result.picture.scanLine(top + y));
            uchar *coverage = result.coverage.scanLine(top + y);
            for (int x = 0; x < pixels; ++x) {
                const auto [red, green, blue, alpha] = meanPixel(large, x, y, factor);
                const int clear = 255 - alpha;
                pixel[x] = qRgb(red + ground.red() * clear / 255,
                    green + ground.green() * clear / 255, blue + ground.blue() * clear / 255);
                coverage[x] = uchar(alpha);
            }
        }
    }
    return result;
}

int difference(QRgb a, QRgb b)
{
    return std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b))
        + std::abs(qBlue(a) - qBlue(b));
}

double meanDifference(const QImage &seen, const Reference &expected)
{
    double sum = 0;
    qint64 channels = 0;
    for (int y = 0; y < expected.picture.height(); ++y) {
        const uchar *coverage = expected.coverage.constScanLine(y);
        for (int x = 0; x < expected.picture.width(); ++x) {
            if (coverage[x] == 0)
                continue;
            sum += difference(row(seen, y)[x], row(expected.picture, y)[x]);
            channels += 3;
        }
    }
    return channels > 0 ? sum / double(channels) : 255;
}

// How much of a hand a picture shows, in stretches along it; and where its centre of mass is.
struct HandMass {
    std::map<int, double> stretches;
    QPointF centre;
};

HandMass massOf(const QImage &picture, const QImage &coverage, double angleDegrees, QColor ground)
{
    constexpr double stretch = 3; // pixels
    const double angle = qDegreesToRadians(angleDegrees);
    const double middle = picture.width() / 2.0;
    HandMass result;
    double sum = 0;
    // Its own pixels and their neighbours, so that what lies beside them is not missed.
    const auto isNear = [&coverage](int x, int y) {
        for (int j = std::max(y - 1, 0); j <= std::min(y + 1, coverage.height() - 1); ++j) {
            for (int i = std::max(x - 1, 0); i <= std::min(x + 1, coverage.width() - 1); ++i) {
                if (coverage.constScanLine(j)[i] != 0)
                    return true;
            }
        }
        return false;
    };
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x) {
            const int mass = difference(row(picture, y)[x], ground.rgb());
            if (mass == 0 || !isNear(x, y))
                continue;
            const QPointF place(x + 0.5 - middle, y + 0.5 - middle);
            const double along = place.x() * std::cos(angle) + place.y() * std::sin(angle);
            result.stretches[int(std::floor(along / stretch))] += mass;
            result.centre += place * mass;
            sum += mass;
        }
    }
    if (sum > 0)
        result.centre /= sum;
    return result;
}

// The least share of what is expected that any stretch shows, to the mean of all stretches.
double leastShare(const HandMass &seen, const HandMass &expected)
{
    double greatest = 0;
    for (const auto &[stretch, mass] : expected.stretches)
        greatest = std::max(greatest, mass);
    double least = INFINITY;
    double sum = 0;
    int count = 0;
    for (const auto &[stretch, mass] : expected.stretches) {
        if (mass < greatest / 20) // beyond an end
            continue;
        const auto found = seen.stretches.find(stretch);
        const double share = found == seen.stretches.end() ? 0 : found->second / mass;
        least = std::min(least, share);
        sum += share;
        ++count;
    }
    return sum > 0 ? least / (sum / count) : 0;
}

struct Tone {
    const char *name;
    QColor ground; // of the greatest contrast with the hands
};
constexpr Tone tones[] = {{"DarkBlue", QColor(0, 0, 0)}, {"LightGray", QColor(255, 255, 255)}};

// The clock face in a window, with one layer visible.
class OneLayer
{
public:
    OneLayer(const Tone &tone, int side, const Layer &layer)
    {
        pictures.addTo(&documents.engine);
        pictures.setWindow(&view);
        documents.theme.changeColorTone(u"Basic"_s, QLatin1StringView(tone.name));
        view.setColor(tone.ground);
        view.resize(side, side);
        QQuickItem *face = documents.createFace(view, side);
        if (!face)
            qFatal("the clock face does not load");
        QList<QQuickItem *> images;
        for (QQuickItem *item : face->childItems()) {
            // What stands in for an item on a GPU is as visible as the item.
            if (!item->inherits("QQuickShaderEffectSource"))
                item->setVisible(false);
            if (item->property("sourceRatio").isValid())
                images.append(item);
        }
        image = images.at(layer.index);
        image->setVisible(true);
        path = documents.theme.property(layer.name).toUrl().toString().mid(3); // without "qrc"
        view.show();
        if (!QTest::qWaitForWindowExposed(&view) || !QTest::qWaitFor([this] { return isReady(); }))
            qFatal("the layer does not appear");
        QCoreApplication::processEvents();
    }
    bool isReady() const { return image->property("status").toInt() == readyStatus; }
    int pixels() const { return qRound(view.width() * view.effectiveDevicePixelRatio()); }
    QImage seenAt(double angleDegrees)
    {
        QMetaObject::invokeMethod(image, "setAngle", QVariant(angleDegrees));
        return view.grabWindow().convertToFormat(QImage::Format_RGB32);
    }

    LayerPictures pictures; // outlives the engine, which calls it
    Documents documents{Documents::AllObjects};
    QQuickView view;
    QQuickItem *image = nullptr;
    QString path;
};

} // namespace

class tst_LayerPictures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnRealWarning(); }
    void looksLikeTheDrawing_data();
    void looksLikeTheDrawing();
    void haveTheScreensPixels();
    void keepTheirProperties();
    void largePicturesFollowTheSize();
    void areBounded();
    void handsAreWhole();
    void nothingIsDrawnForNoPixels();
    void missingDrawingIsAnEmptyLayer();
};

void tst_LayerPictures::looksLikeTheDrawing_data()
{
    QTest::addColumn<int>("tone");
    QTest::addColumn<int>("side");
    QTest::addColumn<int>("layer");

    for (int tone = 0; tone < int(std::size(tones)); ++tone) {
        for (const int side : {72, 100, 101, 160, 320, 720}) {
            for (int layer = 0; layer < int(std::size(layers)); ++layer)
                QTest::addRow("%s, %d, %s", tones[tone].name, side, layers[layer].name)
                    << tone << side << layer;
        }
    }
}

void tst_LayerPictures::looksLikeTheDrawing()
{
    QFETCH(int, tone);
    QFETCH(int, side);
    QFETCH(int, layer);
    const QColor ground = tones[tone].ground;
    const Column column = layers[layer].column;

    OneLayer face(tones[tone], side, layers[layer]);
    const int pixels = face.pixels();
    const int positions = column == Second ? secondsAMinute : column == Standing ? 1 : 9;
    double sum = 0;
    double least = 1;
    QPointF aside; // of the pivot, on the screen
    double across = 0; // the same, across the hand
    for (int i = 0; i < positions; ++i) {
        const double angle = column == Standing ? 0 : 360.0 / positions * i - 90;
        const QImage seen = face.seenAt(angle);
        QCOMPARE(seen.size(), QSize(pixels, pixels));
        const Reference expected = reference(face.path, angle, pixels, ground);
        sum += meanDifference(seen, expected);
        if (column == Standing)
            continue;
        const HandMass seenMass = massOf(seen, expected.coverage, angle, ground);
        const HandMass mass = massOf(expected.picture, expected.coverage, angle, ground);
        least = std::min(least, leastShare(seenMass, mass));
        const QPointF by = seenMass.centre - mass.centre;
        const double radians = qDegreesToRadians(angle);
        aside += by / positions;
        across += (by.y() * std::cos(radians) - by.x() * std::sin(radians)) / positions;
    }
    const double mean = sum / positions;
    // The hour hand's source size is less than two pixels to one from there on.
    const bool hasSmallSource = column == Hour && face.view.effectiveDevicePixelRatio() >= 1.5;
    const double most = mostDifference(column, pixels) * (hasSmallSource ? 2 : 1);
    qInfo("difference %.2f of at most %.2f, least stretch %.2f, pivot aside by (%.3f, %.3f), "
          "across by %.3f",
        mean, most, least, aside.x(), aside.y(), across);
    QCOMPARE_LE(mean, most);
    QCOMPARE_GE(least, pixels < 160 ? 1.0 / 3 : 0.5);
    QCOMPARE_LE(std::max(std::abs(aside.x()), std::abs(aside.y())), 0.1);
    QCOMPARE_LE(std::abs(across), 0.1);
}

void tst_LayerPictures::haveTheScreensPixels()
{
    for (const Layer &layer : layers) {
        OneLayer face(tones[0], 101, layer);
        const double ratio = face.view.effectiveDevicePixelRatio();
        const int width = qRound(face.image->implicitWidth() * ratio);
        const int height = qRound(face.image->implicitHeight() * ratio);
        if (layer.column == Standing) {
            QCOMPARE(QSize(width, height), QSize(face.pixels(), face.pixels()));
        } else {
            QCOMPARE(width, 2 * face.pixels());
            QCOMPARE_LT(height, width / 4);
        }
        // A change of size.
        face.view.resize(140, 140);
        face.view.contentItem()->setSize({140, 140});
        QTRY_COMPARE(qRound(face.image->implicitWidth() * ratio),
            (layer.column == Standing ? 1 : 2) * face.pixels());
    }
}

void tst_LayerPictures::keepTheirProperties()
{
    for (const Layer &layer : layers) {
        OneLayer face(tones[0], 320, layer);
        const double ratio = face.view.effectiveDevicePixelRatio();
        const bool isLong = layer.column == Minute || layer.column == Second;
        const int wanted = qRound(320 * (isLong ? 3 : std::max(1.0, 3 / ratio)));
        QCOMPARE(face.image->property("sourceSize").toSize(), QSize(wanted, wanted));
        QCOMPARE(face.image->property("source").toUrl(), QUrl(u"qrc"_s + face.path));
        QCOMPARE(face.image->size(), QSizeF(320, 320));
    }
}

// Where the source size of an image alone would be held back.
void tst_LayerPictures::largePicturesFollowTheSize()
{
    OneLayer face(tones[0], 2740, layers[5]);
    const int pixels = face.pixels();
    face.view.resize(2750, 2750);
    face.view.contentItem()->setSize({2750, 2750});
    QCOMPARE_GT(face.pixels(), pixels);
    QTRY_COMPARE(qRound(face.image->implicitWidth() * face.view.effectiveDevicePixelRatio()),
        std::min(2 * face.pixels(), 8192));
}

void tst_LayerPictures::areBounded()
{
    const QString file = u":/themes/basic/dark_gray/clock_dial.svg"_s;
    QCOMPARE(LayerDrawing::standing(file, {8192, 1}).width(), 8192);
    QCOMPARE(LayerDrawing::standing(file, {4100, 2}).width(), 8192);
    const QString hand = u":/themes/basic/dark_gray/clock_hand_second.svg"_s;
    QCOMPARE(LayerDrawing::hand(hand, {7680, 1}).width(), 8192);
}

// A strip has a clear row above and below the hand, at whatever place Image puts it.
void tst_LayerPictures::handsAreWhole()
{
    for (const auto *hand : {"hour", "minute", "second"}) {
        const QString file
            = u":/themes/basic/dark_gray/clock_hand_%1.svg"_s.arg(QLatin1StringView(hand));
        for (const double ratio : {1.0, 1.25, 1.5, 2.0, 3.0}) {
            for (int side = 72; side < 130; ++side) {
                const QImage strip = LayerDrawing::hand(file, {side, ratio});
                for (const int y : {0, strip.height() - 1}) {
                    const QRgb *begin = row(strip, y);
                    QVERIFY2(std::all_of(begin, begin + strip.width(),
                                 [](QRgb pixel) { return qAlpha(pixel) == 0; }),
                        qPrintable(u"%1, %2 at %3"_s.arg(file).arg(side).arg(ratio)));
                }
            }
        }
    }
}

void tst_LayerPictures::nothingIsDrawnForNoPixels()
{
    const QString file = u":/themes/basic/dark_gray/clock_hand_second.svg"_s;
    for (const LayerDrawing::Place place :
        {LayerDrawing::Place{0, 1}, {-1, 1}, {100, 0}, {100, NAN}, {100, INFINITY}}) {
        QVERIFY(LayerDrawing::hand(file, place).isNull());
        QVERIFY(LayerDrawing::standing(file, place).isNull());
    }
}

void tst_LayerPictures::missingDrawingIsAnEmptyLayer()
{
    OneLayer face(tones[0], 100, layers[5]);
    QTest::ignoreMessage(QtWarningMsg,
        QRegularExpression(u"^.*: Failed to get image from provider: .*none_hand_.svg"_s));
    face.image->setProperty("source", QUrl(u"qrc:/themes/basic/none_hand_.svg"_s));
    QTRY_COMPARE(face.image->property("status").toInt(), errorStatus);
    QImage empty(face.pixels(), face.pixels(), QImage::Format_RGB32);
    empty.fill(tones[0].ground);
    QCOMPARE(face.seenAt(0), empty);
}

int main(int argc, char **argv) { return runQmlTest<tst_LayerPictures>(argc, argv); }
#include "tst_layerpictures.moc"
