// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>

class QImage;

/// The contrast of two opaque colours, from 1 to 21, by their relative luminance (WCAG 2).
double contrast(QColor a, QColor b);

/// How far two opaque colours lie apart for the eye (CIEDE2000, D65).
double colourDifference(QColor a, QColor b);

/// \a colour at the opacity \a alpha over an opaque \a ground.
QColor blended(QColor colour, double alpha, QColor ground);

/// The mean of the pixels of \a image that are not transparent, each counted by its alpha.
QColor meanColour(const QImage &image);
