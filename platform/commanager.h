// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/autostart.h"

#include <QtCore/qobject.h>

/// Shell links, written and read through COM, which is initialised around each operation. For the
/// GUI thread only, as all that works on windows.
class ComManager : public QObject
{
    Q_OBJECT

public:
    using QObject::QObject;

    /// Writes the link that \a spec describes to spec.linkPath. False when any step fails.
    [[nodiscard]] bool createShortcut(const AutoStart::ShortcutSpec &spec) const;

    /// Fills \a spec from the file at spec.linkPath: of a link into the apps folder
    /// (spec.viaAppsFolder) the ID and the comment, of any other all but these. False when that
    /// fails, or the file is damaged.
    [[nodiscard]] bool readShortcut(AutoStart::ShortcutSpec &spec) const;
};
