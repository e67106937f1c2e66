// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tools/artwork/picture/measures.h"

#include "tools/artwork/picture/colourmath.h"

#include <QPainter>
#include <QSet>

#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

constexpr int measuredPx = 512;
// Hands and marks stay within the minute track.
constexpr double sweptRadius = 475.0 / 1024;

QImage layer(const QString &root, const QString &folder, QLatin1StringView name, int sidePx)
{
    return rasterised(
        root + "/themes/basic/"_L1 + folder + "/clock_"_L1 + name + ".svg"_L1, sidePx);
}

/// Every colour that \a image shows where \a holds takes in; far fewer than it has pixels.
template <typename Predicate> QSet<QRgb> coloursWhere(const QImage &image, Predicate holds)
{
    QSet<QRgb> result;
    const double side = image.width();
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            if (holds((x + 0.5) / side, (y + 0.5) / side))
                result += line[x];
        }
    }
    return result;
}

double lowestWithin(const QImage &ground, const QList<QColor> &colours)
{
    const QSet<QRgb> pixels = coloursWhere(
        ground, [](double x, double y) { return std::hypot(x - 0.5, y - 0.5) < sweptRadius; });
    double result = 21;
    for (QRgb pixel : pixels) {
        for (QColor colour : colours)
            result = std::min(result, contrast(colour, QColor(pixel)));
    }
    return result;
}

double lowestOfText(
    const QImage &ground, QRectF area, QColor text, double alpha, QColor back, double backAlpha)
{
    const QSet<QRgb> pixels
        = coloursWhere(ground, [area](double x, double y) { return area.contains(x, y); });
    double result = 21;
    for (QRgb pixel : pixels) {
        const QColor panel = blended(back, backAlpha, QColor(pixel));
        result = std::min(result, contrast(blended(text, alpha, panel), panel));
    }
    return result;
}

/// The darkest and the lightest colour of the applied marks.
QList<QColor> markColours(const QImage &dial)
{
    QColor dark(Qt::white);
    QColor light(Qt::black);
    const double side = dial.width();
    for (int y = 0; y < dial.height(); ++y) {
        for (int x = 0; x < dial.width(); ++x) {
            const double radius = std::hypot((x + 0.5) / side - 0.5, (y + 0.5) / side - 0.5);
            const QColor pixel = dial.pixelColor(x, y);
            if (radius > 440.0 / 1024 || pixel.alpha() < 255)
                continue;
            if (pixel.lightness() < dark.lightness())
                dark = pixel;
            if (pixel.lightness() > light.lightness())
                light = pixel;
        }
    }
    return {dark, light};
}

} // namespace

QImage face(const QString &root, const ToneColours &tone, int sidePx, bool background)
{
    QImage image = layer(root, tone.folder, "base"_L1, sidePx);
    if (background)
        QPainter(&image).drawImage(0, 0, layer(root, tone.folder, "background"_L1, sidePx));
    return image;
}

QRectF logoArea() { return QRectF(0.5 - 0.17, 0.5 - 0.287 - 0.036, 0.34, 0.072); }

QRectF timeArea() { return QRectF(0.49 - 0.23, 0.68 - 0.05, 0.46, 0.10); }

QRectF dateArea()
{
    // A line of 1.33 times the font's size; the sides are those of a Japanese date with its era.
    return QRectF(0.515 - 0.365, 0.37 - 0.053, 0.73, 0.106);
}

QRectF amPmArea() { return QRectF(0.68, 0.60, 0.14, 0.11); }

QList<QColor> handColours(const QImage &hand, double from, double to)
{
    const int middle = hand.height() / 2;
    const int first = middle + int(from * hand.width());
    const int last = middle + int(to * hand.width());
    QList<QColor> result;
    for (const auto &[top, bottom] :
        {std::pair(0, middle - 1), std::pair(middle + 1, hand.height())}) {
        QImage half = hand.copy(first, top, last - first, bottom - top);
        for (int y = 0; y < half.height(); ++y) {
            for (int x = 0; x < half.width(); ++x) {
                if (qAlpha(half.pixel(x, y)) < 255)
                    half.setPixel(x, y, 0);
            }
        }
        if (const QColor mean = meanColour(half); mean.isValid())
            result += mean;
    }
    return result;
}

ToneContrasts toneContrasts(const QString &root, const ToneColours &tone, bool background)
{
    const QImage ground = face(root, tone, measuredPx, background);
    const auto hand = [&](QLatin1StringView name, double to) {
        return handColours(layer(root, tone.sharedFolder, name, 1024), 0.06, to);
    };
    ToneContrasts result;
    result.hands = lowestWithin(ground, hand("hand_hour"_L1, 0.25) + hand("hand_minute"_L1, 0.40));
    result.accent = lowestWithin(ground, hand("hand_second"_L1, 0.45));
    result.marks
        = lowestWithin(ground, markColours(layer(root, tone.sharedFolder, "dial"_L1, 1024)));
    result.logo = lowestOfText(ground, logoArea(), tone.logo, 0.8, tone.textBack, 0);
    result.time = lowestOfText(ground, timeArea(), tone.text, 0.7, tone.textBack, 0.3);
    result.date = lowestOfText(ground, dateArea(), tone.text, 0.7, tone.textBack, 0.3);
    return result;
}
