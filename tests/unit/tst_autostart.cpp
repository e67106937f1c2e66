// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Start at sign-in on the desktops of Linux: real files in a folder of the test's own.

#include "platform/autostart.h"
#include "platform/desktopfile.h"

#include <QtCore/qdir.h>
#include <QtCore/qprocess.h>
#include <QtCore/qtemporarydir.h>
#include <QtTest/qtest.h>

#include <memory>

using namespace Qt::StringLiterals;

class TestAutoStart : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_home.reset(); }
    void writesAnEntry();
    void entryIsValid();
    void takesTheNextFreeName();
    void givesUpAfter998();
    void foreignEntryIsLeftAlone();
    void entriesThatCount_data();
    void entriesThatCount();
    void ownEntryThatIsOffIsReplaced();
    void linkToTheProgramCounts();
    void removesEveryOwnEntry();
    void removesNothingWhenThereIsNothing();
    void cannotWrite();

private:
    static bool create() { return AutoStart::createAutoStartLink(u"Vesper"_s, spec()); }
    static AutoStart::ShortcutSpec spec();
    static bool isFound(QStringList *paths = nullptr);
    QDir folder() const { return QDir(m_home->filePath(u"autostart"_s)); }
    void write(const QString &name, const QByteArray &lines) const;
    static QByteArray ownExec();

    std::unique_ptr<QTemporaryDir> m_home;
};

void TestAutoStart::init()
{
    QTest::failOnWarning();
    m_home = std::make_unique<QTemporaryDir>();
    qputenv("XDG_CONFIG_HOME", m_home->path().toUtf8());
    qputenv("XDG_CURRENT_DESKTOP", "Tester:GNOME");
}

AutoStart::ShortcutSpec TestAutoStart::spec()
{
    AutoStart::ShortcutSpec spec = AutoStart::buildAutoStartSpec();
    spec.description = u"Vesper - by Marrowby Inc."_s;
    return spec;
}

bool TestAutoStart::isFound(QStringList *paths)
{
    return AutoStart::findAutoStartLinks(spec().targetPath, spec().arguments, paths);
}

QByteArray TestAutoStart::ownExec()
{
    return "Exec=" + commandOfProgram(QCoreApplication::applicationFilePath()).toUtf8() + '\n';
}

void TestAutoStart::write(const QString &name, const QByteArray &lines) const
{
    QVERIFY(folder().mkpath(u"."_s));
    QFile file(folder().filePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(file.write("[Desktop Entry]\n" + lines) > 0);
}

void TestAutoStart::writesAnEntry()
{
    QVERIFY(!isFound());
    QVERIFY(create()); // the folder as well
    const auto file = DesktopFile::read(folder().filePath(u"Vesper.desktop"_s));
    if (!file)
        QFAIL("no entry");
    QCOMPARE(programOfCommand(file->value(u"Exec"_s)), QCoreApplication::applicationFilePath());
    QCOMPARE(file->value(u"Comment"_s), u"Vesper - by Marrowby Inc."_s);
    QCOMPARE(file->value(u"Icon"_s), u"vesper"_s);
    QStringList paths;
    QVERIFY(isFound(&paths));
    QCOMPARE(paths, QStringList{folder().filePath(u"Vesper.desktop"_s)});
}

void TestAutoStart::entryIsValid()
{
    QVERIFY(create());
    QProcess validator;
    validator.setProcessChannelMode(QProcess::MergedChannels);
    validator.start(u"desktop-file-validate"_s, {folder().filePath(u"Vesper.desktop"_s)});
    QVERIFY(validator.waitForFinished());
    QCOMPARE(validator.readAll(), QByteArray());
    QCOMPARE(validator.exitCode(), 0);
}

void TestAutoStart::takesTheNextFreeName()
{
    write(u"Vesper.desktop"_s, "Exec=other\n");
    QVERIFY(create());
    QVERIFY(folder().exists(u"Vesper_1.desktop"_s));
}

void TestAutoStart::givesUpAfter998()
{
    write(u"Vesper.desktop"_s, "Exec=other\n");
    for (int i = 1; i <= 998; ++i)
        write(u"Vesper_%1.desktop"_s.arg(i), "Exec=other\n");
    QVERIFY(!create());
    QVERIFY(!folder().exists(u"Vesper_999.desktop"_s));
    QVERIFY(QFile::remove(folder().filePath(u"Vesper_998.desktop"_s)));
    QVERIFY(create());
}

void TestAutoStart::foreignEntryIsLeftAlone()
{
    write(u"Vesper.desktop"_s, "Exec=/usr/bin/other\n");
    QVERIFY(!isFound());
    QVERIFY(AutoStart::removeAutoStartLinks());
    QVERIFY(folder().exists(u"Vesper.desktop"_s));
}

void TestAutoStart::entriesThatCount_data()
{
    QTest::addColumn<QByteArray>("lines");
    QTest::addColumn<bool>("on");
    QTest::newRow("plain") << ""_ba << true;
    QTest::newRow("hidden") << "Hidden=true\n"_ba << false;
    QTest::newRow("not hidden") << "Hidden=false\n"_ba << true;
    QTest::newRow("switched off") << "X-GNOME-Autostart-enabled=false\n"_ba << false;
    QTest::newRow("switched on") << "X-GNOME-Autostart-enabled=true\n"_ba << true;
    QTest::newRow("only here") << "OnlyShowIn=KDE;GNOME;\n"_ba << true;
    QTest::newRow("only elsewhere") << "OnlyShowIn=KDE;\n"_ba << false;
    QTest::newRow("not here") << "NotShowIn=Tester;\n"_ba << false;
    QTest::newRow("not elsewhere") << "NotShowIn=KDE;\n"_ba << true;
}

void TestAutoStart::entriesThatCount()
{
    QFETCH(QByteArray, lines);
    write(u"clock.desktop"_s, ownExec() + lines);
    QTEST(isFound(), "on");
}

void TestAutoStart::ownEntryThatIsOffIsReplaced()
{
    write(u"Vesper.desktop"_s, ownExec() + "Hidden=true\n");
    QVERIFY(create());
    QVERIFY(isFound());
    QCOMPARE(folder().entryList(QDir::Files), QStringList{u"Vesper.desktop"_s});
}

void TestAutoStart::linkToTheProgramCounts()
{
    const QString link = m_home->filePath(u"vesper-link"_s);
    QVERIFY(QFile::link(QCoreApplication::applicationFilePath(), link));
    write(u"clock.desktop"_s, "Exec=" + commandOfProgram(link).toUtf8() + " --bold\n");
    QVERIFY(isFound());
}

void TestAutoStart::removesEveryOwnEntry()
{
    write(u"Vesper.desktop"_s, "Exec=other\n");
    write(u"one.desktop"_s, ownExec());
    write(u"two.desktop"_s, ownExec() + "Hidden=true\n");
    QVERIFY(AutoStart::removeAutoStartLinks());
    QCOMPARE(folder().entryList(QDir::Files), QStringList{u"Vesper.desktop"_s});
}

void TestAutoStart::removesNothingWhenThereIsNothing()
{
    QVERIFY(AutoStart::removeAutoStartLinks());
}

void TestAutoStart::cannotWrite()
{
    // A file where the folder should be: nobody can write there, not even root.
    QFile file(m_home->filePath(u"autostart"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(!create());
    QVERIFY(!isFound());
}

QTEST_GUILESS_MAIN(TestAutoStart)
#include "tst_autostart.moc"
