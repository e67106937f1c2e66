// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGui/qimage.h>

/// Draws layers of the clock for the pixels of a screen. Reentrant.
namespace LayerDrawing
{

/// How a layer is shown.
struct Place {
    int side; ///< of the clock, in device-independent pixels
    double ratio; ///< pixels of the screen for each of them
};

/// The whole of \a file at the size of \a place, reduced by area from a larger drawing. The size is
/// at most 8192 by 8192 pixels. Null when the file cannot be drawn or no pixel shows it.
[[nodiscard]] QImage standing(const QString &file, Place place);

/// The horizontal strip about the centre of \a file that is not clear, two pixels for each of the
/// screen, at most 8192 in a row. An Image as large as the clock that preserves the aspect ratio
/// shows the strip where it is in the file. Null when the file cannot be drawn or no pixel shows
/// it. Hands are narrow: for one that fills its file the drawing may be larger than Qt permits.
[[nodiscard]] QImage hand(const QString &file, Place place);

} // namespace LayerDrawing
