// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The built program as Windows sees it.

#include "tests/windows/runningclock.h"

#include <QtCore/qdir.h>
#include <QtCore/qendian.h>
#include <QtCore/qfile.h>
#include <QtCore/qtemporarydir.h>
#include <QtTest/qtest.h>

using namespace Qt::StringLiterals;

namespace
{

constexpr LONG_PTR toolWindow = WS_EX_LAYERED | WS_EX_TOOLWINDOW;

} // namespace

class TestWindowsProgram : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void isAProgramWithWindows();
    void getsItsArgumentsWhole();
    void keepsItsSettingsInTheRoamingFolder();
    void takesTheStoredGeometry_data();
    void takesTheStoredGeometry();
    void isRound();
    void isSquareWhileItCanBeResized();
    void hasTheStylesOfItsSettings_data();
    void hasTheStylesOfItsSettings();
    void resets_data();
    void resets();
    void uninstalls_data();
    void uninstalls();
};

void TestWindowsProgram::init()
{
    QTest::failOnWarning();
    QVERIFY(QDir(Settings::makerFolder()).removeRecursively());
}

void TestWindowsProgram::cleanup() { QDir(Settings::makerFolder()).removeRecursively(); }

void TestWindowsProgram::isAProgramWithWindows()
{
    QFile file(QStringLiteral(VESPER_PROGRAM));
    QVERIFY(file.open(QFile::ReadOnly));
    const QByteArray head = file.read(4096);
    // The offset of the PE header stands at 0x3c of the file, the subsystem at 0x5c of that header.
    const auto header = qFromLittleEndian<qint32>(head.constData() + 0x3c);
    QCOMPARE(head.mid(header, 4), QByteArray("PE\0\0", 4));
    QCOMPARE(qFromLittleEndian<qint16>(head.constData() + header + 0x5c),
        qint16(IMAGE_SUBSYSTEM_WINDOWS_GUI));
}

void TestWindowsProgram::getsItsArgumentsWhole()
{
    const QStringList arguments{u"時計"_s, u"二 語"_s, u"é"_s, u"--bold"_s};
    const QTemporaryDir folder;
    const QString path = folder.filePath(u"arguments"_s);
    QCOMPARE(
        QProcess::execute(QStringLiteral(VESPER_ARGUMENT_WRITER), QStringList{path} + arguments),
        0);
    QFile file(path);
    QVERIFY(file.open(QFile::ReadOnly));
    const QStringList lines = QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts);
    QCOMPARE(lines, arguments);
}

void TestWindowsProgram::keepsItsSettingsInTheRoamingFolder()
{
    QVERIFY(Settings::folder().contains(u"/AppData/Roaming/"_s));
    QVERIFY(!QFileInfo::exists(Settings::folder()));
    RunningClock clock;
    QVERIFY(clock.waitForWindow());
    QVERIFY(QFileInfo(Settings::folder()).isDir());
}

void TestWindowsProgram::takesTheStoredGeometry_data()
{
    QTest::addColumn<QJsonObject>("settings");
    QTest::addColumn<QRect>("expected");

    const int screenWidth = GetSystemMetrics(SM_CXSCREEN);
    const int screenHeight = GetSystemMetrics(SM_CYSCREEN);
    // In the middle, where Qt puts a window that has no place.
    const QRect own((screenWidth - 320) / 2, (screenHeight - 320) / 2, 320, 320);
    const QRect first(screenWidth - 24 - 320, 24, 320, 320); // beside the settings window
    QTest::newRow("nothing stored") << QJsonObject() << first;
    QTest::newRow("square") << Settings::geometry(200, 150, 300, 300) << QRect(200, 150, 300, 300);
    QTest::newRow("the width wins")
        << Settings::geometry(200, 150, 300, 200) << QRect(200, 150, 300, 300);
    QTest::newRow("too narrow") << Settings::geometry(200, 150, 71, 200) << own;
    QTest::newRow("too large") << Settings::geometry(200, 150, 8000, 8000) << own;
}

void TestWindowsProgram::takesTheStoredGeometry()
{
    QFETCH(QJsonObject, settings);
    QFETCH(QRect, expected);

    QVERIFY(Settings::write(settings));
    RunningClock clock;
    QVERIFY(clock.waitForWindow());
    QTRY_COMPARE(clock.geometry(), expected);
}

void TestWindowsProgram::isRound()
{
    constexpr int side = 300;
    QVERIFY(Settings::write(Settings::geometry(200, 150, side, side)));
    RunningClock clock;
    QVERIFY(clock.waitForWindow());
    // The ellipse that is the mask begins one pixel to the left of the window and above it.
    const QRegion circle(-1, -1, side + 1, side + 1, QRegion::Ellipse);
    QTRY_COMPARE(clock.mask(), circle & QRect(0, 0, side, side));
}

void TestWindowsProgram::isSquareWhileItCanBeResized()
{
    QVERIFY(Settings::write({{u"ResizeEnabled"_s, true}}));
    RunningClock clock;
    QVERIFY(clock.waitForWindow());
    QTRY_VERIFY(!clock.mask());
}

void TestWindowsProgram::hasTheStylesOfItsSettings_data()
{
    QTest::addColumn<QJsonObject>("settings");
    QTest::addColumn<LONG_PTR>("expected");

    QTest::newRow("nothing stored") << QJsonObject() << (toolWindow | WS_EX_TOPMOST);
    QTest::newRow("not topmost") << QJsonObject{{u"Topmost"_s, false}} << toolWindow;
    QTest::newRow("click-through") << QJsonObject{{u"IgnoreMouseEvent"_s, true}}
                                   << (toolWindow | WS_EX_TOPMOST | WS_EX_TRANSPARENT);
}

void TestWindowsProgram::hasTheStylesOfItsSettings()
{
    QFETCH(QJsonObject, settings);
    QFETCH(LONG_PTR, expected);

    QVERIFY(Settings::write(settings));
    RunningClock clock;
    QVERIFY(clock.waitForWindow());
    QTRY_COMPARE(clock.styles(), expected);
    // And so they stay when all that the start has set going is done.
    QTest::qWait(1500);
    QCOMPARE(clock.styles(), expected);
    QVERIFY(IsWindowVisible(clock.window()));
}

void TestWindowsProgram::resets_data()
{
    QTest::addColumn<QString>("argument");

    QTest::newRow("long") << u"--reset"_s;
    QTest::newRow("capital letter") << u"-R"_s;
}

void TestWindowsProgram::resets()
{
    QFETCH(QString, argument);

    QVERIFY(Settings::write(Settings::geometry(200, 150, 300, 300)));
    RunningClock clock({argument});
    QVERIFY(clock.waitForWindow());
    QTRY_COMPARE(clock.geometry().size(), QSize(320, 320));
    QVERIFY(QFileInfo(Settings::folder()).isDir());
    QVERIFY(QDir(Settings::folder()).isEmpty());
}

void TestWindowsProgram::uninstalls_data()
{
    QTest::addColumn<QString>("argument");

    QTest::newRow("long") << u"--uninstall"_s;
    QTest::newRow("capital letter") << u"-U"_s;
}

void TestWindowsProgram::uninstalls()
{
    QFETCH(QString, argument);

    QVERIFY(Settings::write(Settings::geometry(200, 150, 300, 300)));
    RunningClock clock({argument});
    QCOMPARE(clock.waitForExit(), 0);
    QVERIFY(!QFileInfo::exists(Settings::makerFolder()));
}

QTEST_GUILESS_MAIN(TestWindowsProgram)
#include "tst_windowsprogram.moc"
