// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qstringlist.h>

#include <optional>

/// Carries out the maintenance switches among \a arguments (the program's path first), in any case:
/// "-r" and "--reset" remove the settings, "-u" and "--uninstall" remove all that the program left
/// behind. Returns the exit code when the process is to end, which only the latter two ask for: 0,
/// or 1 when something could not be removed. Everything else is ignored.
[[nodiscard]] std::optional<int> runMaintenanceSwitches(const QStringList &arguments);
