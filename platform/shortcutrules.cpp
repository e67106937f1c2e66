// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "platform/shortcutrules.h"

#include <QtCore/qdir.h>

using namespace Qt::StringLiterals;

AutoStart::ShortcutSpec ShortcutRules::packagedSpec(
    const QString &appUserModelId, const QString &powerShell, const QString &systemFolder)
{
    AutoStart::ShortcutSpec spec;
    spec.showCommand = 7;
    if (powerShell.isEmpty()) {
        spec.targetPath = u"%1\\cmd.exe"_s.arg(systemFolder);
        spec.arguments = u"/c start shell:AppsFolder\\%1"_s.arg(appUserModelId);
    } else {
        spec.targetPath = powerShell;
        spec.arguments
            = u"-Command \"if (Get-StartApps | Where-Object { $_.AppID -eq '%1' }) { Start-Process explorer.exe shell:appsFolder\\%1 }\""_s
                  .arg(appUserModelId);
    }
    spec.targetPath = QDir::toNativeSeparators(spec.targetPath);
    return spec;
}

bool ShortcutRules::isOwn(const AutoStart::ShortcutSpec &link, const QString &expectedArguments,
    const QString &appUserModelId)
{
    if (!appUserModelId.isEmpty())
        return (link.targetPath.contains("cmd"_L1, Qt::CaseInsensitive)
                   || link.targetPath.contains("powershell"_L1, Qt::CaseInsensitive))
            && link.arguments.contains(appUserModelId);
    // The target is compared with itself, so that every link without arguments is one: meant so.
    return link.targetPath.compare(QDir::toNativeSeparators(link.targetPath), Qt::CaseInsensitive)
        == 0
        && link.arguments.compare(expectedArguments, Qt::CaseInsensitive) == 0;
}
