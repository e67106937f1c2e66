// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Start at sign-in on Windows: real links in the real Startup folder.

#include "platform/autostart.h"
#include "platform/commanager.h"
#include "platform/packageidentity.h"

#include <QtCore/qcoreapplication.h>
#include <QtCore/qdir.h>
#include <QtCore/qprocess.h>
#include <QtCore/qregularexpression.h>
#include <QtCore/qstandardpaths.h>
#include <QtCore/qtemporarydir.h>
#include <QtTest/qtest.h>

using namespace Qt::StringLiterals;

class TestStartupLinks : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void comesWithoutPackage();
    void describesThisProgram();
    void writesAndReadsALink();
    void isReadByAnotherReader();
    void createsFindsAndRemoves();
    void neverGoesIntoTheAppsFolder();
    void takesTheNextFreeName();
    void endsAtTheLastName();
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
    static QString systemPath(const QString &path);
    static QMap<QString, QString> toldByReader(const QString &link);
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

// As the system below Wine has it.
QString TestStartupLinks::systemPath(const QString &path)
{
    return qEnvironmentVariable("WINEPREFIX") + u"/drive_c"_s + path.mid(2);
}

// What a program of that system says of a link, which knows the format and nothing of Wine.
QMap<QString, QString> TestStartupLinks::toldByReader(const QString &link)
{
    const QTemporaryDir work;
    const QString copy = work.filePath(u"a.lnk"_s); // under a name without blanks
    const QString told = work.filePath(u"told"_s);
    const QString all = work.filePath(u"all"_s);
    if (!QFile::copy(link, copy))
        return {};
    // Wine starts the program and tells no more of it, so its end is seen by a second file.
    const QString command = u"lnkinfo '%1' > '%2'; touch '%3'"_s.arg(
        systemPath(copy), systemPath(told), systemPath(all));
    QProcess::startDetached(u"Z:/bin/sh"_s, {u"-c"_s, command});
    QFile file(told);
    if (!QTest::qWaitFor([&all] { return QFile::exists(all); }) || !file.open(QIODevice::ReadOnly))
        return {};
    static const QRegularExpression field(
        u"^\t(.+?)\\t+: (.*)$"_s, QRegularExpression::MultilineOption);
    QMap<QString, QString> fields;
    for (const auto &match : field.globalMatch(QString::fromUtf8(file.readAll())))
        fields.insert(match.captured(1), match.captured(2).replace(u"\\\\"_s, u"\\"_s));
    return fields;
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

void TestStartupLinks::describesThisProgram()
{
    const AutoStart::ShortcutSpec described = AutoStart::buildAutoStartSpec();
    const QString program = QCoreApplication::applicationFilePath();
    QCOMPARE(described.targetPath, QDir::toNativeSeparators(program));
    QCOMPARE(described.arguments, QString());
    QCOMPARE(described.workingDirectory, QCoreApplication::applicationDirPath());
    QCOMPARE(described.iconPath, program);
    QCOMPARE(described.iconIndex, 0);
    QCOMPARE(described.showCommand, 1);
    QCOMPARE(described.description, QString());
    QCOMPARE(described.linkPath, QString());
    QVERIFY(!described.viaAppsFolder);
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

void TestStartupLinks::isReadByAnotherReader()
{
    AutoStart::ShortcutSpec link = spec();
    link.linkPath = folder().filePath(u"a.lnk"_s);
    link.arguments = u"/x \"a b\""_s;
    link.iconIndex = 2;
    link.showCommand = 7;
    QVERIFY(ComManager().createShortcut(link));
    const QMap<QString, QString> told = toldByReader(link.linkPath);
    const QString program = QDir::toNativeSeparators(QCoreApplication::applicationFilePath());
    QCOMPARE(told[u"Local path"_s], program);
    QCOMPARE(told[u"Command line arguments"_s], link.arguments);
    QCOMPARE(told[u"Working directory"_s], QDir::toNativeSeparators(link.workingDirectory));
    QCOMPARE(told[u"Description"_s], link.description);
    QCOMPARE(told[u"Icon location"_s], QDir::toNativeSeparators(link.iconPath));
    QCOMPARE(told[u"Icon index"_s], u"2"_s);
    QCOMPARE(told[u"Show Window value"_s], u"0x00000007"_s);
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

void TestStartupLinks::neverGoesIntoTheAppsFolder()
{
    AutoStart::ShortcutSpec item = spec();
    item.viaAppsFolder = true;
    item.appUserModelId = u"Marrowby.Vesper_abc!App"_s;
    QVERIFY(AutoStart::createAutoStartLink(u"Vesper"_s, item));
    AutoStart::ShortcutSpec read;
    read.linkPath = folder().filePath(u"Vesper.lnk"_s);
    QVERIFY(ComManager().readShortcut(read));
    QCOMPARE(read.targetPath, item.targetPath);
}

void TestStartupLinks::takesTheNextFreeName()
{
    writeLink(u"Vesper.lnk"_s, u"/x"_s);
    QVERIFY(create());
    QVERIFY(folder().exists(u"Vesper_1.lnk"_s));
}

void TestStartupLinks::endsAtTheLastName()
{
    const QString first = folder().filePath(u"Vesper.lnk"_s);
    writeLink(u"Vesper.lnk"_s, u"/x"_s);
    for (int number = 1; number <= 997; ++number)
        QVERIFY(QFile::copy(first, folder().filePath(u"Vesper_%1.lnk"_s.arg(number))));
    QVERIFY(create());
    QVERIFY(folder().exists(u"Vesper_998.lnk"_s));
    QVERIFY(AutoStart::removeAutoStartLinks());
    QVERIFY(!folder().exists(u"Vesper_998.lnk"_s));
    QVERIFY(QFile::copy(first, folder().filePath(u"Vesper_998.lnk"_s)));
    QVERIFY(!create());
    QCOMPARE(
        folder().entryList({u"*.lnk"_s}, QDir::Files | QDir::System | QDir::Hidden).size(), 999);
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
