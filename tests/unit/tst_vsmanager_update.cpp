// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The update check's schedule, its question, and the end of a check that hangs.

#include "confighome.h"
#include "firedtimers.h"
#include "offscreenwarnings.h"
#include "openedaddresses.h"

#include "config/vsconfig.h"
#include "manager/vsmanager.h"
#include "platform/packageidentity.h"

#include <QtCore/qelapsedtimer.h>
#include <QtNetwork/qnetworkproxy.h>
#include <QtNetwork/qtcpserver.h>
#include <QtNetwork/qtcpsocket.h>
#include <QtTest/qsignalspy.h>
#include <QtTest/qtest.h>
#include <QtWidgets/qabstractbutton.h>
#include <QtWidgets/qapplication.h>
#include <QtWidgets/qmessagebox.h>

#include <memory>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace
{

bool isPackaged = false;

// Stands before the update service: counts the checks, and refuses them or keeps silent.
class Gate : public QTcpServer
{
public:
    enum Manner { Refuses, KeepsSilent };

    explicit Gate(Manner manner)
    {
        QObject::connect(this, &QTcpServer::newConnection, this, [this, manner] {
            ++checks;
            QTcpSocket *const socket = nextPendingConnection();
            if (manner == Refuses) {
                connect(socket, &QTcpSocket::readyRead, socket, [socket] {
                    socket->write("HTTP/1.1 403 Forbidden\r\nContent-Length: 0\r\n\r\n");
                    socket->disconnectFromHost();
                });
            }
        });
        listen(QHostAddress::LocalHost);
        QNetworkProxy::setApplicationProxy(
            QNetworkProxy(QNetworkProxy::HttpProxy, u"127.0.0.1"_s, serverPort()));
    }
    Q_DISABLE_COPY_MOVE(Gate)
    ~Gate() override { QNetworkProxy::setApplicationProxy(QNetworkProxy::NoProxy); }

    int checks = 0;
};

QList<QMessageBox *> boxes()
{
    QList<QMessageBox *> found;
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *const widget : widgets) {
        if (auto *const box = qobject_cast<QMessageBox *>(widget); box && box->isVisible())
            found += box;
    }
    return found;
}

} // namespace

// In the place of the system's, which would tell of this program.
bool hasPackageIdentity() { return isPackaged; }

QString applicationUserModelId() { return {}; }

class TestVsManagerUpdate : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void question_data();
    void question();
    void answers_data();
    void answers();
    void checksAgainAfterACheck();
    void checksNothingWhenToldSo();
    void boxesDoNotPileUp();
    void endsWhileACheckHangs();
    void packagedProgramRestsAfterACheck();

private:
    void receive(const QString &version, const QString &site = u"https://site.example/page"_s);

    ConfigHome m_home;
    std::unique_ptr<VsManager> m_manager;
};

void TestVsManagerUpdate::init()
{
    failOnRealWarning();
    VsConfig::instance()->setAutoCheckUpdate(true);
    m_manager = std::make_unique<VsManager>();
}

void TestVsManagerUpdate::cleanup()
{
    m_manager.reset();
    isPackaged = false;
}

// As the checker's signal does; ends when the question has been answered.
void TestVsManagerUpdate::receive(const QString &version, const QString &site)
{
    VsUpdateChecker::VersionInfo info;
    info.result = true;
    info.version = version;
    info.site = site;
    QVERIFY(QMetaObject::invokeMethod(
        m_manager.get(), "onVersionRecieved", Q_ARG(VsUpdateChecker::VersionInfo, info)));
}

void TestVsManagerUpdate::question_data()
{
    QTest::addColumn<QString>("version");
    QTest::addColumn<bool>("asks");
    QTest::newRow("newer") << u"4.0.10"_s << true;
    QTest::newRow("equal") << u"4.0.2.0"_s << false;
    QTest::newRow("equal as far as it goes") << u"4.0.2"_s << false;
    QTest::newRow("older") << u"4.0.1.9"_s << false;
    QTest::newRow("none") << QString() << false;
}

void TestVsManagerUpdate::question()
{
    QFETCH(QString, version);
    QFETCH(bool, asks);
    bool asked = false;
    QTimer answer;
    connect(&answer, &QTimer::timeout, this, [&asked] {
        const QList<QMessageBox *> open = boxes();
        if (open.isEmpty())
            return;
        asked = true;
        QCOMPARE(open.size(), 1);
        const QMessageBox &box = *open.first();
        QCOMPARE(box.windowTitle(), u"Vesper Update"_s);
        QCOMPARE(box.text(),
            u"A new version of Vesper is available.\nWould you like to open a download site?"_s);
        QCOMPARE(box.standardButtons(), QMessageBox::Yes | QMessageBox::No);
        box.button(QMessageBox::No)->click();
    });
    answer.start(10ms);
    receive(version);
    QCOMPARE(asked, asks);
}

void TestVsManagerUpdate::answers_data()
{
    QTest::addColumn<QMessageBox::StandardButton>("button");
    QTest::addColumn<QString>("site");
    QTest::addColumn<bool>("opens");
    QTest::newRow("yes") << QMessageBox::Yes << u"https://site.example/page"_s << true;
    QTest::newRow("yes, http") << QMessageBox::Yes << u"http://site.example/"_s << true;
    QTest::newRow("no") << QMessageBox::No << u"https://site.example/page"_s << false;
    QTest::newRow("a file") << QMessageBox::Yes << u"file:///etc/passwd"_s << false;
    QTest::newRow("no address") << QMessageBox::Yes << u"https://a b/"_s << false;
    QTest::newRow("no host") << QMessageBox::Yes << u"https:///page"_s << false;
    QTest::newRow("no page") << QMessageBox::Yes << QString() << false;
}

void TestVsManagerUpdate::answers()
{
    QFETCH(QMessageBox::StandardButton, button);
    QFETCH(QString, site);
    QFETCH(bool, opens);
    const OpenedAddresses opened;
    QTimer answer;
    connect(&answer, &QTimer::timeout, this, [button] {
        if (const QList<QMessageBox *> open = boxes(); !open.isEmpty())
            open.first()->button(button)->click();
    });
    answer.start(10ms);
    receive(u"5.0"_s, site);
    QCOMPARE(opened.addresses, opens ? QList<QUrl>{QUrl(site)} : QList<QUrl>());
}

void TestVsManagerUpdate::checksAgainAfterACheck()
{
    const Gate gate(Gate::Refuses);
    m_manager->setUpdateCheckInterval(50ms);
    m_manager->checkUpdate();
    QTRY_COMPARE_GE_WITH_TIMEOUT(gate.checks, 3, 30'000); // the first one in Wine takes seconds
}

void TestVsManagerUpdate::checksNothingWhenToldSo()
{
    const Gate gate(Gate::Refuses);
    m_manager->setUpdateCheckInterval(50ms);
    VsConfig::instance()->setAutoCheckUpdate(false);
    m_manager->checkUpdate();
    QTest::qWait(300);
    QCOMPARE(gate.checks, 0);
}

// Over an absent user: the check that brought the news ends while its box is open.
void TestVsManagerUpdate::boxesDoNotPileUp()
{
    const Gate gate(Gate::Refuses);
    m_manager->setUpdateCheckInterval(100ms);
    m_manager->checkUpdate();
    QTimer::singleShot(2s, this, [] { boxes().constFirst()->button(QMessageBox::No)->click(); });
    receive(u"5.0"_s); // while the check is on its way
    QCOMPARE(gate.checks, 1);
    QTRY_COMPARE_GE(gate.checks, 2); // and on it goes
}

void TestVsManagerUpdate::endsWhileACheckHangs()
{
    const Gate gate(Gate::KeepsSilent);
    m_manager->checkUpdate();
    QTRY_COMPARE(gate.checks, 1);
    QElapsedTimer sinceEnd;
    sinceEnd.start();
    m_manager.reset();
    QCOMPARE_LT(sinceEnd.elapsed(), 1000);
}

// It has no checks of its own, but anybody may ask for one.
void TestVsManagerUpdate::packagedProgramRestsAfterACheck()
{
    isPackaged = true;
    m_manager.reset(); // there is one at a time
    m_manager = std::make_unique<VsManager>();
    const Gate gate(Gate::Refuses);
    const FiredTimers timers;
    m_manager->checkUpdate();
    QTRY_COMPARE_GE_WITH_TIMEOUT(timers.count(1000), 2, 30'000); // the one that follows a check
    QCOMPARE(gate.checks, 1);
}

QTEST_MAIN(TestVsManagerUpdate)
#include "tst_vsmanager_update.moc"
