// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "platform/autostart.h"

#include "platform/startupentries.h"

#include <QtCore/qdir.h>
#include <QtCore/qfile.h>
#include <QtCore/qfileinfo.h>

#include <filesystem>

using namespace Qt::StringLiterals;

namespace
{

// By what lies there, a link or not, and not by what it leads to: that may be gone. (QFileInfo also
// looks through shell links, and has the shell read even a damaged one.)
bool isTaken(const QString &path)
{
    std::error_code error; // then there is nothing that could be seen
    return std::filesystem::exists(
        std::filesystem::symlink_status(QFileInfo(path).filesystemFilePath(), error));
}

// "Name", "Name_1" to "Name_998"; the next name ends the search untested: meant so.
QString freeEntryPath(const QString &name)
{
    constexpr int lastNumber = 999;
    const QDir folder(StartupEntries::folder());
    QString path = folder.filePath(name + StartupEntries::suffix());
    for (int number = 1; isTaken(path); ++number) {
        if (number == lastNumber)
            return {};
        path = folder.filePath(u"%1_%2%3"_s.arg(name).arg(number).arg(StartupEntries::suffix()));
    }
    return path;
}

void removeEntriesThatAreOff(const QString &expectedArguments)
{
    const QList<StartupEntries::Entry> entries = StartupEntries::own(expectedArguments);
    for (const StartupEntries::Entry &entry : entries) {
        if (!entry.isOn)
            QFile::remove(entry.path);
    }
}

} // namespace

bool AutoStart::createAutoStartLink(const QString &name, const ShortcutSpec &spec)
{
    if (StartupEntries::folder().isEmpty())
        return false;
    removeEntriesThatAreOff(spec.arguments);
    ShortcutSpec entry = spec;
    entry.linkPath = freeEntryPath(name);
    entry.viaAppsFolder = false;
    return !entry.linkPath.isEmpty() && StartupEntries::write(entry);
}

// The target is not looked at, only each system's own idea of what is this program: meant so.
bool AutoStart::findAutoStartLinks([[maybe_unused]] const QString &expectedTarget,
    const QString &expectedArguments, QStringList *foundPaths, bool *viaCmd)
{
    if (viaCmd)
        *viaCmd = false;
    bool found = false;
    const QList<StartupEntries::Entry> entries = StartupEntries::own(expectedArguments);
    for (const StartupEntries::Entry &entry : entries) {
        if (!entry.isOn)
            continue;
        found = true;
        if (foundPaths)
            foundPaths->append(entry.path);
        if (viaCmd && entry.viaCmd)
            *viaCmd = true;
    }
    return found;
}

bool AutoStart::removeAutoStartLinks()
{
    const QList<StartupEntries::Entry> entries
        = StartupEntries::own(buildAutoStartSpec().arguments);
    bool removed = true;
    for (const StartupEntries::Entry &entry : entries)
        removed = QFile::remove(entry.path) && removed;
    return removed;
}
