// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "app/platformstart.h"

#include <windows.h>

void prepareWindowSystem([[maybe_unused]] int argc, [[maybe_unused]] char **argv)
{
    // Windows has one window system. But it looks for libraries in the present folder as well,
    // which may be anyone's: not so from here on. (SetDefaultDllDirectories() would also hide a Qt
    // that is on the path and not beside the program, as that of a build is.)
    SetDllDirectoryW(L"");
}

void windowSystemChosen()
{
    // Nothing was set.
}

QStringList fallbackImportPaths()
{
    return {}; // the Qt kits for Windows carry every style
}
