// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qbytearrayview.h>

/// Whether \a file is a shell link whose parts lie where its own sizes and offsets say, as
/// [MS-SHLLINK] has it (Shell Link (.LNK) Binary File Format). What the parts mean is not looked
/// at, nor what comes behind them.
[[nodiscard]] bool isWholeShellLink(QByteArrayView file);
