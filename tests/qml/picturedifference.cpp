// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/qml/picturedifference.h"

#include <QtGui/qrgb.h>

#include <algorithm>
#include <array>
#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

constexpr auto textsKey = "texts"_L1;
constexpr int tileSidePx = 20;
constexpr int farLevels = 24;

using Channels = std::array<int, 3>;

Channels channelsOf(QRgb pixel) { return {qRed(pixel), qGreen(pixel), qBlue(pixel)}; }

Channels channelsAt(const QImage &image, int x, int y)
{
    return channelsOf(reinterpret_cast<const QRgb *>(image.constScanLine(y))[x]);
}

// Sums over an area; of the channels with their signs, so that what only moves cancels out.
struct Sums {
    std::array<double, 3> shift{};
    double distance = 0;
    int farPixels = 0;
    int pixels = 0;

    void add(const Channels &a, const Channels &b)
    {
        int farthest = 0;
        for (size_t i = 0; i < a.size(); ++i) {
            const int difference = b[i] - a[i];
            shift[i] += difference;
            distance += std::abs(difference);
            farthest = std::max(farthest, std::abs(difference));
        }
        farPixels += farthest > farLevels ? 1 : 0;
        ++pixels;
    }

    [[nodiscard]] double largestShift() const
    {
        double largest = 0;
        for (const double sum : shift)
            largest = std::max(largest, std::abs(sum) / std::max(pixels, 1));
        return largest;
    }
};

template <typename Wanted>
Sums sumsOf(const QImage &a, const QImage &b, const QRect &area, Wanted isWanted)
{
    Sums sums;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x <= area.right(); ++x) {
            if (isWanted(x, y))
                sums.add(channelsAt(a, x, y), channelsAt(b, x, y));
        }
    }
    return sums;
}

// How much there is to read: the steps from pixel to pixel, on average. Depends on the strokes of
// a text, and much less on their weight and width or on where exactly they are.
double edgesIn(const QImage &image, const QRect &area)
{
    double sum = 0;
    for (int y = area.top(); y <= area.bottom(); ++y) {
        for (int x = area.left(); x < area.right(); ++x) {
            const Channels from = channelsAt(image, x, y);
            const Channels to = channelsAt(image, x + 1, y);
            for (size_t i = 0; i < from.size(); ++i)
                sum += std::abs(to[i] - from[i]);
        }
    }
    return std::max(sum / (3.0 * area.width() * area.height()), 0.5); // never nothing: to divide by
}

} // namespace

bool FacePicture::save(const QString &file) const
{
    QStringList places;
    for (const QRect &place : texts)
        places += u"%1,%2,%3,%4"_s.arg(place.x())
                      .arg(place.y())
                      .arg(place.width())
                      .arg(place.height());
    QImage copy = image.convertToFormat(QImage::Format_RGB888);
    copy.setText(textsKey, places.join(u';'));
    return copy.save(file, "PNG", 0); // 0: smallest file
}

FacePicture FacePicture::load(const QString &file)
{
    const QImage image(file);
    FacePicture picture{image.convertToFormat(QImage::Format_RGB32), {}};
    for (const QString &place : image.text(textsKey).split(u';', Qt::SkipEmptyParts)) {
        const QStringList numbers = place.split(u',');
        picture.texts += QRect(numbers.value(0).toInt(), numbers.value(1).toInt(),
            numbers.value(2).toInt(), numbers.value(3).toInt());
    }
    return picture;
}

bool PictureDifference::isSmall() const
{
    // A face or a bezel that is turned by 6 degrees comes to a mean of 0.39 and a tile of 1.25, a
    // missing text to 2.3; rounding moves none of them by half as much.
    return mean <= 0.3 && farShare <= 0.0005 && tile <= 0.8 && text <= 1.5;
}

QString PictureDifference::toString() const
{
    return u"mean %1, far %2 %, tile %3, text %4"_s.arg(mean, 0, 'f', 3)
        .arg(100 * farShare, 0, 'f', 3)
        .arg(tile, 0, 'f', 2)
        .arg(text, 0, 'f', 2);
}

PictureDifference differenceOf(const FacePicture &a, const FacePicture &b)
{
    const QRect whole = a.image.rect();
    QList<QRect> texts;
    for (qsizetype i = 0; i < std::max(a.texts.size(), b.texts.size()); ++i)
        texts += (a.texts.value(i) | b.texts.value(i)) & whole;
    const auto isBesideTexts = [&texts](int x, int y) {
        return std::ranges::none_of(texts, [=](const QRect &text) { return text.contains(x, y); });
    };

    PictureDifference difference;
    const Sums all = sumsOf(a.image, b.image, whole, isBesideTexts);
    difference.mean = all.distance / (3.0 * std::max(all.pixels, 1));
    difference.farShare = double(all.farPixels) / std::max(all.pixels, 1);
    for (int y = 0; y < whole.height(); y += tileSidePx) {
        for (int x = 0; x < whole.width(); x += tileSidePx) {
            const QRect area = QRect(x, y, tileSidePx, tileSidePx) & whole;
            const Sums sums = sumsOf(a.image, b.image, area, isBesideTexts);
            // A rest that a text leaves of a square is too small for a mean.
            if (sums.pixels * 2 >= tileSidePx * tileSidePx)
                difference.tile = std::max(difference.tile, sums.largestShift());
        }
    }
    for (const QRect &text : texts) {
        const double from = edgesIn(a.image, text);
        const double to = edgesIn(b.image, text);
        difference.text = std::max(difference.text, std::max(from, to) / std::min(from, to));
    }
    return difference;
}

QImage differenceImage(const QImage &a, const QImage &b)
{
    QImage image(a.size(), QImage::Format_RGB32);
    for (int y = 0; y < a.height(); ++y) {
        for (int x = 0; x < a.width(); ++x) {
            const Channels from = channelsAt(a, x, y);
            const Channels to = channelsAt(b, x, y);
            const auto level
                = [&](size_t i) { return std::clamp(128 + 8 * (to[i] - from[i]), 0, 255); };
            image.setPixel(x, y, qRgb(level(0), level(1), level(2)));
        }
    }
    return image;
}
