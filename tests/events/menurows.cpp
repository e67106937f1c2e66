// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/events/menurows.h"

#include <algorithm>

namespace
{

// From manager/applicationstyle.h: a separator and the frame have the one colour, the check mark is
// black, in front of the text.
constexpr QRgb lineColour = qRgb(0xBB, 0xBB, 0xBB);
constexpr int cornerPx = 8;
constexpr int lineLeft = 5;
constexpr int markLeft = 7;
constexpr int markRight = 20;
constexpr int dark = 100;

// The rows of pixels between the frame and the lines, from and to.
QList<std::pair<int, int>> sections(const QImage &picture)
{
    QList<std::pair<int, int>> result;
    int begin = 1;
    for (int y = cornerPx; y < picture.height() - cornerPx; ++y) {
        if ((picture.pixel(lineLeft, y) | 0xFF000000) == lineColour) {
            result.append({begin, y});
            begin = y + 1;
        }
    }
    result.append({begin, picture.height() - 1});
    return result;
}

bool hasMark(const QImage &picture, QRect row)
{
    for (int y = row.top(); y <= row.bottom(); ++y) {
        for (int x = markLeft; x <= markRight; ++x) {
            if (qGray(picture.pixel(x, y)) < dark)
                return true;
        }
    }
    return false;
}

} // namespace

QList<MenuRow> menuRows(const QImage &picture)
{
    QList<MenuRow> result;
    if (picture.width() <= markRight || picture.height() <= cornerPx)
        return result;
    const auto found = sections(picture);
    // Every menu of the clock has a section with a single entry.
    int rowHeight = picture.height();
    for (const auto &[begin, end] : found)
        rowHeight = std::min(rowHeight, end - begin);
    for (const auto &[begin, end] : found) {
        for (int y = begin; rowHeight > 0 && y + rowHeight <= end; y += rowHeight) {
            const QRect place(0, y, picture.width(), rowHeight);
            result.append({place, hasMark(picture, place)});
        }
    }
    return result;
}
