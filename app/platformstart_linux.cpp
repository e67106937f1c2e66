// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "app/platformstart.h"

#include <QtCore/qbytearrayview.h>
#include <QtCore/qcoreapplication.h>
#include <QtCore/qdir.h>

#include <algorithm>

using namespace Qt::StringLiterals;

void prepareWindowSystem(int argc, char **argv)
{
    const bool chosenByOption = std::any_of(argv + 1, argv + argc, [](QByteArrayView argument) {
        return argument == "-platform" || argument == "--platform";
    });
    // Wayland lets no window place itself, stay above or leave the taskbar. XWayland does, so it
    // comes first; a choice that was made with Qt's own means stands.
    if (!chosenByOption && !qEnvironmentVariableIsSet("QT_QPA_PLATFORM"))
        qputenv("QT_QPA_PLATFORM", "xcb;wayland");
}

QStringList fallbackImportPaths()
{
    return {QDir(QCoreApplication::applicationDirPath()).filePath(u"imports"_s)};
}
