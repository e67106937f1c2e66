// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qstring.h>

/// Whether the program was installed by a package manager, which then also brings its updates.
[[nodiscard]] bool hasPackageIdentity();

/// The application user model ID of a packaged program on Windows; empty for any other.
[[nodiscard]] QString applicationUserModelId();
