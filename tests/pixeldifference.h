// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGui/qimage.h>

#include <algorithm>
#include <cstdlib>

/// The greatest difference of a colour channel of any pixel, of 255; 255 for pictures of two sizes.
[[nodiscard]] inline int greatestDifference(const QImage &one, const QImage &other)
{
    if (one.size() != other.size())
        return 255;
    int greatest = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            greatest = std::max({greatest, std::abs(qRed(a) - qRed(b)),
                std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
        }
    }
    return greatest;
}
