// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "dialogs/windowowner.h"

#include <windows.h>

void setWindowOwner(WId window, WId owner)
{
    // Of a top-level window this long value is the owner, whatever its name says.
    SetWindowLongPtrW(reinterpret_cast<HWND>(window), GWLP_HWNDPARENT, LONG_PTR(owner));
}
