// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGui/qwindowdefs.h>

/// Makes \a owner, a native window that may belong to anything, the owner of \a window, which from
/// then on stays above it. Does nothing where windows have no owners.
void setWindowOwner(WId window, WId owner);
