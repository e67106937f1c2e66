// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// A desktop that has no window manager and no compositor until the test starts one, and that loses
// and changes them.

#include "tests/desktop/runningclock.h"

#include <QtTest/qtest.h>

#include <csignal>
#include <memory>

using namespace Qt::StringLiterals;

namespace
{

constexpr QRect place(420, 310, 240, 240);
constexpr QRect otherPlace(901, 203, 240, 240);
const QString openbox = u"openbox"_s;
const QString xfwm4 = u"xfwm4"_s;
const QString none;

// A window manager or a compositor; the destructor kills it.
class Helper
{
public:
    Helper(const QString &program, const QStringList &arguments)
    {
        m_process.setStandardOutputFile(QProcess::nullDevice());
        m_process.setStandardErrorFile(QProcess::nullDevice());
        m_process.start(program, arguments);
    }
    ~Helper()
    {
        m_process.kill();
        m_process.waitForFinished();
    }
    Q_DISABLE_COPY_MOVE(Helper)

    bool isRunning() const { return m_process.state() == QProcess::Running; }

private:
    QProcess m_process;
};

std::unique_ptr<Helper> windowManager(const QString &name)
{
    if (name.isEmpty())
        return nullptr;
    const QStringList ownArguments
        = name == xfwm4 ? QStringList{u"--compositor=off"_s} : QStringList{u"--sm-disable"_s};
    return std::make_unique<Helper>(name, ownArguments + QStringList{u"--replace"_s});
}

} // namespace

class TestBareDesktop : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void needsNoWindowManager();
    void staysAsItIsWithAnotherWindowManager_data();
    void staysAsItIsWithAnotherWindowManager();
    void compositorThatComesAndGoes();

private:
    void start(bool ignoreMouseEvent);
    bool isAsItWas() const;

    std::unique_ptr<ClockHome> m_home;
    std::unique_ptr<RunningClock> m_clock;
    bool m_ignoreMouseEvent = false;
};

void TestBareDesktop::init()
{
    QTest::failOnWarning();
    m_home = std::make_unique<ClockHome>();
}

void TestBareDesktop::cleanup()
{
    m_clock.reset();
    m_home.reset();
}

void TestBareDesktop::start(bool ignoreMouseEvent)
{
    m_ignoreMouseEvent = ignoreMouseEvent;
    QVERIFY(m_home->writeSettings(settingsAt(place, {{u"IgnoreMouseEvent"_s, ignoreMouseEvent}})));
    m_clock = std::make_unique<RunningClock>(*m_home);
    QVERIFY(m_clock->waitForWindow());
}

bool TestBareDesktop::isAsItWas() const
{
    const XWindow window = m_clock->window();
    return window.isMapped() && window.geometry() == place && window.frame() == QMargins()
        && window.states().contains("ABOVE") && window.states().contains("SKIP_TASKBAR")
        && (window.shape() & QRect(QPoint(), place.size())) == circle(place.width())
        && window.inputShape().isEmpty() == m_ignoreMouseEvent;
}

void TestBareDesktop::needsNoWindowManager()
{
    start(false);
    QCOMPARE(m_clock->window().geometry(), place);
    QCOMPARE(m_clock->window().shape() & QRect(QPoint(), place.size()), circle(place.width()));
    QVERIFY(m_clock->ticks());
    QVERIFY(m_clock->dragTo(otherPlace.topLeft()));
    m_clock->signal(SIGTERM);
    QCOMPARE(m_clock->waitForExit(), 0);
    QCOMPARE(m_home->storedGeometry(), QRectF(otherPlace));
    QCOMPARE(m_clock->output(), QByteArray());
}

void TestBareDesktop::staysAsItIsWithAnotherWindowManager_data()
{
    QTest::addColumn<QString>("first");
    QTest::addColumn<QString>("second");
    QTest::addColumn<bool>("isKilled"); // the first one, before the second one comes
    QTest::addColumn<bool>("ignoreMouseEvent");

    QTest::newRow("one that comes late") << none << openbox << false << false;
    QTest::newRow("another that comes late") << none << xfwm4 << false << true;
    QTest::newRow("restarted") << openbox << openbox << false << true;
    QTest::newRow("killed") << openbox << openbox << true << false;
    QTest::newRow("replaced") << openbox << xfwm4 << false << false;
    QTest::newRow("replaced by the other") << xfwm4 << openbox << false << true;
}

void TestBareDesktop::staysAsItIsWithAnotherWindowManager()
{
    QFETCH(QString, first);
    QFETCH(QString, second);
    QFETCH(bool, isKilled);
    QFETCH(bool, ignoreMouseEvent);

    std::unique_ptr<Helper> before = windowManager(first);
    if (before)
        QTest::qWait(500);
    start(ignoreMouseEvent);
    if (before)
        QVERIFY(QTest::qWaitFor([this] { return isAsItWas(); }));
    if (isKilled)
        before.reset();
    const std::unique_ptr<Helper> after = windowManager(second);
    if (before && !isKilled)
        QTRY_VERIFY(!before->isRunning());
    QTest::qWait(1500); // whatever it does to the windows that it finds
    QVERIFY(QTest::qWaitFor([this] { return isAsItWas(); }));
    QVERIFY(after->isRunning());
    QCOMPARE(XWindow::under(place.center()), ignoreMouseEvent ? XWindow() : m_clock->window());
    QVERIFY(m_clock->ticks());
    QCOMPARE(m_clock->output(), QByteArray());
}

void TestBareDesktop::compositorThatComesAndGoes()
{
    const QStringList arguments{u"--config"_s, u"/dev/null"_s, u"--backend"_s, u"xrender"_s};
    const std::unique_ptr<Helper> manager = windowManager(openbox);
    QTest::qWait(500);
    start(false);
    QVERIFY(QTest::qWaitFor([this] { return isAsItWas(); }));
    QVERIFY(m_clock->ticks());
    {
        const Helper compositor(u"picom"_s, arguments);
        QTest::qWait(1000); // whatever it does at its start
        QVERIFY(compositor.isRunning());
        QVERIFY(m_clock->ticks());
        QVERIFY(isAsItWas());
    }
    QVERIFY(m_clock->ticks());
    QVERIFY(isAsItWas());
    QCOMPARE(m_clock->output(), QByteArray());
}

QTEST_MAIN(TestBareDesktop)
#include "tst_baredesktop.moc"
