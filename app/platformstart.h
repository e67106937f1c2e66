// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qstringlist.h>

/// What has to be settled before the application object exists.
void prepareWindowSystem(int argc, char **argv);

/// Takes back, now that the application object exists, what was meant for it alone.
void windowSystemChosen();

/// Folders to look for QML modules in when Qt has none of that name.
[[nodiscard]] QStringList fallbackImportPaths();
