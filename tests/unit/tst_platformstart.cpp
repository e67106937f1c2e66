// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "app/platformstart.h"

#include <QtTest/qtest.h>

#include <vector>

class TestPlatformStart : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }
    void platform_data();
    void platform();
    void modulesAreLookedForBesideTheProgram();
};

void TestPlatformStart::platform_data()
{
    QTest::addColumn<QByteArray>("variable");
    QTest::addColumn<QByteArrayList>("arguments");
    QTest::addColumn<QByteArray>("during");
    QTest::addColumn<QByteArray>("after");

    QTest::newRow("nothing chosen")
        << QByteArray() << QByteArrayList() << QByteArray("xcb;wayland") << QByteArray();
    QTest::newRow("chosen by the variable") << QByteArray("wayland") << QByteArrayList()
                                            << QByteArray("wayland") << QByteArray("wayland");
    QTest::newRow("chosen by an option")
        << QByteArray() << QByteArrayList{"-platform", "wayland"} << QByteArray() << QByteArray();
    QTest::newRow("the option with two dashes")
        << QByteArray() << QByteArrayList{"x", "--platform", "wayland"} << QByteArray()
        << QByteArray();
    QTest::newRow("another option") << QByteArray() << QByteArrayList{"-platformtheme", "gtk3"}
                                    << QByteArray("xcb;wayland") << QByteArray();
}

void TestPlatformStart::platform()
{
    QFETCH(QByteArray, variable);
    QFETCH(QByteArrayList, arguments);
    qunsetenv("QT_QPA_PLATFORM");
    if (!variable.isEmpty())
        qputenv("QT_QPA_PLATFORM", variable);
    arguments.prepend("vesper");
    std::vector<char *> argv;
    for (QByteArray &argument : arguments)
        argv.push_back(argument.data());
    prepareWindowSystem(static_cast<int>(argv.size()), argv.data());
    QTEST(qgetenv("QT_QPA_PLATFORM"), "during");
    windowSystemChosen();
    QTEST(qgetenv("QT_QPA_PLATFORM"), "after");
}

void TestPlatformStart::modulesAreLookedForBesideTheProgram()
{
    QCOMPARE(fallbackImportPaths(),
        QStringList{QCoreApplication::applicationDirPath() + QStringLiteral("/imports")});
}

QTEST_GUILESS_MAIN(TestPlatformStart)
#include "tst_platformstart.moc"
