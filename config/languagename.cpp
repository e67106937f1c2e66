// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "config/languagename.h"

#include <QtCore/qlocale.h>

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

QString languageOfLocaleName(QString localeName)
{
    // Cutting at -1 leaves nothing.
    localeName.truncate(localeName.lastIndexOf(u'_'));
    return localeName;
}

QString systemLanguageName() { return languageOfLocaleName(QLocale::system().name()); }

bool isJapaneseLanguage(const QString &languageName)
{
    static constexpr std::array names{"ja"_L1, "ja-JP"_L1, "ja_JP"_L1};
    return std::any_of(names.begin(), names.end(), [&languageName](QLatin1StringView name) {
        return languageName.compare(name, Qt::CaseInsensitive) == 0;
    });
}
