// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/autostart.h"

/// What makes a shell link one of this program's.
namespace ShortcutRules
{

/// What a packaged program's link starts, since its file cannot be started directly: a shell that
/// opens the app \a appUserModelId. \a powerShell is the path of PowerShell, or empty for
/// \a systemFolder's command interpreter. Fills target, arguments and show command only.
[[nodiscard]] AutoStart::ShortcutSpec packagedSpec(
    const QString &appUserModelId, const QString &powerShell, const QString &systemFolder);

/// Whether \a link is one of this program's. \a appUserModelId is empty for an unpackaged program.
[[nodiscard]] bool isOwn(const AutoStart::ShortcutSpec &link, const QString &expectedArguments,
    const QString &appUserModelId);

} // namespace ShortcutRules
