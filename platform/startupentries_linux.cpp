// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Entries as freedesktop.org's autostart has them: desktop files in ~/.config/autostart.

#include "platform/startupentries.h"

#include "platform/desktopfile.h"

#include <QtCore/qcoreapplication.h>
#include <QtCore/qdir.h>
#include <QtCore/qfile.h>
#include <QtCore/qfileinfo.h>
#include <QtCore/qsavefile.h>
#include <QtCore/qstandardpaths.h>

using namespace Qt::StringLiterals;

namespace
{

// A link to the program counts as the program.
bool startsThisProgram(const DesktopFile &file)
{
    const QString program = programOfCommand(file.value(u"Exec"_s));
    const QString path = program.contains(u'/') ? program : QStandardPaths::findExecutable(program);
    return !path.isEmpty()
        && QFileInfo(path).canonicalFilePath()
        == QFileInfo(QCoreApplication::applicationFilePath()).canonicalFilePath();
}

bool isMeantForThisDesktop(const DesktopFile &file)
{
    const QStringList desktops
        = qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':', Qt::SkipEmptyParts);
    const auto namesThisOne = [&](const QString &key) {
        const QStringList named = file.value(key).split(u';', Qt::SkipEmptyParts);
        return std::any_of(desktops.begin(), desktops.end(),
            [&named](const QString &desktop) { return named.contains(desktop); });
    };
    return (!file.contains(u"OnlyShowIn"_s) || namesThisOne(u"OnlyShowIn"_s))
        && !namesThisOne(u"NotShowIn"_s);
}

bool isSwitchedOn(const DesktopFile &file)
{
    return file.value(u"Hidden"_s) != "true"_L1
        && file.value(u"X-GNOME-Autostart-enabled"_s) != "false"_L1 && isMeantForThisDesktop(file);
}

} // namespace

AutoStart::ShortcutSpec AutoStart::buildAutoStartSpec()
{
    ShortcutSpec spec;
    spec.targetPath = QCoreApplication::applicationFilePath();
    spec.workingDirectory = QCoreApplication::applicationDirPath();
    spec.iconPath = u"vesper"_s; // the icon's name in the theme
    return spec;
}

QString StartupEntries::folder()
{
    return QStandardPaths::writableLocation(QStandardPaths::GenericConfigLocation)
        + u"/autostart"_s;
}

QString StartupEntries::suffix() { return u".desktop"_s; }

QList<StartupEntries::Entry> StartupEntries::own([[maybe_unused]] const QString &expectedArguments)
{
    QList<Entry> entries;
    const QFileInfoList files = QDir(folder()).entryInfoList(
        {u"*.desktop"_s}, QDir::Files | QDir::NoDotAndDotDot, QDir::Unsorted);
    for (const QFileInfo &info : files) {
        const auto file = DesktopFile::read(info.absoluteFilePath());
        if (file && startsThisProgram(*file))
            entries += {.path = info.absoluteFilePath(), .isOn = isSwitchedOn(*file)};
    }
    return entries;
}

bool StartupEntries::write(const AutoStart::ShortcutSpec &spec)
{
    if (!QDir().mkpath(QFileInfo(spec.linkPath).path()))
        return false;
    const QString text = u"[Desktop Entry]\n"
                         "Type=Application\n"
                         "Name=Vesper\n"
                         "Comment=%1\n"
                         "Exec=%2\n"
                         "Icon=%3\n"
                         "Terminal=false\n"_s.arg(
                             spec.description, commandOfProgram(spec.targetPath), spec.iconPath);
    QSaveFile file(spec.linkPath);
    const QByteArray bytes = text.toUtf8();
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() && file.commit();
}
