// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "confighome.h"
#include "fakeautostart.h"

#include "app/commandline.h"

#include <QtTest/qtest.h>

using namespace Qt::StringLiterals;

class TestCommandLine : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void switches_data();
    void switches();
    void failedCleanupIsTold();
    void switchesGoInTheirOrder_data();
    void switchesGoInTheirOrder();

private:
    ConfigHome m_home;
};

void TestCommandLine::init()
{
    QTest::failOnWarning();
    FakeAutoStart::state() = {};
}

void TestCommandLine::switches_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<int>("exitCode"); // -1: the program goes on
    QTest::addColumn<bool>("settingsStay");

    const QString program = u"/usr/bin/vesper"_s;
    QTest::newRow("none") << QStringList{program} << -1 << true;
    QTest::newRow("unknown") << QStringList{program, u"--version"_s, u"時計"_s} << -1 << true;
    QTest::newRow("reset") << QStringList{program, u"--reset"_s} << -1 << false;
    QTest::newRow("reset, short") << QStringList{program, u"-r"_s} << -1 << false;
    QTest::newRow("reset, any case") << QStringList{program, u"--ReSeT"_s} << -1 << false;
    QTest::newRow("reset, short, capital") << QStringList{program, u"-R"_s} << -1 << false;
    QTest::newRow("reset among others") << QStringList{program, u"x"_s, u"-r"_s} << -1 << false;
    QTest::newRow("uninstall") << QStringList{program, u"--uninstall"_s} << 0 << false;
    QTest::newRow("uninstall, short") << QStringList{program, u"-u"_s} << 0 << false;
    QTest::newRow("uninstall, any case") << QStringList{program, u"--UNINSTALL"_s} << 0 << false;
    QTest::newRow("reset, then uninstall") << QStringList{program, u"-r"_s, u"-u"_s} << 0 << false;
    QTest::newRow("uninstall, then reset") << QStringList{program, u"-u"_s, u"-r"_s} << 0 << false;
    QTest::newRow("a longer word") << QStringList{program, u"--resets"_s} << -1 << true;
    QTest::newRow("a path that is a switch, alone") << QStringList{u"-u"_s} << -1 << true;
    QTest::newRow("a path that is a switch") << QStringList{u"-u"_s, u"x"_s} << 0 << false;
}

void TestCommandLine::switches()
{
    QFETCH(QStringList, arguments);
    QFETCH(int, exitCode);
    QVERIFY(m_home.writeFile("{}"));
    QCOMPARE(runMaintenanceSwitches(arguments).value_or(-1), exitCode);
    QTEST(QFile::exists(m_home.configFile()), "settingsStay");
}

void TestCommandLine::failedCleanupIsTold()
{
    FakeAutoStart::state() = {.canRemove = false};
    QCOMPARE(runMaintenanceSwitches({u"vesper"_s, u"-u"_s}), 1);
}

void TestCommandLine::switchesGoInTheirOrder_data()
{
    QTest::addColumn<QStringList>("switches");
    QTest::addColumn<bool>("settingsAtCleanup");
    QTest::newRow("uninstall") << QStringList{u"-u"_s} << true;
    QTest::newRow("reset, then uninstall") << QStringList{u"-r"_s, u"-u"_s} << false;
    QTest::newRow("uninstall first") << QStringList{u"-u"_s, u"-r"_s} << true;
    QTest::newRow("uninstall ends the walk") << QStringList{u"-u"_s, u"-u"_s} << true;
}

void TestCommandLine::switchesGoInTheirOrder()
{
    QFETCH(const QStringList, switches);
    QFETCH(const bool, settingsAtCleanup);
    QVERIFY(m_home.writeFile("{}"));
    bool settings = !settingsAtCleanup;
    FakeAutoStart::state().duringRemoval
        = [this, &settings] { settings = QFile::exists(m_home.configFile()); };
    QCOMPARE(runMaintenanceSwitches(QStringList{u"vesper"_s} + switches), 0);
    QCOMPARE(settings, settingsAtCleanup);
    QCOMPARE(FakeAutoStart::state().calls, QStringList{u"remove"_s});
}

QTEST_GUILESS_MAIN(TestCommandLine)
#include "tst_commandline.moc"
