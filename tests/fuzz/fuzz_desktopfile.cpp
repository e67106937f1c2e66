// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// A desktop file in the user's autostart folder, and one that starts a program of any name.

#include "fuzztarget.h"

#include "platform/autostart.h"
#include "platform/desktopfile.h"

#include <QtCore/qcoreapplication.h>
#include <QtCore/qdir.h>
#include <QtCore/qfile.h>
#include <QtCore/qtemporarydir.h>

using namespace Qt::StringLiterals;

namespace
{

class World
{
public:
    World()
    {
        makeApplication<QCoreApplication>();
        qputenv("XDG_CONFIG_HOME", QFile::encodeName(m_folder.path()));
        qputenv("XDG_CURRENT_DESKTOP", "Tester:GNOME");
        QDir(m_folder.path()).mkdir(u"autostart"_s);
        ownCommand = commandOfProgram(QCoreApplication::applicationFilePath()).toUtf8();
    }

    QString entry(const QString &name) const
    {
        return m_folder.filePath(u"autostart/"_s + name + u".desktop"_s);
    }

    QByteArray ownCommand;

private:
    QTemporaryDir m_folder;
};

void checkEntry(const World &world, const QByteArray &text)
{
    const QString path = world.entry(u"any"_s);
    QFile file(path);
    mustHold(file.open(QIODevice::WriteOnly) && file.write(text) == text.size(), "a place for it");
    file.close();

    const auto desktopFile = DesktopFile::read(path);
    const QString program
        = desktopFile ? programOfCommand(desktopFile->value(u"Exec"_s)) : QString();
    QStringList found;
    const bool isFound = AutoStart::findAutoStartLinks({}, {}, &found);
    mustHold(found == (isFound ? QStringList{path} : QStringList()), "what was found");
    mustHold(!isFound || !program.isEmpty(), "what starts this program names one");
    mustHold(AutoStart::removeAutoStartLinks(), "own entries can be removed");
    mustHold(!isFound || !QFile::exists(path), "an own entry is gone");
    mustHold(program == QCoreApplication::applicationFilePath() || isFound || QFile::exists(path),
        "an entry of another program stays");
    QFile::remove(path);
}

void checkProgram(const World &world, const QString &program)
{
    AutoStart::ShortcutSpec spec = AutoStart::buildAutoStartSpec();
    spec.targetPath = program;
    mustHold(AutoStart::createAutoStartLink(u"own"_s, spec), "an entry is written");
    const DesktopFile file
        = DesktopFile::read(world.entry(u"own"_s)).value_or(DesktopFile()); // has no Exec
    mustHold(programOfCommand(file.value(u"Exec"_s)) == program, "the program comes back");
    for (const auto &key : {u"Hidden"_s, u"OnlyShowIn"_s, u"NotShowIn"_s, u"TryExec"_s})
        mustHold(!file.contains(key), "a name adds no line");
    QFile::remove(world.entry(u"own"_s));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static const World world;
    QByteArray text(reinterpret_cast<const char *>(data), qsizetype(size));
    // A path ends at the first zero.
    checkProgram(world, u'/' + QString::fromUtf8(text.constData()));
    // The fuzzer cannot know where it lies itself.
    checkEntry(world, text.replace("@OWN@", world.ownCommand));
    return 0;
}
