// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// A shell link in the user's Startup folder, before the shell is let near it.

#include "fuzztarget.h"

#include "platform/shelllink.h"

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    constexpr std::size_t headerSize = 0x4c;
    const bool isWhole = isWholeShellLink(QByteArrayView(data, qsizetype(size)));
    mustHold(!isWhole || size >= headerSize, "a link has a header");
    return 0;
}
