// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qlist.h>
#include <QtCore/qrect.h>
#include <QtCore/qstring.h>
#include <QtGui/qimage.h>

/// A picture of the clock, and where its texts lie in it.
struct FacePicture {
    QImage image;
    QList<QRect> texts;

    /// The places of the texts go into the file as well, so that it needs no second one. False
    /// when it cannot be written.
    [[nodiscard]] bool save(const QString &file) const;
    /// Null image when there is none.
    static FacePicture load(const QString &file);
};

/// How far two pictures of the clock lie apart, in levels of a colour channel of 255. Texts come
/// out differently with other fonts: their places count by their mean colour only.
struct PictureDifference {
    double mean = 0; ///< of all channels of all pixels beside the texts
    double farShare = 0; ///< share of those pixels that are off by more than a trace
    double tile = 0; ///< largest shift of the mean colour of a small square: light that has turned
    double text = 1; ///< how many times more there is to read in a text's place; the worst

    /// True when no user could tell the pictures apart, but for the font.
    [[nodiscard]] bool isSmall() const;
    [[nodiscard]] QString toString() const;
};

/// Both images have the same size.
[[nodiscard]] PictureDifference differenceOf(const FacePicture &a, const FacePicture &b);

/// Grey where both are the same; every channel's difference eightfold.
[[nodiscard]] QImage differenceImage(const QImage &a, const QImage &b);
