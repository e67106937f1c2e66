// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "platform/autostart.h"

#include <QtCore/qcoreapplication.h>
#include <QtCore/qdir.h>

// No start-up folder is known on any system yet, which every caller has to cope with anyway:
// nothing is found, nothing can be created, and removing what is not there succeeds.

namespace AutoStart
{

ShortcutSpec buildAutoStartSpec()
{
    ShortcutSpec spec;
    spec.targetPath = QDir::toNativeSeparators(QCoreApplication::applicationFilePath());
    spec.workingDirectory = QCoreApplication::applicationDirPath();
    spec.iconPath = QCoreApplication::applicationFilePath();
    return spec;
}

bool createAutoStartLink(
    [[maybe_unused]] const QString &name, [[maybe_unused]] const ShortcutSpec &spec)
{
    return false;
}

bool findAutoStartLinks([[maybe_unused]] const QString &expectedTarget,
    [[maybe_unused]] const QString &expectedArguments, [[maybe_unused]] QStringList *foundPaths,
    bool *viaCmd)
{
    if (viaCmd)
        *viaCmd = false;
    return false;
}

bool removeAutoStartLinks() { return true; }

} // namespace AutoStart
