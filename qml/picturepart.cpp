// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "qml/picturepart.h"

#include <QtCore/qtextstream.h>

#include <algorithm>
#include <iterator>

namespace
{

// About the filled part: the same drawing at another size may reach a little further, and lines are
// left out below.
constexpr double room = 1.0 / 64;
constexpr int lines = 512; // to look at, at most twice as many

// A picture that was cut says by itself where it lies in the whole one, so that it is never taken
// for that: its left and top edge, and the width and height of the whole, in pixels. No picture
// file has a text of this name by chance.
constexpr QLatin1StringView placeText("vesper.place");

// The pixels of a line from the first to the last that is not clear.
QRect filledPixels(const QImage &picture, int y)
{
    const auto *begin = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
    const auto *end = begin + picture.width();
    const auto isFilled = [](QRgb pixel) { return qAlpha(pixel) != 0; };
    const auto *first = std::find_if(begin, end, isFilled);
    if (first == end)
        return {};
    const auto *last
        = std::find_if(std::reverse_iterator(end), std::reverse_iterator(first), isFilled).base();
    return {int(first - begin), y, int(last - first), 1};
}

} // namespace

QRectF PicturePart::scaled(QRectF part, QSizeF size)
{
    return {part.x() * size.width(), part.y() * size.height(), part.width() * size.width(),
        part.height() * size.height()};
}

QRectF PicturePart::filled(const QImage &picture)
{
    const QImage pixels = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QRect filled;
    for (int y = 0; y < pixels.height(); y += std::max(1, pixels.height() / lines))
        filled |= filledPixels(pixels, y);
    if (filled.isEmpty())
        return whole;
    const QRectF part(double(filled.x()) / pixels.width(), double(filled.y()) / pixels.height(),
        double(filled.width()) / pixels.width(), double(filled.height()) / pixels.height());
    return part.adjusted(-room, -room, room, room) & whole;
}

QImage PicturePart::cut(const QImage &picture, QRectF part)
{
    const QRect pixels = scaled(part, picture.size()).toAlignedRect() & picture.rect();
    if (pixels.isEmpty())
        return {}; // QImage::copy() would take that for all
    QImage result = picture.copy(pixels);
    QString place;
    QTextStream(&place) << pixels.x() << ' ' << pixels.y() << ' ' << picture.width() << ' '
                        << picture.height();
    result.setText(placeText, place);
    return result;
}

bool PicturePart::isCut(const QImage &picture) { return !picture.text(placeText).isEmpty(); }

QRectF PicturePart::held(const QImage &picture)
{
    QString place = picture.text(placeText);
    if (place.isEmpty())
        return whole;
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    QTextStream(&place) >> x >> y >> width >> height;
    return {x / width, y / height, picture.width() / width, picture.height() / height};
}
