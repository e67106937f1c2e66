// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "platform/shortcutrules.h"

#include <QtCore/qdir.h>
#include <QtTest/qtest.h>

using namespace Qt::StringLiterals;

class TestShortcutRules : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void packagedWithPowerShell();
    void packagedWithoutPowerShell();
    void ownLinks_data();
    void ownLinks();
};

void TestShortcutRules::packagedWithPowerShell()
{
    const auto spec = ShortcutRules::packagedSpec(
        u"Maker.App_1!App"_s, u"C:\\PS\\powershell.exe"_s, u"C:\\System"_s);
    QCOMPARE(spec.targetPath, u"C:\\PS\\powershell.exe"_s);
    QCOMPARE(spec.arguments,
        u"-Command \"if (Get-StartApps | Where-Object { $_.AppID -eq 'Maker.App_1!App' }) "
        "{ Start-Process explorer.exe shell:appsFolder\\Maker.App_1!App }\""_s);
    QCOMPARE(spec.showCommand, 7);
}

void TestShortcutRules::packagedWithoutPowerShell()
{
    const auto spec = ShortcutRules::packagedSpec(u"Maker.App_1!App"_s, {}, u"C:\\System"_s);
    QCOMPARE(spec.targetPath, u"C:\\System\\cmd.exe"_s);
    QCOMPARE(spec.arguments, u"/c start shell:AppsFolder\\Maker.App_1!App"_s);
    QCOMPARE(spec.showCommand, 7);
}

void TestShortcutRules::ownLinks_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("arguments");
    QTest::addColumn<QString>("expectedArguments");
    QTest::addColumn<QString>("appUserModelId");
    QTest::addColumn<bool>("own");
    const QString none;
    const QString id = u"Maker.App_1!App"_s;
    const QString program = u"C:\\Vesper.exe"_s;
    const QString cmd = u"C:\\CMD.exe"_s;
    const auto row = [](const char *name, const QString &target, const QString &arguments,
                         const QString &expected, const QString &appId, bool own) {
        QTest::newRow(name) << target << arguments << expected << appId << own;
    };
    row("no arguments", program, none, none, none, true);
    row("another program without", u"C:\\Other.exe"_s, none, none, none, true);
    row("with arguments", u"C:\\Other.exe"_s, u"/x"_s, none, none, false);
    row("the expected arguments", program, u"/x"_s, u"/x"_s, none, true);
    row("the expected ones in another case", program, u"/Say Hi"_s, u"/sAY hI"_s, none, true);
    row("other arguments than expected", program, u"/x"_s, u"/y"_s, none, false);
    row("none where some are expected", program, none, u"/x"_s, none, false);
    // Where these are not the system's own, the target is not in its own form.
    row("other separators", u"C:/Vesper.exe"_s, none, none, none,
        QDir::toNativeSeparators(u"/"_s) == u"/"_s);
    row("packaged, cmd", cmd, u"/c start "_s + id, none, id, true);
    row("packaged, powershell", u"C:\\PowerShell.exe"_s, id, none, id, true);
    row("packaged, whatever is expected", cmd, id, u"/x"_s, id, true);
    row("packaged, another app", cmd, u"Other!App"_s, none, id, false);
    row("packaged, other case", cmd, id.toUpper(), none, id, false);
    row("packaged, no shell", program, id, none, id, false);
}

void TestShortcutRules::ownLinks()
{
    QFETCH(QString, target);
    QFETCH(QString, arguments);
    QFETCH(QString, expectedArguments);
    QFETCH(QString, appUserModelId);
    AutoStart::ShortcutSpec link;
    link.targetPath = target;
    link.arguments = arguments;
    QTEST(ShortcutRules::isOwn(link, expectedArguments, appUserModelId), "own");
}

QTEST_APPLESS_MAIN(TestShortcutRules)
#include "tst_shortcutrules.moc"
