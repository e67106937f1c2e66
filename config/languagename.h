// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qstring.h>

/// What stands before the last underscore of a locale's name ("ja" of "ja_JP"). Empty when there is
/// no underscore, which is meant: an empty language has no catalogue.
[[nodiscard]] QString languageOfLocaleName(QString localeName);

/// The same of the system's locale: the language of the interface, the date and the licence.
[[nodiscard]] QString systemLanguageName();

/// True for "ja", "ja-JP" and "ja_JP" in any case, and for nothing else.
[[nodiscard]] bool isJapaneseLanguage(const QString &languageName);
