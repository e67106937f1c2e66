// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "app/platformstart.h"

#include <QtCore/qbytearrayview.h>
#include <QtCore/qcoreapplication.h>
#include <QtCore/qdir.h>

#include <algorithm>
#include <utility>

using namespace Qt::StringLiterals;

namespace
{

constexpr auto platformVariable = "QT_QPA_PLATFORM";
bool isOurChoice = false;

} // namespace

void prepareWindowSystem(int argc, char **argv)
{
    const bool chosenByOption = std::any_of(argv + 1, argv + argc, [](QByteArrayView argument) {
        return argument == "-platform" || argument == "--platform";
    });
    // Wayland lets no window place itself, stay above or leave the taskbar. XWayland does, so it
    // comes first; a choice that was made with Qt's own means stands.
    isOurChoice = !chosenByOption && !qEnvironmentVariableIsSet(platformVariable);
    if (isOurChoice)
        qputenv(platformVariable, "xcb;wayland");
}

void windowSystemChosen()
{
    if (std::exchange(isOurChoice, false))
        qunsetenv(platformVariable); // programs that are started from here choose for themselves
}

QStringList fallbackImportPaths()
{
    return {QDir(QCoreApplication::applicationDirPath()).filePath(u"imports"_s)};
}
