// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qstring.h>
#include <QtCore/qstringlist.h>

/// Start at sign-in: entries in the user's start-up folder that start this program.
namespace AutoStart
{

/// One start entry, as a Windows shell link describes it.
struct ShortcutSpec {
    QString linkPath; ///< full path of the entry's file
    QString targetPath; ///< program that the entry starts
    QString arguments; ///< command-line arguments
    QString workingDirectory; ///< start directory
    QString description; ///< comment
    QString iconPath; ///< file that holds the icon; empty: none is set
    QString appUserModelId; ///< only for entries into the apps folder: the app's ID
    qint32 iconIndex = 0; ///< index within iconPath
    qint32 showCommand = 1; ///< 1 normal, 7 minimised without activation
    bool viaAppsFolder = false; ///< the target is an item of the apps folder, not a file
};

/// The entry that starts this program as it is installed now.
[[nodiscard]] ShortcutSpec buildAutoStartSpec();

/// Writes an entry with the properties of \a spec under a free file name made from \a name, never
/// one into the apps folder. False when there is no start-up folder or the entry could not be
/// written.
[[nodiscard]] bool createAutoStartLink(const QString &name, const ShortcutSpec &spec);

/// True when the start-up folder holds an entry of this program. \a foundPaths receives the
/// absolute paths of all such entries; \a viaCmd whether one of them goes through the command
/// interpreter.
bool findAutoStartLinks(const QString &expectedTarget, const QString &expectedArguments,
    QStringList *foundPaths = nullptr, bool *viaCmd = nullptr);

/// Deletes every entry that findAutoStartLinks() finds. True when none is left.
[[nodiscard]] bool removeAutoStartLinks();

} // namespace AutoStart
