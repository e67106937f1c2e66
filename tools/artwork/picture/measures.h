// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include "tools/artwork/picture/clockpicture.h"

/// The lowest contrasts on one tone's face, each over every pixel that the thing can lie on.
struct ToneContrasts {
    double hands = 0; // the weaker facet of the hour and minute hands
    double accent = 0; // the second hand
    double marks = 0; // the weaker facet of the applied marks
    double logo = 0;
    double time = 0;
    double date = 0;
};

/// Measured in the drawn artwork below \a root; without the face background the plate shows.
ToneContrasts toneContrasts(const QString &root, const ToneColours &tone, bool background);

/// The layers of \a tone that do not turn, without the dial, drawn \a sidePx wide.
QImage face(const QString &root, const ToneColours &tone, int sidePx, bool background);

/// Where the texts lie, in fractions of the face's side, as wide as the widest usual font makes
/// them.
QRectF logoArea();
QRectF timeArea();
QRectF dateArea();
/// The AM/PM tag does not grow with the clock: this is its place from side 200 on.
QRectF amPmArea();

/// The colours of the opaque pixels of a hand above and below its middle line, between two
/// distances from the centre in fractions of the side.
QList<QColor> handColours(const QImage &hand, double from, double to);
