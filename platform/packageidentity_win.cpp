// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "platform/packageidentity.h"

#include <vector>

#include <windows.h>

namespace
{

using GetId = LONG(WINAPI *)(UINT32 *, PWSTR);

// Looked up at run time: a system without it has no packages either.
GetId getId()
{
    static const auto function = reinterpret_cast<GetId>(reinterpret_cast<void *>(
        GetProcAddress(GetModuleHandleW(L"kernel32.dll"), "GetCurrentApplicationUserModelId")));
    return function;
}

} // namespace

bool hasPackageIdentity()
{
    UINT32 length = 0;
    return getId() && getId()(&length, nullptr) == ERROR_INSUFFICIENT_BUFFER;
}

QString applicationUserModelId()
{
    UINT32 length = 0;
    if (!getId() || getId()(&length, nullptr) != ERROR_INSUFFICIENT_BUFFER)
        return {};
    std::vector<wchar_t> id(length);
    if (getId()(&length, id.data()) != ERROR_SUCCESS)
        return {};
    return QString::fromWCharArray(id.data()); // ends with a null character
}
