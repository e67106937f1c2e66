// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>

class QImage;

/// The contrast of two opaque colours, from 1 to 21, by their relative luminance (WCAG 2).
double contrast(QColor a, QColor b);

/// A colour in CIE L*a*b*.
struct Lab {
    double l;
    double a;
    double b;
};

/// How far two colours lie apart for the eye (CIEDE2000).
double colourDifference(const Lab &first, const Lab &second);

/// The same for two opaque sRGB colours, by daylight (D65).
double colourDifference(QColor first, QColor second);

/// \a colour at the opacity \a alpha over an opaque \a ground.
QColor blended(QColor colour, double alpha, QColor ground);

/// The mean of the pixels of \a image that are not transparent, each counted by its alpha.
QColor meanColour(const QImage &image);
