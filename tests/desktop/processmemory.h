// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qtypes.h>

/// The memory that process \a pid alone has and has written; 0 without such a process. Not the
/// pages of files, the program's and its libraries': they are private only as long as no other
/// process has the same file.
double privateMiB(qint64 pid);
