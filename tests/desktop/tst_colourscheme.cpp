// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The desktop turns dark and light while the clock runs: its menu follows and stays readable.

#include "tests/desktop/runningclock.h"
#include "tests/desktop/xinput.h"
#include "tests/desktop/xsettings.h"

#include <QtCore/qprocess.h>
#include <QtDBus/qdbusconnection.h>
#include <QtDBus/qdbusextratypes.h>
#include <QtDBus/qdbusmessage.h>
#include <QtTest/qtest.h>

#include <algorithm>
#include <cmath>
#include <csignal>
#include <memory>

using namespace Qt::StringLiterals;

namespace
{

constexpr QRect place(860, 440, 200, 200);
constexpr double leastContrast = 4.5; // WCAG 2.1, text of ordinary size

// WCAG 2.1: relative luminance of an sRGB colour.
double luminance(const QColor &colour)
{
    const auto linear = [](float part) {
        return part <= 0.04045F ? double(part) / 12.92
                                : std::pow((double(part) + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
        + 0.0722 * linear(colour.blueF());
}

double contrast(const QColor &one, const QColor &other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

// What stands out most from the background of a picture of text.
double textContrast(const QImage &picture, const QColor &background)
{
    double most = 1.0;
    for (int y = 0; y < picture.height(); ++y) {
        for (int x = 0; x < picture.width(); ++x)
            most = std::max(most, contrast(picture.pixelColor(x, y), background));
    }
    return most;
}

/// A desktop that can be told to be dark or light.
class Desktop
{
public:
    Desktop() = default;
    Q_DISABLE_COPY_MOVE(Desktop)
    virtual ~Desktop() = default;
    virtual QMap<QString, QString> environment() const = 0;
    virtual void setDark(bool dark) = 0;
};

/// Qt's own theme for KDE: colours in a file, changes told on the session bus.
class KdeDesktop : public Desktop
{
public:
    explicit KdeDesktop(const ClockHome &home)
        : m_file(home.path() + u"/.config/kdeglobals"_s)
    {
        QDir().mkpath(home.path() + u"/.config"_s);
        writeColours(false);
    }

    QMap<QString, QString> environment() const override
    {
        return {{u"XDG_CURRENT_DESKTOP"_s, u"KDE"_s}, {u"KDE_FULL_SESSION"_s, u"true"_s},
            {u"KDE_SESSION_VERSION"_s, u"6"_s}};
    }

    void setDark(bool dark) override
    {
        writeColours(dark);
        tell(u"org.kde.kdeglobals.General"_s, u"ColorScheme"_s, dark ? u"Dark"_s : u"Light"_s);
        tell(u"org.freedesktop.appearance"_s, u"color-scheme"_s, dark ? 1U : 2U);
    }

private:
    void writeColours(bool dark)
    {
        // The colours of KDE's Breeze: its white is not quite white.
        const QByteArray background = dark ? "42,46,50" : "239,240,241";
        const QByteArray text = dark ? "252,252,252" : "35,38,41";
        QByteArray lines = QByteArray("[General]\nColorScheme=") + (dark ? "Dark" : "Light") + '\n';
        for (const char *group : {"Window", "View", "Button", "Tooltip", "Selection"})
            lines += QByteArray("[Colors:") + group + "]\nBackgroundNormal=" + background
                + "\nForegroundNormal=" + text + '\n';
        QFile file(m_file);
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(lines), lines.size());
    }

    static void tell(const QString &group, const QString &key, const QVariant &value)
    {
        QDBusMessage signal = QDBusMessage::createSignal(u"/org/freedesktop/portal/desktop"_s,
            u"org.freedesktop.portal.Settings"_s, u"SettingChanged"_s);
        signal << group << key << QVariant::fromValue(QDBusVariant(value));
        QVERIFY(QDBusConnection::sessionBus().send(signal));
    }

    QString m_file;
};

/// GTK's theme, named by a settings daemon on the X server.
class GtkDesktop : public Desktop
{
public:
    QMap<QString, QString> environment() const override
    {
        return {{u"QT_QPA_PLATFORMTHEME"_s, u"gtk3"_s}, {u"NO_AT_BRIDGE"_s, u"1"_s}};
    }

    void setDark(bool dark) override
    {
        m_settings.change(
            dark ? "Net/ThemeName \"Adwaita-dark\"\n" : "Net/ThemeName \"Adwaita\"\n");
    }

private:
    XSettings m_settings{"Net/ThemeName \"Adwaita\"\n"};
};

std::unique_ptr<Desktop> makeDesktop(const QByteArray &name, const ClockHome &home)
{
    if (name == "KDE")
        return std::make_unique<KdeDesktop>(home);
    return std::make_unique<GtkDesktop>();
}

void closeMenu()
{
    XInput::type(XInput::EscapeKey);
    QTRY_VERIFY(XWindow::popups().isEmpty());
}

// The last item of the open menu: "Quit", beside the clock.
QImage pictureOfLastItem()
{
    const QRect menu = XWindow::popups().first().geometry();
    return screenPicture(QRect(menu.left() + 20, menu.bottom() - 22, 60, 16));
}

// Whether the menu has this background; if so it stays open.
bool openMenuIs(const QColor &background)
{
    XInput::click(place.center() + QPoint(0, 60), XInput::RightButton);
    if (!QTest::qWaitFor([] { return XWindow::popups().size() == 1; }, 1000))
        return false;
    const auto isPainted
        = [&background] { return pictureOfLastItem().pixelColor(0, 0) == background; };
    if (QTest::qWaitFor(isPainted, 300)) // the compositor takes its time
        return true;
    closeMenu();
    return false;
}

} // namespace

class TestColourScheme : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }
    void menuFollows_data();
    void menuFollows();
};

void TestColourScheme::menuFollows_data()
{
    QTest::addColumn<QByteArray>("desktop");
    QTest::newRow("KDE") << "KDE"_ba;
    QTest::newRow("GTK") << "GTK"_ba;
}

void TestColourScheme::menuFollows()
{
    QFETCH(QByteArray, desktop);
    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place)));
    const auto theme = makeDesktop(desktop, home);
    RunningClock clock(home, {.environment = theme->environment()});
    QVERIFY(clock.waitForWindow());

    for (int flip = 1; flip <= 10; ++flip) {
        const bool dark = flip % 2 == 1;
        theme->setDark(dark);
        QTest::qWait(400); // a switch has three steps in 200 ms
        const QColor background = dark ? QColor(45, 45, 45) : QColor(240, 240, 240);
        QVERIFY(QTest::qWaitFor([&background] { return openMenuIs(background); }));
        QCOMPARE_GE(textContrast(pictureOfLastItem(), background), leastContrast);
        closeMenu();
    }
    // Quickly, so that the steps of the switches mix.
    for (int flip = 1; flip <= 10; ++flip) {
        theme->setDark(flip % 2 == 1);
        QTest::qWait(70);
    }
    QTest::qWait(500);
    QVERIFY(clock.isRunning());
}

QTEST_MAIN(TestColourScheme)
#include "tst_colourscheme.moc"
