// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The clock window as the window manager and other programs see it.

#include "tests/desktop/runningclock.h"

#include <QtCore/qfileinfo.h>
#include <QtCore/qsettings.h>
#include <QtGui/qicon.h>
#include <QtGui/qrasterwindow.h>
#include <QtGui/qscreen.h>
#include <QtTest/qsignalspy.h>
#include <QtTest/qtest.h>

using namespace Qt::StringLiterals;

namespace
{

QJsonObject geometry(double left, double top, double width, double height)
{
    return settingsAt(QRectF(left, top, width, height));
}

} // namespace

class TestWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }

    void namesItsDesktopFile();
    void hasAnIcon();
    void takesTheStoredGeometry_data();
    void takesTheStoredGeometry();
    void isRound_data();
    void isRound();
    void hasNoHoles();
    void isSquareWhileItCanBeResized();
    void hasTheStatesOfItsSettings_data();
    void hasTheStatesOfItsSettings();
    void staysAboveOtherWindows_data();
    void staysAboveOtherWindows();
    void letsTheMouseThrough_data();
    void letsTheMouseThrough();
    void takesNoFocus();
};

void TestWindow::namesItsDesktopFile()
{
    const QString desktopFile
        = QStringLiteral(VESPER_SOURCE_FOLDER "/packaging/linux/vesper.desktop");
    const QSettings entry(desktopFile, QSettings::IniFormat);

    const ClockHome home;
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    QCOMPARE(clock.window().classNames(), QByteArrayList({"vesper", "vesper"}));
    QCOMPARE(entry.value("Desktop Entry/StartupWMClass").toByteArray(),
        clock.window().classNames().last());
    QCOMPARE(QFileInfo(desktopFile).completeBaseName().toUtf8(),
        clock.window().text("_KDE_NET_WM_DESKTOP_FILE"));
}

void TestWindow::hasAnIcon()
{
    const ClockHome home;
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    // Looked at closely, since some window managers supply an icon of their own.
    const QIcon expected(QStringLiteral(VESPER_SOURCE_FOLDER "/images/app_icon.svg"));
    const QList<QImage> icons = clock.window().icons();
    QVERIFY(!icons.isEmpty());
    for (const QImage &icon : icons) {
        QCOMPARE(icon, expected.pixmap(icon.size()).toImage().convertToFormat(icon.format()));
        QVERIFY(icon.pixelColor(icon.rect().center()).alpha() > 0);
    }
}

void TestWindow::takesTheStoredGeometry_data()
{
    QTest::addColumn<QJsonObject>("settings");
    QTest::addColumn<QRect>("expected");

    // In the middle, where Qt puts a window that has no place.
    const QSize screen = QGuiApplication::primaryScreen()->size();
    const QRect own((screen.width() - 320) / 2, (screen.height() - 320) / 2, 320, 320);
    const QRect first(screen.width() - 24 - 320, 24, 320, 320); // beside the settings window
    QTest::newRow("nothing stored") << QJsonObject() << first;
    QTest::newRow("square") << geometry(200, 150, 300, 300) << QRect(200, 150, 300, 300);
    QTest::newRow("the width wins") << geometry(200, 150, 300, 200) << QRect(200, 150, 300, 300);
    QTest::newRow("fractions are cut")
        << geometry(200.9, 150.9, 300.9, 300.9) << QRect(200, 150, 300, 300);
    QTest::newRow("smallest") << geometry(200, 150, 72, 72) << QRect(200, 150, 72, 72);
    QTest::newRow("too narrow") << geometry(200, 150, 71, 200) << own;
    QTest::newRow("too low") << geometry(200, 150, 200, 71) << own;
    QTest::newRow("too large") << geometry(200, 150, 8000, 8000) << own;
}

void TestWindow::takesTheStoredGeometry()
{
    QFETCH(QJsonObject, settings);
    QFETCH(QRect, expected);

    const ClockHome home;
    QVERIFY(home.writeSettings(settings));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    QCOMPARE(clock.window().geometry(), expected);
}

void TestWindow::isRound_data()
{
    QTest::addColumn<int>("side");

    QTest::newRow("smallest") << 72;
    QTest::newRow("odd") << 301;
    QTest::newRow("default") << 320;
    QTest::newRow("large") << 1000;
}

void TestWindow::isRound()
{
    QFETCH(int, side);

    const ClockHome home;
    QVERIFY(home.writeSettings(geometry(20, 30, side, side)));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    // The server keeps what lies beyond the window, too, and shows nothing of it.
    const QRegion seen = clock.window().shape() & QRect(0, 0, side, side);
    QCOMPARE(seen ^ circle(side), QRegion());
    QVERIFY(!XWindow::under(QPoint(21, 31)));
    QCOMPARE(XWindow::under(QPoint(20 + side / 2, 30 + side / 2)), clock.window());
}

// What a tick changes is put on the screen by a compositor, from what it was told of the change.
void TestWindow::hasNoHoles()
{
    constexpr int ticks = 8;
    constexpr int side = 320;
    constexpr int margin = side / 4; // the square within is plate throughout
    const ClockHome home;
    QVERIFY(home.writeSettings(geometry(40, 40, side, side)));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    QTest::qWait(ticks * 1000);
    const QImage picture = clock.picture();
    QCOMPARE(picture.size(), QSize(side, side));
    const QRgb wallpaper = picture.pixel(0, 0);
    for (int y = margin; y < side - margin; ++y) {
        for (int x = margin; x < side - margin; ++x)
            QVERIFY2(picture.pixel(x, y) != wallpaper, qPrintable(u"%1, %2"_s.arg(x).arg(y)));
    }
}

void TestWindow::isSquareWhileItCanBeResized()
{
    const ClockHome home;
    QJsonObject settings = geometry(20, 30, 300, 300);
    settings.insert(u"ResizeEnabled"_s, true);
    QVERIFY(home.writeSettings(settings));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    QVERIFY(!clock.window().isShaped());
    QCOMPARE(XWindow::under(QPoint(21, 31)), clock.window());
}

void TestWindow::hasTheStatesOfItsSettings_data()
{
    QTest::addColumn<bool>("topmost");
    QTest::addColumn<QByteArrayList>("states");

    QTest::newRow("topmost") << true << QByteArrayList{"ABOVE", "SKIP_PAGER", "SKIP_TASKBAR"};
    QTest::newRow("not topmost") << false << QByteArrayList{"SKIP_PAGER", "SKIP_TASKBAR"};
}

void TestWindow::hasTheStatesOfItsSettings()
{
    QFETCH(bool, topmost);
    QFETCH(QByteArrayList, states);

    const ClockHome home;
    QVERIFY(home.writeSettings({{u"Topmost"_s, topmost}}));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    // A window manager shows "on all desktops" by one property, by the sticky state or by both.
    QTRY_VERIFY(clock.window().isOnAllDesktops() || clock.window().states().contains("STICKY"));
    const auto withoutSticky = [&clock] {
        QByteArrayList all = clock.window().states();
        all.removeAll("STICKY");
        all.removeAll("FOCUSED");
        return all;
    };
    QTRY_COMPARE(withoutSticky(), states);
}

void TestWindow::staysAboveOtherWindows_data()
{
    QTest::addColumn<bool>("topmost");

    QTest::newRow("topmost") << true;
    QTest::newRow("not topmost") << false;
}

void TestWindow::staysAboveOtherWindows()
{
    QFETCH(bool, topmost);

    const ClockHome home;
    QJsonObject settings = geometry(400, 300, 300, 300);
    settings.insert(u"Topmost"_s, topmost);
    QVERIFY(home.writeSettings(settings));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());

    QRasterWindow other; // a later window, so it comes to lie above all that are not topmost
    other.setGeometry(300, 200, 500, 500);
    other.show();
    const XWindow otherWindow(uint32_t(other.winId()));
    QTRY_COMPARE(XWindow::active(), otherWindow);
    QCOMPARE(XWindow::under(QPoint(550, 450)), topmost ? clock.window() : otherWindow);
    const QList<XWindow> stacking = XWindow::clients();
    QCOMPARE(stacking.last(), topmost ? clock.window() : otherWindow);
}

void TestWindow::letsTheMouseThrough_data()
{
    QTest::addColumn<bool>("ignoreMouseEvent");
    QTest::addColumn<bool>("resizeEnabled");

    QTest::newRow("off") << false << false;
    QTest::newRow("on") << true << false;
    QTest::newRow("on, resizable") << true << true;
}

void TestWindow::letsTheMouseThrough()
{
    QFETCH(bool, ignoreMouseEvent);
    QFETCH(bool, resizeEnabled);

    const ClockHome home;
    QJsonObject settings = geometry(400, 300, 300, 300);
    settings.insert(u"IgnoreMouseEvent"_s, ignoreMouseEvent);
    settings.insert(u"ResizeEnabled"_s, resizeEnabled);
    QVERIFY(home.writeSettings(settings));
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    QCOMPARE(clock.window().inputShape().isEmpty(), ignoreMouseEvent);
    QCOMPARE(XWindow::under(QPoint(550, 450)), ignoreMouseEvent ? XWindow() : clock.window());
}

void TestWindow::takesNoFocus()
{
    QRasterWindow typing;
    typing.setGeometry(100, 100, 200, 100);
    typing.show();
    typing.requestActivate();
    QVERIFY(QTest::qWaitForWindowActive(&typing));
    const XWindow typingWindow(uint32_t(typing.winId()));
    QTRY_COMPARE(XWindow::active(), typingWindow);
    QSignalSpy activeChanges(&typing, &QWindow::activeChanged);

    const ClockHome home;
    RunningClock clock(home);
    QVERIFY(clock.waitForWindow());
    QTRY_VERIFY(clock.window().states().contains("ABOVE"));
    QCOMPARE(XWindow::active(), typingWindow);
    QCOMPARE(activeChanges.size(), 0);
    // Some window managers give such a window no focus anyway; the others go by this.
    QVERIFY(clock.window().wantsNoFocus());
}

QTEST_MAIN(TestWindow)
#include "tst_window.moc"
