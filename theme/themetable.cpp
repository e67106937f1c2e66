// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "theme/themetable.h"

#include <QtCore/qttranslation.h>

using namespace Qt::StringLiterals;

namespace
{

// The light tones' text colours differ in strength on purpose.
// clang-format off
constexpr ToneRow tones[] = {
    {"DarkBlue"_L1, QT_TRANSLATE_NOOP("VsTheme", "Dark Blue"),
     "dark_blue"_L1, "dark_gray"_L1,
     qRgba(178, 178, 255, 178), qRgba(0, 0, 0, 76), qRgba(230, 230, 230, 204)},
    {"DarkRed"_L1, QT_TRANSLATE_NOOP("VsTheme", "Dark Red"),
     "dark_red"_L1, "dark_gray"_L1,
     qRgba(235, 178, 178, 178), qRgba(0, 0, 0, 76), qRgba(230, 230, 230, 204)},
    {"DarkGreen"_L1, QT_TRANSLATE_NOOP("VsTheme", "Dark Green"),
     "dark_green"_L1, "dark_gray"_L1,
     qRgba(178, 235, 178, 178), qRgba(0, 0, 0, 76), qRgba(230, 230, 230, 204)},
    {"DarkYellow"_L1, QT_TRANSLATE_NOOP("VsTheme", "Dark Yellow"),
     "dark_yellow"_L1, "dark_gray"_L1,
     qRgba(198, 198, 0, 178), qRgba(0, 0, 0, 76), qRgba(230, 230, 230, 204)},
    {"DarkGray"_L1, QT_TRANSLATE_NOOP("VsTheme", "Dark Gray"),
     "dark_gray"_L1, "dark_gray"_L1,
     qRgba(204, 204, 204, 178), qRgba(0, 0, 0, 76), qRgba(230, 230, 230, 204)},
    {"LightBlue"_L1, QT_TRANSLATE_NOOP("VsTheme", "Light Blue"),
     "light_blue"_L1, "light_gray"_L1,
     qRgba(0, 0, 64, 178), qRgba(148, 148, 222, 128), qRgba(25, 25, 25, 204)},
    {"LightRed"_L1, QT_TRANSLATE_NOOP("VsTheme", "Light Red"),
     "light_red"_L1, "light_gray"_L1,
     qRgba(24, 0, 0, 178), qRgba(222, 172, 172, 128), qRgba(25, 25, 25, 204)},
    {"LightGreen"_L1, QT_TRANSLATE_NOOP("VsTheme", "Light Green"),
     "light_green"_L1, "light_gray"_L1,
     qRgba(0, 32, 0, 178), qRgba(148, 198, 148, 128), qRgba(25, 25, 25, 204)},
    {"LightYellow"_L1, QT_TRANSLATE_NOOP("VsTheme", "Light Yellow"),
     "light_yellow"_L1, "light_gray"_L1,
     qRgba(32, 32, 0, 178), qRgba(198, 198, 148, 128), qRgba(25, 25, 25, 204)},
    {"LightGray"_L1, QT_TRANSLATE_NOOP("VsTheme", "Light Gray"),
     "light_gray"_L1, "light_gray"_L1,
     qRgba(0, 0, 0, 178), qRgba(192, 192, 192, 128), qRgba(25, 25, 25, 204)},
};
// clang-format on

} // namespace

std::span<const ToneRow> basicTones() { return tones; }
