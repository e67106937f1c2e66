// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "app/platformstart.h"

#include <QtCore/qtversion.h>

#include <filesystem>
#include <vector>

#include <windows.h>

namespace
{

// Where the Qt lies that is loaded with the program.
std::filesystem::path folderOfQt()
{
    HMODULE qt = nullptr;
    GetModuleHandleExW(
        GET_MODULE_HANDLE_EX_FLAG_FROM_ADDRESS | GET_MODULE_HANDLE_EX_FLAG_UNCHANGED_REFCOUNT,
        reinterpret_cast<const wchar_t *>(&qVersion), &qt);
    std::vector<wchar_t> path(32768); // no path is longer
    GetModuleFileNameW(qt, path.data(), DWORD(path.size()));
    return std::filesystem::path(path.data()).parent_path();
}

} // namespace

void prepareWindowSystem([[maybe_unused]] int argc, [[maybe_unused]] char **argv)
{
    // Windows has one window system. But it looks for libraries in the present folder as well, and
    // in those of PATH, which may be anyone's: not so from here on.
    SetDefaultDllDirectories(LOAD_LIBRARY_SEARCH_DEFAULT_DIRS);
    SetDllDirectoryW(L""); // nor for one who asks for the search as it was before
    // Qt's plug-ins need more of Qt, which is not beside the program in a build.
    AddDllDirectory(folderOfQt().c_str());
}

void windowSystemChosen()
{
    // Nothing was set.
}

QStringList fallbackImportPaths()
{
    return {}; // the Qt kits for Windows carry every style
}
