// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The built program as Windows sees it.

#include "config/maker.h"

#include <QtCore/qdir.h>
#include <QtCore/qendian.h>
#include <QtCore/qfile.h>
#include <QtCore/qjsondocument.h>
#include <QtCore/qjsonobject.h>
#include <QtCore/qprocess.h>
#include <QtCore/qrect.h>
#include <QtCore/qtemporarydir.h>
#include <QtGui/qregion.h>
#include <QtTest/qtest.h>

#include <memory>

#include <windows.h>

using namespace Qt::StringLiterals;

namespace
{

constexpr int limitMs = 60'000; // the first program in a Wine session takes its time
constexpr LONG_PTR watchedStyles
    = WS_EX_LAYERED | WS_EX_APPWINDOW | WS_EX_TOOLWINDOW | WS_EX_TOPMOST | WS_EX_TRANSPARENT;
constexpr LONG_PTR toolWindow = WS_EX_LAYERED | WS_EX_TOOLWINDOW;

const QString program = QStringLiteral(VESPER_PROGRAM);

// In the roaming folder of the Wine prefix, which belongs to the tests.
QString makerFolder()
{
    return QDir::fromNativeSeparators(qEnvironmentVariable("APPDATA")) + u'/'
        + Maker::organizationDomain;
}

QString settingsFolder() { return makerFolder() + u"/Vesper"_s; }

bool writeSettings(const QJsonObject &settings)
{
    QFile file(settingsFolder() + u"/config.json"_s);
    return QDir().mkpath(settingsFolder()) && file.open(QFile::WriteOnly)
        && file.write(QJsonDocument(settings).toJson()) > 0;
}

QJsonObject geometry(int left, int top, int width, int height)
{
    return {{u"Geometry"_s,
        QJsonObject{
            {u"Left"_s, left}, {u"Top"_s, top}, {u"Width"_s, width}, {u"Height"_s, height}}}};
}

struct Search {
    DWORD pid;
    HWND found = nullptr;
};

BOOL CALLBACK findClock(HWND window, LPARAM parameter)
{
    auto *const search = reinterpret_cast<Search *>(parameter);
    DWORD owner = 0;
    GetWindowThreadProcessId(window, &owner);
    wchar_t title[32] = {};
    GetWindowTextW(window, title, 32);
    if (owner != search->pid || !IsWindowVisible(window) || QStringView(title) != u"Vesper"_s)
        return TRUE;
    search->found = window;
    return FALSE;
}

// The program as a process of its own. The destructor ends it.
class RunningClock
{
public:
    explicit RunningClock(const QStringList &arguments = {})
    {
        m_process.start(program, arguments);
    }
    Q_DISABLE_COPY_MOVE(RunningClock)
    ~RunningClock()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

    [[nodiscard]] bool waitForWindow()
    {
        const auto isThere = [this] {
            Search search{DWORD(m_process.processId())};
            EnumWindows(findClock, reinterpret_cast<LPARAM>(&search));
            m_window = search.found;
            return m_window != nullptr;
        };
        return QTest::qWaitFor(isThere, limitMs);
    }

    [[nodiscard]] int waitForExit()
    {
        return m_process.waitForFinished(limitMs) ? m_process.exitCode() : -1;
    }

    HWND window() const { return m_window; }
    LONG_PTR styles() const { return GetWindowLongPtrW(m_window, GWL_EXSTYLE) & watchedStyles; }
    QRect geometry() const
    {
        RECT rect = {};
        GetWindowRect(m_window, &rect);
        return QRect(QPoint(rect.left, rect.top), QPoint(rect.right - 1, rect.bottom - 1));
    }

private:
    QProcess m_process;
    HWND m_window = nullptr;
};

struct RegionDeleter {
    void operator()(HRGN region) const { DeleteObject(region); }
};
using Region = std::unique_ptr<std::remove_pointer_t<HRGN>, RegionDeleter>;

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
    QVERIFY(QDir(makerFolder()).removeRecursively());
}

void TestWindowsProgram::cleanup() { QDir(makerFolder()).removeRecursively(); }

void TestWindowsProgram::isAProgramWithWindows()
{
    QFile file(program);
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
    QVERIFY(settingsFolder().contains(u"/AppData/Roaming/"_s));
    QVERIFY(!QFileInfo::exists(settingsFolder()));
    RunningClock clock;
    QVERIFY(clock.waitForWindow());
    QVERIFY(QFileInfo(settingsFolder()).isDir());
}

void TestWindowsProgram::takesTheStoredGeometry_data()
{
    QTest::addColumn<QJsonObject>("settings");
    QTest::addColumn<QRect>("expected");

    const int screenWidth = GetSystemMetrics(SM_CXSCREEN);
    const int screenHeight = GetSystemMetrics(SM_CYSCREEN);
    // In the middle, where Qt puts a window that has no place.
    const QRect own((screenWidth - 320) / 2, (screenHeight - 320) / 2, 320, 320);
    QTest::newRow("nothing stored") << QJsonObject() << own;
    QTest::newRow("square") << geometry(200, 150, 300, 300) << QRect(200, 150, 300, 300);
    QTest::newRow("the width wins") << geometry(200, 150, 300, 200) << QRect(200, 150, 300, 300);
    QTest::newRow("too narrow") << geometry(200, 150, 71, 200) << own;
    QTest::newRow("too large") << geometry(200, 150, 8000, 8000) << own;
}

void TestWindowsProgram::takesTheStoredGeometry()
{
    QFETCH(QJsonObject, settings);
    QFETCH(QRect, expected);

    QVERIFY(writeSettings(settings));
    RunningClock clock;
    QVERIFY(clock.waitForWindow());
    QTRY_COMPARE(clock.geometry(), expected);
}

void TestWindowsProgram::isRound()
{
    constexpr int side = 300;
    QVERIFY(writeSettings(geometry(200, 150, side, side)));
    RunningClock clock;
    QVERIFY(clock.waitForWindow());
    const Region region(CreateRectRgn(0, 0, 0, 0));
    QTRY_COMPARE(GetWindowRgn(clock.window(), region.get()), COMPLEXREGION);
    // The ellipse that is the mask begins one pixel to the left of the window and above it.
    const QRegion circle(-1, -1, side + 1, side + 1, QRegion::Ellipse);
    for (int y = 0; y < side; ++y) {
        for (int x = 0; x < side; ++x) {
            if (bool(PtInRegion(region.get(), x, y)) != circle.contains(QPoint(x, y)))
                QFAIL(qPrintable(u"differs at %1, %2"_s.arg(x).arg(y)));
        }
    }
}

void TestWindowsProgram::isSquareWhileItCanBeResized()
{
    QVERIFY(writeSettings({{u"ResizeEnabled"_s, true}}));
    RunningClock clock;
    QVERIFY(clock.waitForWindow());
    const Region region(CreateRectRgn(0, 0, 0, 0));
    QTRY_COMPARE(GetWindowRgn(clock.window(), region.get()), ERROR); // there is none
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

    QVERIFY(writeSettings(settings));
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

    QVERIFY(writeSettings(geometry(200, 150, 300, 300)));
    RunningClock clock({argument});
    QVERIFY(clock.waitForWindow());
    QTRY_COMPARE(clock.geometry().size(), QSize(320, 320));
    QVERIFY(QFileInfo(settingsFolder()).isDir());
    QVERIFY(QDir(settingsFolder()).isEmpty());
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

    QVERIFY(writeSettings(geometry(200, 150, 300, 300)));
    RunningClock clock({argument});
    QCOMPARE(clock.waitForExit(), 0);
    QVERIFY(!QFileInfo::exists(makerFolder()));
}

QTEST_GUILESS_MAIN(TestWindowsProgram)
#include "tst_windowsprogram.moc"
