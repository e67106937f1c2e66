// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Names of a theme and a tone as a settings file may have them, a line each.

#include "fuzztarget.h"

#include "theme/vslistmodel.h"
#include "theme/vstheme.h"

using namespace Qt::StringLiterals;

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    const QString themeName = text.section(u'\n', 0, 0);
    const QString toneName = text.section(u'\n', 1, 1);

    static VsTheme theme;
    if (theme.themeCount() == 0)
        theme.buildThemeTable();
    theme.changeColorTone(u"Basic"_s, u"DarkBlue"_s);
    theme.changeColorTone(themeName, toneName);

    bool isThere = false;
    const qsizetype tone = theme.findTheme(themeName, &isThere).colorToneIndexOf(toneName);
    mustHold(isThere || tone < 0, "no theme, no tone");
    mustHold(theme.currentColorTone() == (tone < 0 ? u"DarkBlue"_s : toneName),
        "a tone is taken, or the old one stays");
    for (const QString &image : {theme.base(), theme.background(), theme.dial(), theme.handHour(),
             theme.handMinute(), theme.handSecond(), theme.resizeGrip()})
        mustHold(image.startsWith("qrc:/themes/basic/"_L1), "images come from the program alone");

    const VsListModel tones(&theme, VsListModel::ColorTones);
    const qsizetype row = tones.getIndexNumber(toneName);
    mustHold(row == theme.findTheme(theme.currentTheme()).colorToneIndexOf(toneName), "row");
    mustHold(tones.data(tones.index(int(row)), VsListModel::NameRole).toString()
            == (row < 0 ? QString() : toneName),
        "the name in that row");
    mustHold(!tones.data(tones.index(text.toInt() | 16)).isValid(), "no such row");
    return 0;
}
