// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The program, as it is, and its update service: a web server with a certificate of an authority
// that exists only here, in a network that has no other machine. Each case has a clock and a world
// of its own, and all run at once, since each waits ten seconds for its check.

#include "config/maker.h"
#include "tests/desktop/runningclock.h"

#include <QtCore/qdir.h>
#include <QtCore/qelapsedtimer.h>
#include <QtCore/qfile.h>
#include <QtCore/qprocess.h>
#include <QtCore/qregularexpression.h>
#include <QtTest/qtest.h>

#include <csignal>
#include <map>
#include <memory>

using namespace Qt::StringLiterals;

namespace
{

constexpr int side = 120;
constexpr int firstCheckMs = 10'000; // after the start
constexpr int checkLimitMs = 60'000; // for the largest answer on a busy machine

bool write(const QString &path, const QByteArray &content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

QByteArray read(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

bool run(const QString &program, const QStringList &arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    const bool good = process.waitForFinished() && process.exitStatus() == QProcess::NormalExit
        && process.exitCode() == 0;
    if (!good)
        qWarning() << program << arguments << process.readAll();
    return good;
}

// A number of the file, in its unit; -1 where it has none.
qint64 numberOf(const QString &path, const QString &name)
{
    const QRegularExpression line(
        u'^' + name + u":\\s+(\\d+)"_s, QRegularExpression::MultilineOption);
    const auto match = line.match(QString::fromLatin1(read(path)));
    return match.hasMatch() ? match.captured(1).toLongLong() : -1;
}

// Certificates for the update host, and the authority that has signed them.
class Authority
{
public:
    explicit Authority(const QString &folder)
        : m_folder(folder)
    {
    }

    bool make() const
    {
        return QDir().mkpath(m_folder)
            && run(u"openssl"_s,
                {u"req"_s, u"-x509"_s, u"-newkey"_s, u"rsa:2048"_s, u"-nodes"_s, u"-days"_s, u"2"_s,
                    u"-subj"_s, u"/CN=Test authority"_s, u"-keyout"_s, key(), u"-out"_s,
                    certificate()});
    }
    /// For \a host, into \a folder as the web server reads them.
    bool sign(const QString &host, const QString &folder) const
    {
        return QDir().mkpath(folder)
            && run(u"openssl"_s,
                {u"req"_s, u"-x509"_s, u"-CA"_s, certificate(), u"-CAkey"_s, key(), u"-newkey"_s,
                    u"rsa:2048"_s, u"-nodes"_s, u"-days"_s, u"2"_s, u"-subj"_s, u"/CN="_s + host,
                    u"-addext"_s, u"subjectAltName=DNS:"_s + host, u"-addext"_s,
                    u"basicConstraints=critical,CA:FALSE"_s, u"-keyout"_s,
                    folder + u"/privkey.pem"_s, u"-out"_s, folder + u"/fullchain.pem"_s});
    }
    /// As a folder of trusted authorities that has nothing else.
    bool install(const QString &folder) const
    {
        return QDir().mkpath(folder) && QFile::copy(certificate(), folder + u"/authority.pem"_s)
            && run(u"openssl"_s, {u"rehash"_s, folder});
    }

private:
    QString key() const { return m_folder + u"/authority.key"_s; }
    QString certificate() const { return m_folder + u"/authority.pem"_s; }

    QString m_folder;
};

// What differs between the cases.
struct Service {
    QByteArray answer = {}; // what the site has to tell
    QString release = {}; // or the release that its script writes the answer for
    QByteArray server = {}; // instead of the site
    QByteArray backend = {};
    enum { Trusted, OfNobody, OfAnotherHost } certificate = Trusted;
    bool asks = false; // whether the question appears
};

// Answers with a server of its own in the place of the site.
QByteArray serverWith(const QByteArray &directives)
{
    return "server { listen 443 ssl; ssl_certificate /srv/vesper-update/tls/fullchain.pem; "
           "ssl_certificate_key /srv/vesper-update/tls/privkey.pem; "
        + directives + " }";
}

constexpr qint64 hugeSize = 1 << 30;
const QByteArray huge = "huge"; // stands for a file of that size

const QString silent = u"silent"_s;
constexpr auto checkThread = "QThread";

const std::map<QString, Service> services{
    {u"newer"_s, {.release = u"99.0.0.0"_s, .asks = true}},
    {u"equal"_s, {.release = Maker::programVersion}},
    {u"older"_s, {.release = u"0.9.0.0"_s}},
    {u"no release"_s, {.answer = R"({"result": false, "version": "99.0.0.0"})"}},
    {u"no JSON"_s, {.answer = "<html>99.0.0.0</html>"}},
    {u"array"_s, {.answer = R"([{"result": true, "version": "99.0.0.0"}])"}},
    {u"not there"_s, {}},
    {u"redirect"_s,
        {.release = u"99.0.0.0"_s,
            .server = serverWith("location /software/ { return 301 /moved; } location = /moved { "
                                 "default_type application/json; alias "
                                 "/srv/vesper-update/answers/vesper.json; }"),
            .asks = true}},
    {u"another authority"_s, {.release = u"99.0.0.0"_s, .certificate = Service::OfNobody}},
    {u"another host"_s, {.release = u"99.0.0.0"_s, .certificate = Service::OfAnotherHost}},
    {u"half an answer"_s,
        {.server = serverWith("location / { proxy_pass http://127.0.0.1:8080; }"),
            .backend = "half"}},
    {u"huge"_s, {.answer = huge}},
    {silent,
        {.server = serverWith("location / { proxy_pass http://127.0.0.1:8080; "
                              "proxy_read_timeout 1h; }"),
            .backend = "silent"}},
};

// A clock in a world with one service.
class World
{
public:
    World(const QString &folder, int index)
        : m_folder(folder)
        , m_place(40 + index % 5 * 300, 40 + index / 5 * 300, side, side)
    {
    }

    bool make(const Service &service, const Authority &trusted, const Authority &unknown) const
    {
        const QString site = m_folder + u"/srv/vesper-update"_s;
        const QString host = service.certificate == Service::OfAnotherHost ? u"other.example"_s
                                                                           : Maker::updateHost;
        const Authority &signer = service.certificate == Service::OfNobody ? unknown : trusted;
        return signer.sign(host, site + u"/tls"_s) && trusted.install(m_folder + u"/authorities"_s)
            && QDir().mkpath(site + u"/answers"_s)
            && write(m_folder + u"/hosts"_s,
                "127.0.0.1 localhost " + Maker::updateHost.toLatin1() + '\n')
            && writeAnswer(service, site + u"/answers/vesper.json"_s)
            && (service.backend.isEmpty() || write(m_folder + u"/backend"_s, service.backend))
            && write(m_folder + u"/nginx.conf"_s, nginxConfiguration(service));
    }

    void start()
    {
        QVERIFY(m_home.writeSettings(settingsAt(m_place)));
        m_settings = m_home.settings();
        m_clock = std::make_unique<RunningClock>(m_home,
            ClockStart{.arguments = {m_folder, QStringLiteral(VESPER_PROGRAM)},
                .program = QStringLiteral(VESPER_SOURCE_FOLDER "/tests/desktop/update_world.py")});
        m_sinceStart.start();
    }

    RunningClock &clock() const { return *m_clock; }
    qint64 msSinceStart() const { return m_sinceStart.elapsed(); }
    bool hasUntouchedSettings() const { return m_home.settings() == m_settings; }
    int windows() const { return int(XWindow::allOfProcess(m_clock->pid()).size()); }
    /// The names of the program's threads.
    QByteArrayList threads() const
    {
        QByteArrayList names;
        for (const QString &thread : QDir(process() + u"/task"_s).entryList({u"[1-9]*"_s}))
            names += read(process() + u"/task/"_s + thread + u"/comm"_s).trimmed();
        return names;
    }
    qint64 privateKiB() const
    {
        return numberOf(process() + u"/smaps_rollup"_s, u"Private_Dirty"_s);
    }

private:
    static bool writeAnswer(const Service &service, const QString &path)
    {
        const auto page = u"https://www.marrowby.example/vesper/"_s;
        if (!service.release.isEmpty())
            return run(QStringLiteral(VESPER_SOURCE_FOLDER "/packaging/update-service/make-answer"),
                {service.release, u"--site"_s, page, u"--url"_s, page + u"vesper.exe"_s,
                    u"--output"_s, path});
        if (service.answer == huge)
            return QFile(path).open(QIODevice::WriteOnly) && QFile::resize(path, hugeSize);
        return service.answer.isEmpty() || write(path, service.answer);
    }

    QByteArray nginxConfiguration(const Service &service) const
    {
        const QByteArray site = "include " VESPER_UPDATE_SITE ";";
        return "user root; daemon off; worker_processes 1; pid nginx.pid;\n"
               "events {}\n"
               "http { access_log off; client_body_temp_path tmp; proxy_temp_path tmp; "
               "fastcgi_temp_path tmp;\n"
               "uwsgi_temp_path tmp; scgi_temp_path tmp;\n"
            + (service.server.isEmpty() ? site : service.server) + "\n}\n";
    }

    QString process() const { return u"/proc/%1"_s.arg(m_clock->pid()); }

    QString m_folder;
    QRect m_place;
    ClockHome m_home;
    QJsonObject m_settings;
    std::unique_ptr<RunningClock> m_clock;
    QElapsedTimer m_sinceStart;
};

} // namespace

class TestUpdateService : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }
    void initTestCase();
    void check_data();
    void check();
    void waitsInOneThread();
    void quitsAtOnce();

private:
    const QTemporaryDir m_folder;
    std::map<QString, std::unique_ptr<World>> m_worlds;
    std::map<QString, qint64> m_privateBefore;
};

void TestUpdateService::initTestCase()
{
    const Authority trusted(m_folder.filePath(u"trusted"_s));
    const Authority unknown(m_folder.filePath(u"unknown"_s));
    QVERIFY(trusted.make());
    QVERIFY(unknown.make());
    int index = 0;
    for (const auto &[name, service] : services) {
        auto world = std::make_unique<World>(m_folder.filePath(u"world%1"_s.arg(index)), index);
        QVERIFY(world->make(service, trusted, unknown));
        m_worlds[name] = std::move(world);
        ++index;
    }
    for (const auto &[name, world] : m_worlds) {
        world->start();
        if (QTest::currentTestFailed())
            return;
    }
    for (const auto &[name, world] : m_worlds)
        QVERIFY(world->clock().waitForWindow());
    // Shortly before the first of them asks.
    const World &first = *m_worlds.begin()->second;
    QVERIFY(first.msSinceStart() < firstCheckMs - 2000);
    for (const auto &[name, world] : m_worlds) {
        QVERIFY(!world->threads().contains(checkThread));
        m_privateBefore[name] = world->privateKiB();
    }
    QVERIFY(first.msSinceStart() < firstCheckMs - 1000);
}

void TestUpdateService::check_data()
{
    QTest::addColumn<QString>("name");

    for (const auto &[name, service] : services)
        QTest::addRow("%s", qPrintable(name)) << name;
}

void TestUpdateService::check()
{
    QFETCH(QString, name);

    const World &world = *m_worlds[name];
    QTRY_VERIFY_WITH_TIMEOUT(world.msSinceStart() > firstCheckMs + 2000, checkLimitMs);
    if (name != silent)
        QTRY_VERIFY_WITH_TIMEOUT(!world.threads().contains(checkThread), checkLimitMs);
    QTRY_COMPARE(world.windows(), services.at(name).asks ? 2 : 1);
    const QImage before = world.clock().picture();
    QTRY_VERIFY_WITH_TIMEOUT(world.clock().picture() != before, 1500); // it goes on ticking
    QTRY_COMPARE_LE(world.privateKiB(), m_privateBefore[name] + 10 * 1024);
    QCOMPARE(world.windows(), services.at(name).asks ? 2 : 1);
    QVERIFY(world.hasUntouchedSettings());
    QVERIFY(world.clock().isRunning());
}

// One thread of this program. Qt has another one for the connection.
void TestUpdateService::waitsInOneThread()
{
    const World &world = *m_worlds[silent];
    for (int i = 0; i < 10; ++i) {
        QCOMPARE(world.threads().count(checkThread), 1);
        QCOMPARE(world.threads().count("QNetworkAccessM"), 1);
        QTest::qWait(100);
    }
}

void TestUpdateService::quitsAtOnce()
{
    const World &world = *m_worlds[silent];
    QElapsedTimer timer;
    timer.start();
    world.clock().signal(SIGTERM);
    QCOMPARE(world.clock().waitForExit(), 0);
    QCOMPARE_LT(timer.elapsed(), 1000);
}

QTEST_MAIN(TestUpdateService)
#include "tst_updateservice.moc"
