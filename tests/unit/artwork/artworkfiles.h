// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QSize>
#include <QString>
#include <QStringList>

/// One file of the artwork by its fixed name, below the repository's root.
struct ArtworkFile {
    QString path;
    QSize viewBox;
};

inline QString sourceRoot() { return QStringLiteral(VESPER_SOURCE_DIR); }

inline QString themeFile(const QString &folder, const QString &layer)
{
    return QStringLiteral("themes/basic/%1/clock_%2.svg").arg(folder, layer);
}

/// Every file that the program's resources name.
inline QList<ArtworkFile> artworkFiles()
{
    QList<ArtworkFile> files{
        {QStringLiteral("images/app_icon.svg"), {128, 128}},
        {QStringLiteral("images/app_tray_icon_tmpl.svg"), {128, 128}},
        {QStringLiteral("images/reset_to_default.svg"), {24, 24}},
        {QStringLiteral("images/marrowby_logo_gray.svg"), {256, 126}},
    };
    for (const char *glyph : {"check", "toright", "tolower", "toupper"}) {
        for (const char *colour : {"black", "white"}) {
            const auto name = QStringLiteral("images/%1_%2.svg");
            files.append({name.arg(QLatin1StringView(glyph), QLatin1StringView(colour)), {24, 24}});
        }
    }
    for (const QString &lightness : {QStringLiteral("dark"), QStringLiteral("light")}) {
        for (const char *colour : {"blue", "gray", "green", "red", "yellow"}) {
            const QString folder = lightness + u'_' + QLatin1StringView(colour);
            files.append({themeFile(folder, QStringLiteral("base")), {1024, 1024}});
            files.append({themeFile(folder, QStringLiteral("background")), {1024, 1024}});
            files.append({themeFile(folder, QStringLiteral("resize_grip")), {64, 64}});
        }
        // Only the grey tones carry the dial and the hands.
        for (const char *layer : {"dial", "hand_hour", "hand_minute", "hand_second"}) {
            files.append({themeFile(lightness + QStringLiteral("_gray"), QLatin1StringView(layer)),
                {1024, 1024}});
        }
    }
    return files;
}
