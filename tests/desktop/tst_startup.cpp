// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The command line of the program, and starts that fail.

#include "tests/desktop/runningclock.h"

#include <QtCore/qdir.h>
#include <QtCore/qfile.h>
#include <QtCore/qlibraryinfo.h>
#include <QtTest/qtest.h>

using namespace Qt::StringLiterals;

namespace
{

constexpr int storedSide = 300;
constexpr int ownSide = 320;

QJsonObject storedSettings()
{
    return {{u"Geometry"_s,
        QJsonObject{{u"Left"_s, 200}, {u"Top"_s, 150}, {u"Width"_s, storedSide},
            {u"Height"_s, storedSide}}}};
}

bool writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QFile::WriteOnly) && file.write(content) == content.size();
}

QStringList entriesOf(const QString &folder)
{
    return QDir(folder).entryList(
        QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDir::Name);
}

// Links everything in the folder \a from into the new folder \a to, but for \a hidden, a path below
// it.
bool mirror(const QString &from, const QString &to, const QString &hidden)
{
    if (!QDir().mkpath(to))
        return false;
    const QString name = hidden.section(u'/', 0, 0);
    const QStringList entries = entriesOf(from);
    for (const QString &entry : entries) {
        if (entry != name && !QFile::link(from + u'/' + entry, to + u'/' + entry))
            return false;
    }
    const QString below = hidden.section(u'/', 1);
    return below.isEmpty() || mirror(from + u'/' + name, to + u'/' + name, below);
}

} // namespace

class TestStartup : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }

    void resets_data();
    void resets();
    void resetKeepsOtherFilesOfTheMaker();
    void ignoresUnknownArguments_data();
    void ignoresUnknownArguments();
    void uninstalls_data();
    void uninstalls();
    void uninstallKeepsOtherFilesOfTheMaker();
    void endsWithoutTheMainDocument();
};

void TestStartup::resets_data()
{
    QTest::addColumn<QStringList>("arguments");

    QTest::newRow("long") << QStringList{u"--reset"_s};
    QTest::newRow("short") << QStringList{u"-r"_s};
    QTest::newRow("capitals") << QStringList{u"--RESET"_s};
    QTest::newRow("mixed") << QStringList{u"--ReSet"_s};
    QTest::newRow("capital letter") << QStringList{u"-R"_s};
    QTest::newRow("after another") << QStringList{u"--bold"_s, u"-r"_s};
    QTest::newRow("twice") << QStringList{u"-r"_s, u"--reset"_s};
}

void TestStartup::resets()
{
    QFETCH(QStringList, arguments);

    const ClockHome home;
    QVERIFY(home.writeSettings(storedSettings()));
    RunningClock clock(home, {.arguments = arguments});
    QVERIFY(clock.waitForWindow());
    QCOMPARE(clock.window().geometry().size(), QSize(ownSide, ownSide));
    // Looking for the file has made the folder anew.
    QVERIFY(QFileInfo(home.settingsFolder()).isDir());
    QCOMPARE(entriesOf(home.settingsFolder()), QStringList());
}

void TestStartup::resetKeepsOtherFilesOfTheMaker()
{
    const ClockHome home;
    QVERIFY(home.writeSettings(storedSettings()));
    QVERIFY(writeFile(home.settingsFolder() + u"/other.txt"_s, "gone"));
    QVERIFY(writeFile(home.makerFolder() + u"/other.txt"_s, "kept"));
    RunningClock clock(home, {.arguments = {u"--reset"_s}});
    QVERIFY(clock.waitForWindow());
    QCOMPARE(entriesOf(home.settingsFolder()), QStringList());
    QCOMPARE(entriesOf(home.makerFolder()), QStringList({u"Vesper"_s, u"other.txt"_s}));
}

void TestStartup::ignoresUnknownArguments_data()
{
    QTest::addColumn<QStringList>("arguments");

    QTest::newRow("none") << QStringList{};
    QTest::newRow("unknown") << QStringList{u"--bold"_s};
    QTest::newRow("not quite reset") << QStringList{u"--resets"_s, u"reset"_s, u"r"_s, u"-reset"_s};
    QTest::newRow("not quite uninstall") << QStringList{u"uninstall"_s, u"--un"_s, u"u"_s, u"/u"_s};
    QTest::newRow("empty") << QStringList{u""_s};
    QTest::newRow("Japanese") << QStringList{u"時計"_s};
}

void TestStartup::ignoresUnknownArguments()
{
    QFETCH(QStringList, arguments);

    const ClockHome home;
    QVERIFY(home.writeSettings(storedSettings()));
    RunningClock clock(home, {.arguments = arguments});
    QVERIFY(clock.waitForWindow());
    QCOMPARE(clock.window().geometry().size(), QSize(storedSide, storedSide));
    QCOMPARE(entriesOf(home.settingsFolder()), QStringList{u"config.json"_s});
    QCOMPARE(clock.output(), QByteArray());
}

void TestStartup::uninstalls_data()
{
    QTest::addColumn<QStringList>("arguments");

    QTest::newRow("long") << QStringList{u"--uninstall"_s};
    QTest::newRow("short") << QStringList{u"-u"_s};
    QTest::newRow("capitals") << QStringList{u"--UNINSTALL"_s};
    QTest::newRow("capital letter") << QStringList{u"-U"_s};
    QTest::newRow("after another") << QStringList{u"--bold"_s, u"-u"_s};
    QTest::newRow("after a reset") << QStringList{u"--reset"_s, u"--uninstall"_s};
    QTest::newRow("before a reset") << QStringList{u"--uninstall"_s, u"--reset"_s};
}

void TestStartup::uninstalls()
{
    QFETCH(QStringList, arguments);

    const ClockHome home;
    QVERIFY(home.writeSettings(storedSettings()));
    const XWindowWatch watch;
    RunningClock clock(home, {.arguments = arguments});
    QCOMPARE(clock.waitForExit(), 0);
    QCOMPARE(watch.mappedWindows(), 0);
    QCOMPARE(clock.output(), QByteArray());
    QVERIFY(!QFileInfo::exists(home.makerFolder()));
}

void TestStartup::uninstallKeepsOtherFilesOfTheMaker()
{
    const ClockHome home;
    QVERIFY(home.writeSettings(storedSettings()));
    QVERIFY(writeFile(home.makerFolder() + u"/other.txt"_s, "kept"));
    RunningClock clock(home, {.arguments = {u"-u"_s}});
    QCOMPARE(clock.waitForExit(), 0);
    QCOMPARE(entriesOf(home.makerFolder()), QStringList{u"other.txt"_s});
}

void TestStartup::endsWithoutTheMainDocument()
{
    // The main document imports this module, so it cannot be loaded where that is missing. Hidden
    // by a copy of the program with another Qt folder, since not every machine permits a mount.
    const QTemporaryDir folder;
    const QString modules = QLibraryInfo::path(QLibraryInfo::QmlImportsPath);
    QVERIFY(QFileInfo(modules + u"/Qt/labs/platform"_s).isDir());
    QVERIFY(mirror(modules, folder.filePath(u"qml"_s), u"Qt/labs/platform"_s));
    const QString program = folder.filePath(u"vesper"_s);
    QVERIFY(QFile::copy(QStringLiteral(VESPER_PROGRAM), program));
    const QString qtConf = u"[Paths]\nPrefix=%1\nPlugins=%2\nQmlImports=qml\n"_s.arg(
        folder.path(), QLibraryInfo::path(QLibraryInfo::PluginsPath));
    QVERIFY(writeFile(folder.filePath(u"qt.conf"_s), qtConf.toUtf8()));

    const ClockHome home;
    const XWindowWatch watch;
    RunningClock clock(home, {.program = program});
    QCOMPARE(clock.waitForExit(), 255); // -1, of which the system keeps eight bits
    QCOMPARE(watch.mappedWindows(), 0);
    QVERIFY(clock.output().contains("Qt.labs.platform"));
}

QTEST_MAIN(TestStartup)
#include "tst_startup.moc"
