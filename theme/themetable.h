// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qlatin1stringview.h>
#include <QtGui/qrgb.h>

#include <span>

/// One colour tone of the theme "Basic".
struct ToneRow {
    QLatin1StringView name;
    const char *displayName; ///< source text, translated in the context VsTheme
    QLatin1StringView ownFolder; ///< base, background and resize grip
    QLatin1StringView sharedFolder; ///< dial and hands
    QRgb textColor;
    QRgb textBackColor;
    QRgb logoColor;
};

/// The tones in catalogue order.
std::span<const ToneRow> basicTones();
