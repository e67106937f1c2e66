// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// One frame a second, and nothing is painted while nobody can see it.

#include "config/vsconfig.h"
#include "manager/vsmanager.h"
#include "tests/desktop/ownclock.h"

#include <QtCore/qset.h>
#include <QtDBus/qdbusconnection.h>
#include <QtDBus/qdbusextratypes.h>
#include <QtDBus/qdbusmessage.h>
#include <QtDBus/qdbusvirtualobject.h>
#include <QtQuick/qquickwindow.h>
#include <QtTest/qsignalspy.h>
#include <QtTest/qtest.h>

using namespace Qt::StringLiterals;

namespace
{

using Tell = void (*)(bool);

constexpr QRect place(860, 440, 200, 200);
constexpr int restMs = 2500; // more than two ticks

const QString managerPath = u"/org/freedesktop/login1"_s;
const QString sessionPath = u"/org/freedesktop/login1/session/_37"_s;

/// As much of logind as the clock asks for, on the bus of the test.
class Logind : public QDBusVirtualObject
{
public:
    Logind()
    {
        QDBusConnection bus = QDBusConnection::sessionBus();
        bus.registerVirtualObject(managerPath, this);
        bus.registerService(u"org.freedesktop.login1"_s);
    }
    Q_DISABLE_COPY_MOVE(Logind)
    ~Logind() override
    {
        QDBusConnection::sessionBus().unregisterService(u"org.freedesktop.login1"_s);
    }

    bool handleMessage(const QDBusMessage &message, const QDBusConnection &connection) override
    {
        if (message.member() != "GetSession"_L1)
            return false;
        asked = message.arguments().constFirst().toString();
        return connection.send(
            message.createReply(QVariant::fromValue(QDBusObjectPath(sessionPath))));
    }
    QString introspect([[maybe_unused]] const QString &path) const override { return {}; }

    static void tellLocked(bool locked)
    {
        QDBusMessage signal = QDBusMessage::createSignal(
            sessionPath, u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s);
        signal << u"org.freedesktop.login1.Session"_s << QVariantMap{{u"LockedHint"_s, locked}}
               << QStringList();
        QDBusConnection::sessionBus().send(signal);
    }

    QString asked;
};

void tellSaverActive(bool active)
{
    QDBusMessage signal = QDBusMessage::createSignal(
        u"/org/freedesktop/ScreenSaver"_s, u"org.freedesktop.ScreenSaver"_s, u"ActiveChanged"_s);
    signal << active;
    QDBusConnection::sessionBus().send(signal);
}

// How many pictures the clock shows in some time.
qsizetype picturesDuring(const RunningClock &clock, int durationMs)
{
    QSet<QByteArray> pictures;
    QElapsedTimer elapsed;
    elapsed.start();
    while (elapsed.elapsed() < durationMs) {
        const QImage picture = clock.picture();
        pictures.insert(
            QByteArray(reinterpret_cast<const char *>(picture.constBits()), picture.sizeInBytes()));
        QTest::qWait(50);
    }
    return pictures.size();
}

} // namespace

class TestRest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase() { OwnClock::prepare(m_home); }

    void paintsOneFrameASecond();
    void paintsNothingWhileHidden();
    void paintsNothingWhileMinimized();
    void paintsNothingWhileUnmapped();
    void restsWhileTheSessionIsLocked_data();
    void restsWhileTheSessionIsLocked();

private:
    const ClockHome m_home;
};

void TestRest::paintsOneFrameASecond()
{
    OwnClock::setStoredGeometry(place);
    OwnClock clock;
    QVERIFY(clock.waitForWindow());
    QVERIFY(clock.waitForRest());
    const QSignalSpy ticks(clock.manager(), &VsManager::timeTextChanged);
    const QSignalSpy frames(clock.window(), &QQuickWindow::frameSwapped);
    QTest::qWait(2 * restMs);
    QCOMPARE_GE(ticks.size(), 4);
    QCOMPARE_GE(frames.size(), ticks.size() - 1);
    QCOMPARE_LE(frames.size(), ticks.size() + 1);
}

void TestRest::paintsNothingWhileHidden()
{
    OwnClock::setStoredGeometry(place);
    OwnClock clock;
    QVERIFY(clock.waitForWindow());
    QSignalSpy frames(clock.window(), &QQuickWindow::frameSwapped);
    QVERIFY(QTest::qWaitFor([&] { return frames.size() >= 3; })); // it ticks
    clock.window()->hide();
    frames.clear();
    QTest::qWait(restMs);
    QCOMPARE(frames.size(), 0);
    clock.window()->show();
    QTRY_COMPARE_GE(frames.size(), 1);
}

void TestRest::paintsNothingWhileMinimized()
{
    OwnClock::setStoredGeometry(place);
    OwnClock clock;
    QVERIFY(clock.waitForWindow());
    QSignalSpy frames(clock.window(), &QQuickWindow::frameSwapped);
    QVERIFY(QTest::qWaitFor([&] { return frames.size() >= 3; }));
    clock.nativeWindow().minimize();
    QTRY_VERIFY(!clock.window()->isExposed());
    frames.clear();
    QTest::qWait(restMs);
    QCOMPARE(frames.size(), 0);
    clock.nativeWindow().activate();
    QTRY_COMPARE_GE(frames.size(), 1);
}

// By another program, which the clock is not told of beforehand.
void TestRest::paintsNothingWhileUnmapped()
{
    OwnClock::setStoredGeometry(place);
    OwnClock clock;
    QVERIFY(clock.waitForWindow());
    QSignalSpy frames(clock.window(), &QQuickWindow::frameSwapped);
    QVERIFY(QTest::qWaitFor([&] { return frames.size() >= 3; }));
    clock.nativeWindow().withdraw();
    QTRY_VERIFY(!clock.window()->isExposed());
    frames.clear();
    QTest::qWait(restMs);
    QCOMPARE(frames.size(), 0);
}

void TestRest::restsWhileTheSessionIsLocked_data()
{
    QTest::addColumn<Tell>("tell");

    QTest::newRow("logind") << &Logind::tellLocked;
    QTest::newRow("screen saver") << &tellSaverActive;
}

void TestRest::restsWhileTheSessionIsLocked()
{
    QFETCH(Tell, tell);

    const Logind logind;
    const ClockHome home;
    QVERIFY(home.writeSettings(settingsAt(place)));
    // The bus of this test is the system's as well.
    RunningClock clock(home,
        {.environment
            = {{u"DBUS_SYSTEM_BUS_ADDRESS"_s, qEnvironmentVariable("DBUS_SESSION_BUS_ADDRESS")},
                {u"XDG_SESSION_ID"_s, u"7"_s}}});
    QVERIFY(clock.waitForWindow());
    QTRY_COMPARE(logind.asked, u"7"_s);
    QCOMPARE_GE(picturesDuring(clock, restMs), 3);

    tell(true);
    // First what was under way; a busy machine may take its time for it.
    QVERIFY(QTest::qWaitFor([&] { return picturesDuring(clock, restMs) == 1; }, 4 * restMs));
    QCOMPARE(picturesDuring(clock, restMs), 1);

    const QImage locked = clock.picture();
    tell(false);
    QVERIFY(QTest::qWaitFor([&] { return clock.picture() != locked; }, 1000));
    QCOMPARE_GE(picturesDuring(clock, restMs), 3);
}

QTEST_MAIN(TestRest)
#include "tst_rest.moc"
