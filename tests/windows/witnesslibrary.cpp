// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// A library that does nothing but tell, by a file ".loaded" beside its own, that somebody has
// loaded it.

#include <windows.h>

BOOL WINAPI DllMain(HINSTANCE library, DWORD reason, [[maybe_unused]] void *reserved)
{
    if (reason != DLL_PROCESS_ATTACH)
        return TRUE;
    wchar_t path[MAX_PATH + 10] = {};
    GetModuleFileNameW(library, path, MAX_PATH);
    lstrcatW(path, L".loaded");
    CloseHandle(CreateFileW(
        path, GENERIC_WRITE, 0, nullptr, CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
    return TRUE;
}
