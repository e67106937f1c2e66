// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The settings window, as a person at the screen has it.

#include "tests/desktop/clockmenu.h"
#include "tests/desktop/runningclock.h"
#include "tests/desktop/xinput.h"

#include <QtGui/qguiapplication.h>
#include <QtGui/qscreen.h>
#include <QtTest/qtest.h>

#include <algorithm>
#include <csignal>

using namespace Qt::StringLiterals;

namespace
{

constexpr QRect place(60, 60, 200, 200); // beside the settings window, which opens in the middle
constexpr QPoint chooserInWindow(80, 144);
constexpr int listRowHeight = 32;

} // namespace

class TestSettingsDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void opensInTheMiddle();
    void opensAgainInTheMiddle();
    void fitsOnTheScreenWithItsFrame();
    void openingWritesNothing();
    void toneByMouse();
    void toneByKeyboard();
    void listClosesWithTheFocus();
    void quitsWithItOpen();
    void toneOfASessionThatEndsWithItOpen();

private:
    void start(const QJsonObject &settings = {});
    bool openSettings();
    /// The windows of the program beside the clock, the oldest first.
    QList<XWindow> dialogs() const;
    bool closeSettings();
    bool openList();
    bool chooseSecondTone();
    QString storedTone() const;

    std::unique_ptr<ClockHome> m_home;
    std::unique_ptr<RunningClock> m_clock;
};

void TestSettingsDialog::init()
{
    QTest::failOnWarning();
    m_home = std::make_unique<ClockHome>();
}

void TestSettingsDialog::cleanup()
{
    m_clock.reset();
    m_home.reset();
}

void TestSettingsDialog::start(const QJsonObject &settings)
{
    QVERIFY(m_home->writeSettings(settingsAt(place, settings)));
    m_clock = std::make_unique<RunningClock>(*m_home);
    QVERIFY(m_clock->waitForWindow());
}

QList<XWindow> TestSettingsDialog::dialogs() const
{
    QList<XWindow> windows = XWindow::allOfProcess(m_clock->pid());
    windows.removeOne(m_clock->window());
    std::ranges::sort(windows, {}, [](XWindow window) { return window.id(); });
    return windows;
}

bool TestSettingsDialog::openSettings()
{
    return ClockMenu::choose(place.center(), ClockMenu::Settings) && QTest::qWaitFor([this] {
        return dialogs().size() == 1 && XWindow::active() == dialogs().first();
    });
}

// With the button at the bottom right.
bool TestSettingsDialog::closeSettings()
{
    const QRect window = dialogs().first().geometry();
    XInput::click(window.bottomRight() - QPoint(48, 25));
    return QTest::qWaitFor([this] { return dialogs().isEmpty(); });
}

bool TestSettingsDialog::openList()
{
    XInput::click(dialogs().first().geometry().topLeft() + chooserInWindow);
    constexpr int unfoldingMs = 500;
    if (!QTest::qWaitFor([this] { return dialogs().size() == 2 && dialogs().last().isMapped(); }))
        return false;
    QTest::qWait(unfoldingMs);
    return true;
}

bool TestSettingsDialog::chooseSecondTone()
{
    if (!openList())
        return false;
    const QRect list = dialogs().last().geometry();
    XInput::click(list.topLeft() + QPoint(40, listRowHeight * 3 / 2));
    return QTest::qWaitFor([this] { return dialogs().size() == 1; });
}

QString TestSettingsDialog::storedTone() const
{
    return m_home->settings()[u"Theme"_s][u"ColorToneName"_s].toString();
}

void TestSettingsDialog::opensInTheMiddle()
{
    start();
    QVERIFY(openSettings());
    const XWindow window = dialogs().first();
    QCOMPARE(window.geometry().size(), QSize(424, 728));
    const QPoint off = window.geometry().center() - QPoint(960, 540);
    QVERIFY2(off.manhattanLength() < 30, qPrintable(QDebug::toString(off))); // but for its frame
    QVERIFY(m_clock->picture() != QImage());
}

void TestSettingsDialog::opensAgainInTheMiddle()
{
    start();
    QVERIFY(openSettings());
    const XWindow window = dialogs().first();
    const QRect first = window.geometry();
    window.setGeometry(first.translated(300, 100));
    QTRY_COMPARE(window.geometry(), first.translated(300, 100));
    QVERIFY(openSettings());
    QCOMPARE(dialogs(), QList<XWindow>{window});
    QTRY_COMPARE(window.geometry(), first);
}

// The buttons at its lower edge are the first that a frame would push off a small screen.
void TestSettingsDialog::fitsOnTheScreenWithItsFrame()
{
    start();
    QVERIFY(openSettings());
    const XWindow window = dialogs().first();
    QTRY_VERIFY(window.frame() != QMargins());
    const QRect screen = QGuiApplication::primaryScreen()->geometry();
    QTRY_VERIFY(screen.contains(window.geometry().marginsAdded(window.frame())));
    QVERIFY(closeSettings());
}

// Values that no control shows as they are stay as well.
void TestSettingsDialog::openingWritesNothing()
{
    start({{u"ScaleFactorGroup"_s, QJsonObject{{u"DateScaleFactor"_s, 4.5}}},
        {u"Theme"_s, QJsonObject{{u"ColorToneName"_s, u"LightRed"_s}}}});
    m_clock->signal(SIGTERM); // writes the file in full
    QCOMPARE(m_clock->waitForExit(), 0);
    const QJsonObject before = m_home->settings();
    QCOMPARE(before[u"ScaleFactorGroup"_s][u"DateScaleFactor"_s], QJsonValue(4.5));
    m_clock = std::make_unique<RunningClock>(*m_home);
    QVERIFY(m_clock->waitForWindow());
    QVERIFY(openSettings());
    QTest::qWait(500);
    QVERIFY(closeSettings());
    m_clock->signal(SIGTERM);
    QCOMPARE(m_clock->waitForExit(), 0);
    QCOMPARE(m_home->settings(), before);
}

void TestSettingsDialog::toneByMouse()
{
    start({{u"Theme"_s, QJsonObject{{u"ColorToneName"_s, u"DarkBlue"_s}}}});
    QVERIFY(openSettings());
    QVERIFY(chooseSecondTone());
    QVERIFY(closeSettings());
    QTRY_COMPARE(storedTone(), u"DarkRed"_s);
}

void TestSettingsDialog::toneByKeyboard()
{
    constexpr int boxesBefore = 6;
    start({{u"Theme"_s, QJsonObject{{u"ColorToneName"_s, u"DarkBlue"_s}}}});
    QVERIFY(openSettings());
    for (int i = 0; i < boxesBefore + 1; ++i)
        XInput::type(XInput::TabKey);
    XInput::type(XInput::SpaceKey);
    QTRY_COMPARE(dialogs().size(), 2);
    XInput::type(XInput::DownKey);
    XInput::type(XInput::DownKey);
    XInput::type(XInput::ReturnKey);
    QTRY_COMPARE(dialogs().size(), 1);
    QVERIFY(closeSettings());
    QTRY_COMPARE(storedTone(), u"DarkGreen"_s);
}

void TestSettingsDialog::listClosesWithTheFocus()
{
    start();
    QVERIFY(openSettings());
    QVERIFY(openList());
    m_clock->window().activate();
    QTRY_COMPARE(dialogs().size(), 1);
    QCOMPARE(storedTone(), QString());
}

void TestSettingsDialog::quitsWithItOpen()
{
    start();
    QVERIFY(openSettings());
    QVERIFY(ClockMenu::choose(place.center(), ClockMenu::Quit));
    QCOMPARE(m_clock->waitForExit(), 0);
    QCOMPARE(m_home->storedGeometry().toRect(), place);
}

void TestSettingsDialog::toneOfASessionThatEndsWithItOpen()
{
    start({{u"Theme"_s, QJsonObject{{u"ColorToneName"_s, u"DarkBlue"_s}}}});
    QVERIFY(openSettings());
    QVERIFY(chooseSecondTone());
    QCOMPARE(storedTone(), u"DarkBlue"_s); // it is the end that saves it
    m_clock->signal(SIGTERM);
    QCOMPARE(m_clock->waitForExit(), 0);
    QCOMPARE(storedTone(), u"DarkRed"_s);
}

QTEST_MAIN(TestSettingsDialog)
#include "tst_settingsdialog.moc"
