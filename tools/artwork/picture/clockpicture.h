// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QColor>
#include <QDateTime>
#include <QImage>
#include <QList>
#include <QString>

/// One colour tone as the clock face sees it: its folders and the three colours of its texts.
struct ToneColours {
    QString folder;
    QString sharedFolder;
    QColor text;
    QColor textBack;
    QColor logo;
};

/// The ten tones in the order of the catalogue, dark ones first.
const QList<ToneColours> &toneColours();

/// What a picture of the clock shows. The defaults are those of the settings.
struct PictureOptions {
    int sidePx = 320;
    QDateTime time;
    bool background = true;
    bool secondHand = true;
    bool texts = true;
    bool amPm = false;
};

/// The SVG file at \a path drawn \a sidePx wide and high by Qt's image plug-in, premultiplied.
/// Null when the file cannot be read.
QImage rasterised(const QString &path, int sidePx);

/// The whole clock in the tone \a tone from the artwork below \a root, as the clock face stacks it:
/// every layer at three times the side, the hands turned, the texts above. Empty corners are
/// transparent.
QImage clockPicture(const QString &root, const ToneColours &tone, const PictureOptions &options);
