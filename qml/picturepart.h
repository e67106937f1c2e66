// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qrect.h>
#include <QtGui/qimage.h>

/// Parts of a picture, in shares of its width and height.
namespace PicturePart
{

constexpr QRectF whole(0, 0, 1, 1);

/// \a part of something as large as \a size.
[[nodiscard]] QRectF scaled(QRectF part, QSizeF size);

/// The part of \a picture outside of which every pixel is clear, with some room about it. All of it
/// when it is clear throughout. What is thinner than a 512th of the picture and stands apart may be
/// missed.
[[nodiscard]] QRectF filled(const QImage &picture);

/// A copy of the pixels of \a part and no others, which says which part it is. Null when memory is
/// short or there are no such pixels.
[[nodiscard]] QImage cut(const QImage &picture, QRectF part);
/// Whether \a picture was made by cut().
[[nodiscard]] bool isCut(const QImage &picture);
/// The part of the whole picture that \a picture has: whole, unless it was made by cut().
[[nodiscard]] QRectF held(const QImage &picture);

} // namespace PicturePart
