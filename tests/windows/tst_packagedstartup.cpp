// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Start at sign-in of a program from the store: real links in the real Startup folder and the real
// registry, but this test says which package it is. Wine has no packages.

#include "platform/autostart.h"
#include "platform/commanager.h"
#include "platform/packageidentity.h"

#include <QtCore/qdir.h>
#include <QtCore/qsettings.h>
#include <QtCore/qstandardpaths.h>
#include <QtTest/qtest.h>

using namespace Qt::StringLiterals;

namespace
{

const QString app = u"Marrowby.Vesper_abc!App"_s;
const QString powerShell = u"C:\\windows\\system32\\windowspowershell\\v1.0\\powershell.exe"_s;

QSettings powerShellKey()
{
    return QSettings(u"HKEY_LOCAL_MACHINE\\SOFTWARE\\Microsoft\\PowerShell\\1\\ShellIds\\"
                     "Microsoft.PowerShell"_s,
        QSettings::NativeFormat);
}

} // namespace

bool hasPackageIdentity() { return true; }

QString applicationUserModelId() { return app; }

class TestPackagedStartup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void describesTheShellThatStartsIt();
    void startsByPowerShell();
    void startsByCmd();
    void replacesCmd();
    void otherAppsStay();

private:
    static QDir folder();
    static bool create();
    /// The only link in the folder.
    static AutoStart::ShortcutSpec link();
    static bool isFound(bool *viaCmd);
};

QDir TestPackagedStartup::folder()
{
    return QDir(
        QStandardPaths::writableLocation(QStandardPaths::ApplicationsLocation) + u"/Startup"_s);
}

bool TestPackagedStartup::create()
{
    return AutoStart::createAutoStartLink(u"Vesper"_s, AutoStart::buildAutoStartSpec());
}

AutoStart::ShortcutSpec TestPackagedStartup::link()
{
    AutoStart::ShortcutSpec read;
    const QStringList names = folder().entryList({u"*.lnk"_s});
    if (names.size() != 1)
        return read;
    read.linkPath = folder().filePath(names.first());
    return ComManager().readShortcut(read) ? read : AutoStart::ShortcutSpec();
}

bool TestPackagedStartup::isFound(bool *viaCmd)
{
    return AutoStart::findAutoStartLinks({}, {}, nullptr, viaCmd);
}

void TestPackagedStartup::init()
{
    QTest::failOnWarning();
    QVERIFY(folder().mkpath(u"."_s));
    powerShellKey().remove(u"Path"_s);
}

void TestPackagedStartup::cleanup()
{
    powerShellKey().remove(u"Path"_s);
    for (const QString &name : folder().entryList({u"*.lnk"_s}))
        QVERIFY(folder().remove(name));
}

void TestPackagedStartup::describesTheShellThatStartsIt()
{
    const AutoStart::ShortcutSpec described = AutoStart::buildAutoStartSpec();
    QVERIFY(described.targetPath.endsWith(u"\\cmd.exe"_s));
    QCOMPARE(described.workingDirectory, QCoreApplication::applicationDirPath());
    QCOMPARE(described.iconPath, QCoreApplication::applicationFilePath());
    QCOMPARE(described.iconIndex, 0);
    QCOMPARE(described.showCommand, 7);
    QCOMPARE(described.description, QString());
    QCOMPARE(described.linkPath, QString());
    QVERIFY(!described.viaAppsFolder);
}

void TestPackagedStartup::startsByPowerShell()
{
    powerShellKey().setValue(u"Path"_s, powerShell);
    QVERIFY(create());
    QCOMPARE(link().targetPath.toLower(), powerShell.toLower());
    QCOMPARE(link().arguments,
        u"-Command \"if (Get-StartApps | Where-Object { $_.AppID -eq 'Marrowby.Vesper_abc!App' }) "
        "{ Start-Process explorer.exe shell:appsFolder\\Marrowby.Vesper_abc!App }\""_s);
    bool viaCmd = true;
    QVERIFY(isFound(&viaCmd));
    QVERIFY(!viaCmd);
    QVERIFY(AutoStart::removeAutoStartLinks());
    QVERIFY(!isFound(&viaCmd));
}

void TestPackagedStartup::startsByCmd()
{
    QVERIFY(create());
    QCOMPARE(link().targetPath.toLower(), u"c:\\windows\\system32\\cmd.exe"_s);
    QCOMPARE(link().arguments, u"/c start shell:AppsFolder\\Marrowby.Vesper_abc!App"_s);
    bool viaCmd = false;
    QVERIFY(isFound(&viaCmd));
    QVERIFY(viaCmd);
}

void TestPackagedStartup::replacesCmd()
{
    QVERIFY(create());
    powerShellKey().setValue(u"Path"_s, powerShell);
    QVERIFY(AutoStart::removeAutoStartLinks());
    QVERIFY(create());
    bool viaCmd = true;
    QVERIFY(isFound(&viaCmd));
    QVERIFY(!viaCmd);
}

void TestPackagedStartup::otherAppsStay()
{
    AutoStart::ShortcutSpec other = AutoStart::buildAutoStartSpec();
    other.linkPath = folder().filePath(u"Other.lnk"_s);
    other.arguments = u"/c start shell:AppsFolder\\Other!App"_s;
    QVERIFY(ComManager().createShortcut(other));
    bool viaCmd = true;
    QVERIFY(!isFound(&viaCmd));
    QVERIFY(AutoStart::removeAutoStartLinks());
    QCOMPARE(link().arguments, other.arguments);
}

QTEST_GUILESS_MAIN(TestPackagedStartup)
#include "tst_packagedstartup.moc"
