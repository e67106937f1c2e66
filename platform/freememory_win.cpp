// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "platform/freememory.h"

void returnFreeMemory()
{
    // The process heap does so by itself.
}
