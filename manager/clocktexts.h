// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qdatetime.h>
#include <QtCore/qstring.h>

/// The digital time: "hh:mm:ss" with 24 hours, or, with \a twelveHours, 00 to 11 without the
/// marker.
[[nodiscard]] QString clockTimeText(QTime time, bool twelveHours);

/// "AM" before noon, else "PM".
[[nodiscard]] QString amPmMarker(QTime time);

/// The date line in the language \a languageName: a Japanese date with its weekday mark, with the
/// era's year if \a useEra, or, in every other language, the plain text date.
[[nodiscard]] QString clockDateText(QDate date, const QString &languageName, bool useEra);

/// Name and year of the Japanese era that \a date lies in, for example "令和8年"; empty after the
/// year 9999.
[[nodiscard]] QString japaneseEraText(QDate date);
