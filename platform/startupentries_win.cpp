// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Entries as Windows has them: shell links in the user's Startup folder.

#include "platform/startupentries.h"

#include "platform/commanager.h"
#include "platform/packageidentity.h"
#include "platform/shortcutrules.h"

#include <QtCore/qcoreapplication.h>
#include <QtCore/qdir.h>
#include <QtCore/qfileinfo.h>

#include <filesystem>
#include <vector>

#include <windows.h>

#include <knownfolders.h>
#include <shlobj.h>

using namespace Qt::StringLiterals;

namespace
{

QString knownFolder(const KNOWNFOLDERID &id)
{
    wchar_t *path = nullptr;
    const HRESULT result = SHGetKnownFolderPath(id, 0, nullptr, &path);
    const QString folder = SUCCEEDED(result) ? QString::fromWCharArray(path) : QString();
    CoTaskMemFree(path); // in every case
    return folder;
}

QString powerShellPath()
{
    HKEY key = nullptr;
    if (RegOpenKeyExW(HKEY_LOCAL_MACHINE,
            L"SOFTWARE\\Microsoft\\PowerShell\\1\\ShellIds\\Microsoft.PowerShell", 0, KEY_READ,
            &key)
        != ERROR_SUCCESS)
        return {};
    constexpr DWORD bufferBytes = 65534;
    std::vector<wchar_t> buffer(bufferBytes / sizeof(wchar_t) + 1); // and a null at the end
    DWORD bytes = bufferBytes;
    const LSTATUS result = RegQueryValueExW(
        key, L"Path", nullptr, nullptr, reinterpret_cast<BYTE *>(buffer.data()), &bytes);
    RegCloseKey(key);
    return result == ERROR_SUCCESS ? QString::fromWCharArray(buffer.data()) : QString();
}

// Not listed by Qt, which has the shell read each link on the way, also a damaged one.
QStringList linksIn(const QDir &folder)
{
    QStringList paths;
    std::error_code error;
    const std::filesystem::directory_iterator end;
    for (std::filesystem::directory_iterator entry(folder.filesystemPath(), error); entry != end;
        entry.increment(error)) {
        const QString name = QString::fromStdU16String(entry->path().filename().u16string());
        if (name.endsWith(StartupEntries::suffix(), Qt::CaseInsensitive))
            paths += folder.absoluteFilePath(name);
    }
    return paths;
}

} // namespace

AutoStart::ShortcutSpec AutoStart::buildAutoStartSpec()
{
    ShortcutSpec spec;
    const QString id = applicationUserModelId();
    if (id.isEmpty())
        spec.targetPath = QDir::toNativeSeparators(QCoreApplication::applicationFilePath());
    else
        spec = ShortcutRules::packagedSpec(id, powerShellPath(), knownFolder(FOLDERID_System));
    spec.workingDirectory = QCoreApplication::applicationDirPath();
    spec.iconPath = QCoreApplication::applicationFilePath();
    return spec;
}

QString StartupEntries::folder() { return knownFolder(FOLDERID_Startup); }

QString StartupEntries::suffix() { return u".lnk"_s; }

QList<StartupEntries::Entry> StartupEntries::own(const QString &expectedArguments)
{
    QList<Entry> entries;
    if (folder().isEmpty())
        return entries;
    const ComManager com;
    const QString id = applicationUserModelId();
    for (const QString &path : linksIn(QDir(folder()))) {
        AutoStart::ShortcutSpec link;
        link.linkPath = path;
        if (!com.readShortcut(link) || !ShortcutRules::isOwn(link, expectedArguments, id))
            continue;
        if (!QFileInfo(path).isFile()) // it leads to a folder or nowhere
            continue;
        entries += {.path = link.linkPath,
            .viaCmd = !id.isEmpty() && link.targetPath.contains("cmd"_L1, Qt::CaseInsensitive)};
    }
    return entries;
}

bool StartupEntries::write(const AutoStart::ShortcutSpec &spec)
{
    return ComManager().createShortcut(spec);
}
