// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "platform/freememory.h"

#include <malloc.h>

void returnFreeMemory()
{
    malloc_trim(0); // its heaps shrink only at their ends, and one small block there holds up all
}
