// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qstring.h>

/// True for "ja", "ja-JP" and "ja_JP" in any case, and for nothing else.
[[nodiscard]] bool isJapaneseLanguage(const QString &languageName);
