// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Start at sign-in on Windows: real links in the real Startup folder.

#include "platform/autostart.h"
#include "platform/commanager.h"
#include "platform/packageidentity.h"

#include <QtCore/qcoreapplication.h>
#include <QtCore/qdir.h>
#include <QtCore/qstandardpaths.h>
#include <QtTest/qtest.h>

using namespace Qt::StringLiterals;

class TestStartupLinks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void comesWithoutPackage();
    void writesAndReadsALink();
    void createsFindsAndRemoves();
    void takesTheNextFreeName();
    void brokenLinkTakesAName();
    void foreignLinkWithArgumentsStays();
    void foreignLinkWithoutArgumentsGoes();
    void brokenLinkIsSkipped();
    void readOnlyLinkStays();

private:
    static QDir folder();
    static AutoStart::ShortcutSpec spec();
    static bool create() { return AutoStart::createAutoStartLink(u"Vesper"_s, spec()); }
    static bool isFound(QStringList *paths = nullptr);
    static int showCommandIn(const QString &path);
    static void writeLink(const QString &name, const QString &arguments);
};

QDir TestStartupLinks::folder()
{
    return QDir(
        QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation) + u"/Startup"_s);
}

AutoStart::ShortcutSpec TestStartupLinks::spec()
{
    AutoStart::ShortcutSpec spec = AutoStart::buildAutoStartSpec();
    spec.description = u"Vesper - by Marrowby Inc."_s;
    return spec;
}

bool TestStartupLinks::isFound(QStringList *paths)
{
    return AutoStart::findAutoStartLinks(spec().targetPath, spec().arguments, paths);
}

void TestStartupLinks::writeLink(const QString &name, const QString &arguments)
{
    AutoStart::ShortcutSpec link;
    link.linkPath = folder().filePath(name);
    link.targetPath = u"C:\\windows\\notepad.exe"_s;
    link.arguments = arguments;
    QVERIFY(ComManager().createShortcut(link));
}

void TestStartupLinks::init()
{
    QTest::failOnWarning();
    QVERIFY(folder().mkpath(u"."_s));
    QVERIFY(folder().entryList({u"*.lnk"_s}, QDir::Files).isEmpty());
}

void TestStartupLinks::cleanup()
{
    const QFileInfoList links
        = folder().entryInfoList({u"*.lnk"_s}, QDir::Files | QDir::System | QDir::Hidden);
    for (const QFileInfo &link : links) {
        QFile::setPermissions(link.filePath(), QFile::ReadOwner | QFile::WriteOwner);
        QVERIFY(QFile::remove(link.filePath()));
    }
}

void TestStartupLinks::comesWithoutPackage()
{
    QVERIFY(!hasPackageIdentity());
    QVERIFY(applicationUserModelId().isEmpty());
}

// Where the format of shell links has it.
int TestStartupLinks::showCommandIn(const QString &path)
{
    constexpr int place = 60;
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll().at(place) : -1;
}

void TestStartupLinks::writesAndReadsALink()
{
    AutoStart::ShortcutSpec link = spec();
    link.linkPath = folder().filePath(u"a.lnk"_s);
    link.arguments = u"/x \"a b\""_s;
    link.iconIndex = 2;
    link.showCommand = 7;
    const ComManager com;
    QVERIFY(com.createShortcut(link));
    AutoStart::ShortcutSpec read;
    read.linkPath = link.linkPath;
    QVERIFY(com.readShortcut(read));
    QCOMPARE(read.targetPath, QDir::toNativeSeparators(QCoreApplication::applicationFilePath()));
    QCOMPARE(read.arguments, link.arguments);
    QCOMPARE(read.workingDirectory, QDir::toNativeSeparators(link.workingDirectory));
    QCOMPARE(read.description, link.description);
    QCOMPARE(read.iconPath, QDir::toNativeSeparators(link.iconPath));
    QCOMPARE(read.iconIndex, 2);
    QCOMPARE(showCommandIn(link.linkPath), 7); // Wine does not read it back
}

void TestStartupLinks::createsFindsAndRemoves()
{
    QVERIFY(!isFound());
    QVERIFY(create());
    QStringList paths;
    QVERIFY(isFound(&paths));
    QCOMPARE(paths.size(), 1);
    QCOMPARE(QFileInfo(paths.first()).fileName(), u"Vesper.lnk"_s);
    QVERIFY(AutoStart::removeAutoStartLinks());
    QVERIFY(!isFound());
    QVERIFY(AutoStart::removeAutoStartLinks()); // nothing to remove
}

void TestStartupLinks::takesTheNextFreeName()
{
    writeLink(u"Vesper.lnk"_s, u"/x"_s);
    QVERIFY(create());
    QVERIFY(folder().exists(u"Vesper_1.lnk"_s));
}

// Qt takes a link whose target is gone for nothing at all.
void TestStartupLinks::brokenLinkTakesAName()
{
    QFile file(folder().filePath(u"Vesper.lnk"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write("no link") > 0);
    file.close();
    QVERIFY(create());
    QVERIFY(folder().exists(u"Vesper_1.lnk"_s));
    QVERIFY(file.open(QIODevice::ReadOnly));
    QCOMPARE(file.readAll(), "no link");
}

void TestStartupLinks::foreignLinkWithArgumentsStays()
{
    writeLink(u"Other.lnk"_s, u"/x"_s);
    QVERIFY(!isFound());
    QVERIFY(AutoStart::removeAutoStartLinks());
    QVERIFY(folder().exists(u"Other.lnk"_s));
}

void TestStartupLinks::foreignLinkWithoutArgumentsGoes()
{
    writeLink(u"Other.lnk"_s, {});
    QVERIFY(isFound());
    QVERIFY(AutoStart::removeAutoStartLinks());
    QVERIFY(!folder().exists(u"Other.lnk"_s));
}

void TestStartupLinks::brokenLinkIsSkipped()
{
    QFile file(folder().filePath(u"Broken.lnk"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write("no link") > 0);
    file.close();
    QVERIFY(!isFound());
}

void TestStartupLinks::readOnlyLinkStays()
{
    QVERIFY(create());
    QVERIFY(QFile::setPermissions(folder().filePath(u"Vesper.lnk"_s), QFile::ReadOwner));
    QVERIFY(!AutoStart::removeAutoStartLinks());
    QVERIFY(isFound());
}

QTEST_GUILESS_MAIN(TestStartupLinks)
#include "tst_startuplinks.moc"
