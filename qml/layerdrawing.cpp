// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "qml/layerdrawing.h"

#include <QtGui/qimagereader.h>

#include <algorithm>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

constexpr int largestSide = 8192; // Qt reads no image above 256 MiB

int screenPixels(LayerDrawing::Place place) { return qRound(place.side * place.ratio); }

bool isVisible(LayerDrawing::Place place)
{
    return std::isfinite(place.ratio) && screenPixels(place) > 0;
}

// The \a part of \a file where the whole is \a whole large. Null when it cannot be drawn.
QImage drawn(const QString &file, QSize whole, QRect part)
{
    QImageReader reader(file);
    reader.setScaledSize(whole);
    reader.setScaledClipRect(part);
    return reader.read().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

// By area.
QImage reduced(const QImage &picture, QSize size)
{
    if (picture.isNull() || picture.size() == size)
        return picture;
    return picture.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
}

// Qt draws lines thinner than a pixel too dark; a small dial has such lines. An even factor keeps
// the centre between two pixels.
int factorFor(const QString &file, int side)
{
    constexpr int largestSideOfThinLines = 1024;
    if (file.endsWith("_dial.svg"_L1) && side <= largestSideOfThinLines)
        return 4;
    return 2 * side <= largestSide ? 2 : 1;
}

// How far a hand reaches from the horizontal line through the centre, as a share of the side.
double reachOf(const QString &file)
{
    constexpr int side = 256;
    const QImage picture = drawn(file, {side, side}, {0, 0, side, side});
    int reach = 1; // one row more: coverage below 1/255 does not show at this size
    for (int y = 0; y < picture.height(); ++y) {
        const auto *row = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
        if (std::any_of(row, row + picture.width(), [](QRgb pixel) { return pixel != 0; }))
            reach = std::max({reach, side / 2 - y + 1, y - side / 2 + 2});
    }
    return std::min(double(reach) / side, 0.5);
}

// The part of a drawing that is reduced to a strip of half its size.
struct Strip {
    QSize whole; // of the drawing
    QRect part;
};

// An Image rounds the distance of a fitted picture from its upper edge down to a whole number,
// which moves it by up to a pixel. The drawing lies in the strip so that its centre is that of the
// layer.
Strip stripFor(double reach, LayerDrawing::Place place)
{
    constexpr int candidates = 16;
    constexpr double negligible = 1e-6;
    const int pixels = screenPixels(place);
    const int width = std::min(2 * pixels, largestSide);
    const double room = reach * width + 1; // above and below the centre; one row for the filter
    const int leastHeight = std::min(2 * int(std::ceil(room)), width);
    int height = width;
    double centre = width / 2.0; // of the drawing, from the upper edge of the strip
    double leastError = width;
    for (int h = leastHeight; h <= std::min(leastHeight + 2 * candidates, width); h += 2) {
        // The same operations as Image's, so that they round alike.
        const double scale = place.side / (width / place.ratio);
        const double top = (place.side - scale * (h / place.ratio)) / 2;
        const double c = (place.side / 2.0 - std::trunc(top)) * width / place.side;
        // The drawing can be moved by quarters of a row. A thin line is most even between two rows.
        const double moved = std::abs(4 * c - std::round(4 * c)) / 4;
        const double error = moved + std::abs(c - std::round(c)) / 10;
        const bool hasRoom = std::min(c, h - c) >= room;
        if (hasRoom && error + negligible < leastError) {
            leastError = error;
            height = h;
            centre = c;
        }
    }

    // Side times ratio may be a fraction off the screen's whole pixels; the margin compensates.
    const int margin = qRound(width * (pixels / (place.side * place.ratio) - 1));
    const int wholeSide = 2 * (width + margin);
    const int twiceAbove = int(std::round(wholeSide - 4 * centre));
    const int oddRow = twiceAbove & 1; // one more row moves the centre by half a row
    return {{wholeSide, wholeSide + oddRow},
        {margin, (twiceAbove + oddRow) / 2, 2 * width, 2 * height}};
}

QRgb mean(QRgb a, QRgb b) { return (a & b) + (((a ^ b) >> 1) & 0x7f7f7f7f); }

// Turning samples four pixels of the picture, an area smaller than a pixel of the screen. A 1-2-1
// filter in both directions before halving makes up for it.
void soften(QImage &image)
{
    const auto row = [&image](int y) { return reinterpret_cast<QRgb *>(image.scanLine(y)); };
    const auto meanOf = [](QRgb *to, const QRgb *other, int count) {
        for (int i = 0; i < count; ++i)
            to[i] = mean(to[i], other[i]);
    };
    const int width = image.width();
    const int last = image.height() - 1;
    for (int y = 0; y < last; ++y)
        meanOf(row(y), row(y + 1), width);
    for (int y = last; y > 0; --y)
        meanOf(row(y), row(y - 1), width);
    for (int y = 0; y <= last; ++y) {
        QRgb *pixels = row(y);
        meanOf(pixels, pixels + 1, width - 1);
        for (int x = width - 1; x > 0; --x)
            pixels[x] = mean(pixels[x], pixels[x - 1]);
    }
}

} // namespace

QImage LayerDrawing::standing(const QString &file, Place place)
{
    if (!isVisible(place))
        return {};
    const int side = std::min(screenPixels(place), largestSide);
    const QSize large = QSize(side, side) * factorFor(file, side);
    return reduced(drawn(file, large, {{}, large}), {side, side});
}

QImage LayerDrawing::hand(const QString &file, Place place)
{
    if (!isVisible(place))
        return {};
    const Strip strip = stripFor(reachOf(file), place);
    QImage large = drawn(file, strip.whole, strip.part);
    soften(large);
    return reduced(large, strip.part.size() / 2);
}
