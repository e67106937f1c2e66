// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "platform/shortcutrules.h"

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
    QTest::addColumn<QString>("appUserModelId");
    QTest::addColumn<bool>("own");
    const QString id = u"Maker.App_1!App"_s;
    QTest::newRow("no arguments") << u"C:\\Vesper.exe"_s << QString() << QString() << true;
    QTest::newRow("another program without")
        << u"C:\\Other.exe"_s << QString() << QString() << true;
    QTest::newRow("with arguments") << u"C:\\Other.exe"_s << u"/x"_s << QString() << false;
    QTest::newRow("packaged, cmd") << u"C:\\CMD.exe"_s << u"/c start "_s + id << id << true;
    QTest::newRow("packaged, powershell") << u"C:\\PowerShell.exe"_s << id << id << true;
    QTest::newRow("packaged, another app") << u"C:\\cmd.exe"_s << u"Other!App"_s << id << false;
    QTest::newRow("packaged, other case") << u"C:\\cmd.exe"_s << id.toUpper() << id << false;
    QTest::newRow("packaged, no shell") << u"C:\\Vesper.exe"_s << id << id << false;
}

void TestShortcutRules::ownLinks()
{
    QFETCH(QString, target);
    QFETCH(QString, arguments);
    QFETCH(QString, appUserModelId);
    AutoStart::ShortcutSpec link;
    link.targetPath = target;
    link.arguments = arguments;
    QTEST(ShortcutRules::isOwn(link, {}, appUserModelId), "own");
}

QTEST_APPLESS_MAIN(TestShortcutRules)
#include "tst_shortcutrules.moc"
