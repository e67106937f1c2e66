// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The tray icon in both kinds of tray: a StatusNotifier host on the session bus and an XEmbed tray.

#include "tests/desktop/runningclock.h"
#include "tests/desktop/statusnotifierhost.h"
#include "tests/desktop/xinput.h"

#include <QtCore/qprocess.h>
#include <QtTest/qtest.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace
{

constexpr QRect place(860, 440, 200, 200);
constexpr QSize iconSize(24, 24);
const QStringList menuTexts{u"Resize"_s, u"Fixed"_s, u"Topmost"_s, u"-"_s, u"Move To"_s, u"-"_s,
    u"Settings..."_s, u"About Vesper..."_s, u"-"_s, u"Quit"_s};

// A tray as it stands in a panel of the older kind, with room for one icon.
class XEmbedTray
{
public:
    explicit XEmbedTray(QPoint place)
        : m_place(place, iconSize)
    {
        m_process.start(u"stalonetray"_s,
            {u"--geometry"_s, u"1x1+%1+%2"_s.arg(place.x()).arg(place.y()), u"--icon-size"_s,
                QString::number(iconSize.width()), u"--background"_s, u"#00ff00"_s});
    }
    Q_DISABLE_COPY_MOVE(XEmbedTray)
    ~XEmbedTray()
    {
        constexpr int patienceMs = 3000; // it has been seen to sleep through its end
        m_process.terminate();
        if (m_process.waitForFinished(patienceMs))
            return;
        m_process.kill();
        m_process.waitForFinished();
    }

    QRect place() const { return m_place; }

    // The clock's face is blue.
    bool showsTheIcon() const
    {
        const QImage picture = screenPicture(m_place);
        const QColor lowerMiddle = picture.pixelColor(picture.rect().center() + QPoint(0, 6));
        return lowerMiddle.blue() > lowerMiddle.green() + 20;
    }

private:
    QRect m_place;
    QProcess m_process;
};

} // namespace

class TestTray : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void hostThatIsThere();
    void hostThatComesLate();
    void hostThatComesBack();
    void commandsOfTheMenu();
    void xembedTrayThatComesLateAndBack();
    void xembedMenu();

private:
    void start();

    std::unique_ptr<ClockHome> m_home;
    std::unique_ptr<RunningClock> m_clock;
};

void TestTray::init()
{
    QTest::failOnWarning();
    m_home = std::make_unique<ClockHome>();
}

void TestTray::cleanup()
{
    m_clock.reset();
    m_home.reset();
}

void TestTray::start()
{
    QVERIFY(m_home->writeSettings(settingsAt(place)));
    m_clock = std::make_unique<RunningClock>(*m_home);
    QVERIFY(m_clock->waitForWindow());
}

void TestTray::hostThatIsThere()
{
    const StatusNotifierHost host;
    QVERIFY(host.isRunning());
    start();
    QTRY_COMPARE(host.items().size(), 1);
    QTRY_COMPARE(host.menuTexts(), menuTexts);
    QTRY_VERIFY(host.property(u"IconPixmap"_s).isValid());
}

// As at sign-in, where the panel may take longer than the clock.
void TestTray::hostThatComesLate()
{
    start();
    QTest::qWait(15'000);
    const StatusNotifierHost host;
    QTRY_COMPARE(host.items().size(), 1);
    QTRY_COMPARE(host.menuTexts(), menuTexts);
    QTest::qWait(500);
    QCOMPARE(host.items().size(), 1); // one icon, not two
}

void TestTray::hostThatComesBack()
{
    auto host = std::make_unique<StatusNotifierHost>();
    start();
    QTRY_COMPARE(host->items().size(), 1);
    host.reset();
    host = std::make_unique<StatusNotifierHost>();
    QTRY_COMPARE(host->items().size(), 1);
    QTRY_COMPARE(host->menuTexts(), menuTexts);
}

void TestTray::commandsOfTheMenu()
{
    const StatusNotifierHost host;
    start();
    QTRY_COMPARE(host.items().size(), 1);
    QTRY_COMPARE(host.menuTexts(), menuTexts);
    QVERIFY(host.choose(u"Topmost"_s));
    QTRY_VERIFY(!m_clock->window().states().contains("ABOVE"));
    QVERIFY(host.choose(u"Top-Left"_s));
    QTRY_COMPARE(m_clock->window().geometry().topLeft(), QPoint(0, 0));
    QVERIFY(host.choose(u"About Vesper..."_s));
    QTRY_COMPARE(XWindow::allOfProcess(m_clock->pid()).size(), 2);
    QVERIFY(host.choose(u"Quit"_s));
    QCOMPARE(m_clock->waitForExit(), 0);
    QCOMPARE(m_home->settings().value(u"Topmost"_s), QJsonValue(false));
}

void TestTray::xembedTrayThatComesLateAndBack()
{
    start();
    for (const QPoint place : {QPoint(20, 20), QPoint(20, 120)}) {
        const XEmbedTray tray(place);
        QTRY_VERIFY(tray.showsTheIcon());
    }
}

void TestTray::xembedMenu()
{
    const XEmbedTray tray({20, 20});
    start();
    QTRY_VERIFY(tray.showsTheIcon());
    XInput::click(tray.place().center(), XInput::RightButton);
    QTRY_COMPARE(XWindow::popups().size(), 1);
    XInput::type(XInput::UpKey); // to the last item, "Quit"
    XInput::type(XInput::ReturnKey);
    QCOMPARE(m_clock->waitForExit(), 0);
}

QTEST_MAIN(TestTray)
#include "tst_tray.moc"
