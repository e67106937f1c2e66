// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/autostart.h"

#include <QtCore/qlist.h>
#include <QtCore/qstring.h>

/// The user's start-up folder as each system has it; what AutoStart is made of.
namespace StartupEntries
{

/// An entry of this program in the start-up folder.
struct Entry {
    QString path; ///< absolute path of its file
    bool isOn = true; ///< starts the program at sign-in; false where the user has switched it off
    bool viaCmd = false; ///< goes through the command interpreter
};

/// The folder itself; empty when there is none. It need not exist yet.
[[nodiscard]] QString folder();

/// Ending of an entry's file name, with its dot.
[[nodiscard]] QString suffix();

/// The entries of this program, in the order of the folder. \a expectedArguments are those that an
/// entry of this program has.
[[nodiscard]] QList<Entry> own(const QString &expectedArguments);

/// Writes an entry to the file that \a spec names. False when that fails.
[[nodiscard]] bool write(const AutoStart::ShortcutSpec &spec);

} // namespace StartupEntries
