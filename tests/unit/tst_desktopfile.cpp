// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "platform/desktopfile.h"

#include <QtCore/qtemporarydir.h>
#include <QtTest/qtest.h>

using namespace Qt::StringLiterals;

class TestDesktopFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void readsItsGroup();
    void noDesktopFile_data();
    void noDesktopFile();
    void commands_data();
    void commands();
    void foreignCommands_data();
    void foreignCommands();

private:
    std::optional<DesktopFile> fileOf(const QByteArray &text);

    QTemporaryDir m_folder;
};

std::optional<DesktopFile> TestDesktopFile::fileOf(const QByteArray &text)
{
    QFile file(m_folder.filePath(u"a.desktop"_s));
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        return std::nullopt;
    file.close();
    return DesktopFile::read(file.fileName());
}

void TestDesktopFile::readsItsGroup()
{
    const auto file = fileOf("# a comment\n[Desktop Entry]\nName = A\\sB\nName[ja]=\xe3\x81\x82\n\n"
                             "Empty=\n[Desktop Action x]\nExec=other\n");
    if (!file)
        QFAIL("no desktop file");
    QCOMPARE(file->value(u"Name"_s), u"A B"_s);
    QCOMPARE(file->value(u"Name[ja]"_s), u"あ"_s);
    QVERIFY(file->contains(u"Empty"_s));
    QVERIFY(!file->contains(u"Exec"_s));
}

void TestDesktopFile::noDesktopFile_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty") << QByteArray();
    QTest::newRow("another group") << "[Other]\nExec=a\n"_ba;
    QTest::newRow("no group") << "Exec=a\n"_ba;
    QTest::newRow("bytes") << "\xff\xfe\x00\x01"_ba;
    QTest::newRow("huge") << "[Desktop Entry]\n"_ba + QByteArray(2'000'000, 'x');
}

void TestDesktopFile::noDesktopFile()
{
    QFETCH(QByteArray, text);
    QVERIFY(!fileOf(text));
}

void TestDesktopFile::commands_data()
{
    QTest::addColumn<QString>("program");
    QTest::addColumn<QString>("command");
    QTest::newRow("plain") << u"/usr/bin/vesper"_s << u"\"/usr/bin/vesper\""_s;
    QTest::newRow("blank") << u"/a b/vesper"_s << u"\"/a b/vesper\""_s;
    QTest::newRow("dollar") << u"/a$b"_s << u"\"/a\\\\$b\""_s;
    QTest::newRow("quote") << u"/a\"b"_s << u"\"/a\\\\\"b\""_s;
    QTest::newRow("backslash") << u"/a\\b"_s << u"\"/a\\\\\\\\b\""_s;
    QTest::newRow("line ends") << u"/a\nHidden=true\r\nb"_s << u"\"/a\\nHidden=true\\r\\nb\""_s;
    QTest::newRow("per cent") << u"/100%/vesper"_s << u"\"/100%%/vesper\""_s;
}

// Written and, through a file, read again.
void TestDesktopFile::commands()
{
    QFETCH(QString, program);
    QFETCH(QString, command);
    QCOMPARE(commandOfProgram(program), command);
    const auto file = fileOf("[Desktop Entry]\nExec=" + command.toUtf8() + '\n');
    if (!file)
        QFAIL("no desktop file");
    QCOMPARE(programOfCommand(file->value(u"Exec"_s)), program);
}

void TestDesktopFile::foreignCommands_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<QString>("program");
    QTest::newRow("arguments") << u"vesper --reset %U"_s << u"vesper"_s;
    QTest::newRow("quoted, arguments") << u"\"/a b/c\" --reset"_s << u"/a b/c"_s;
    QTest::newRow("blanks before") << u"  /a/b c"_s << u"/a/b"_s;
    QTest::newRow("nothing") << QString() << QString();
    QTest::newRow("open quote") << u"\"/a b"_s << QString();
}

void TestDesktopFile::foreignCommands()
{
    QFETCH(QString, command);
    QTEST(programOfCommand(command), "program");
}

QTEST_GUILESS_MAIN(TestDesktopFile)
#include "tst_desktopfile.moc"
