// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "app/platformstart.h"

void prepareWindowSystem([[maybe_unused]] int argc, [[maybe_unused]] char **argv)
{
    // Windows has one window system.
}

void windowSystemChosen()
{
    // Nothing was set.
}

QStringList fallbackImportPaths()
{
    return {}; // the Qt kits for Windows carry every style
}
