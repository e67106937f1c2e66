// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// What the file's owner may not do. The superuser may do everything, so the test gives that up
// first.

#include "confighome.h"

#include "app/commandline.h"
#include "config/configfolder.h"
#include "config/vsconfig.h"

#include <QtTest/qsignalspy.h>
#include <QtTest/qtest.h>

#include <memory>

#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace Qt::StringLiterals;

namespace
{

constexpr auto readOnly = QFileDevice::ReadOwner | QFileDevice::ExeOwner;
constexpr auto full = readOnly | QFileDevice::WriteOwner;

/// Gives up the right to pass over file permissions. Unlike a change of the user this works in
/// every user namespace, and the test's own files stay its own.
bool giveUpCapabilities()
{
    __user_cap_header_struct header{_LINUX_CAPABILITY_VERSION_3, 0};
    const __user_cap_data_struct none[_LINUX_CAPABILITY_U32S_3] = {};
    return syscall(SYS_capset, &header, none) == 0;
}

} // namespace

class TestConfigPermissions : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase();
    void init();
    void cleanup();

    void unreadableFileGivesDefaults();
    void fileInAReadOnlyFolder();
    void readOnlyFile();
    void saveIntoAReadOnlyFolder();
    void homeThatCannotBeWritten();
    void removalThatFails();
    void resetThatFailsIsIgnored();

private:
    void forbidWriting(const QString &path);

    std::unique_ptr<ConfigHome> m_home;
    QStringList m_forbidden;
};

void TestConfigPermissions::initTestCase() { QVERIFY(giveUpCapabilities()); }

void TestConfigPermissions::init()
{
    QTest::failOnWarning();
    m_home = std::make_unique<ConfigHome>();
}

void TestConfigPermissions::cleanup()
{
    for (const QString &path : std::as_const(m_forbidden))
        QFile::setPermissions(path, full);
    m_forbidden.clear();
    m_home.reset();
}

void TestConfigPermissions::forbidWriting(const QString &path)
{
    m_forbidden.append(path);
    QVERIFY(QFile::setPermissions(path, readOnly));
}

void TestConfigPermissions::unreadableFileGivesDefaults()
{
    QVERIFY(m_home->writeFile(R"({"Fixed": true})"));
    QVERIFY(QFile::setPermissions(m_home->configFile(), QFileDevice::WriteOwner));
    QVERIFY(!QFile(m_home->configFile()).open(QIODevice::ReadOnly));
    const VsConfig config;
    QVERIFY(!config.fixed());
    QVERIFY(QFile::exists(m_home->configFile()));
}

void TestConfigPermissions::fileInAReadOnlyFolder()
{
    QVERIFY(m_home->writeFile(R"({"Fixed": true})"));
    forbidWriting(m_home->configFolder());
    VsConfig config;
    QVERIFY(config.fixed());
    // The file itself may be written, and is: in place, with no other file beside it.
    config.setOpacity(0.5);
    config.save();
    QVERIFY(m_home->readFile().contains("\"Opacity\": 0.5"));
}

void TestConfigPermissions::readOnlyFile()
{
    const QByteArray text = R"({"Fixed": true})";
    QVERIFY(m_home->writeFile(text));
    forbidWriting(m_home->configFile());
    forbidWriting(m_home->configFolder());
    const VsConfig config;
    QSignalSpy errors(&config, &VsConfig::errorOccurred);
    QVERIFY(config.fixed());
    config.save();
    QCOMPARE(m_home->readFile(), text);
    QVERIFY(errors.isEmpty());
}

void TestConfigPermissions::saveIntoAReadOnlyFolder()
{
    QVERIFY(QDir().mkpath(m_home->configFolder()));
    forbidWriting(m_home->configFolder());
    const VsConfig config;
    QSignalSpy errors(&config, &VsConfig::errorOccurred);
    config.save();
    QVERIFY(!QFile::exists(m_home->configFile()));
    QVERIFY(errors.isEmpty());
}

void TestConfigPermissions::homeThatCannotBeWritten()
{
    QVERIFY(QDir().mkpath(m_home->dataFolder()));
    forbidWriting(m_home->dataFolder());
    const VsConfig config;
    QSignalSpy errors(&config, &VsConfig::errorOccurred);
    QCOMPARE(config.themeName(), u"Basic"_s);
    config.save();
    QVERIFY(!QDir(m_home->makerFolder()).exists());
    QVERIFY(errors.isEmpty());
}

void TestConfigPermissions::removalThatFails()
{
    QVERIFY(m_home->writeFile("{}"));
    forbidWriting(m_home->configFolder());
    QVERIFY(!removeConfigurationFolder());
    QVERIFY(QFile::exists(m_home->configFile()));
}

void TestConfigPermissions::resetThatFailsIsIgnored()
{
    QVERIFY(m_home->writeFile("{}"));
    forbidWriting(m_home->configFolder());
    QCOMPARE(runMaintenanceSwitches({u"vesper"_s, u"--reset"_s}), std::nullopt);
    QVERIFY(QFile::exists(m_home->configFile()));
    QCOMPARE(runMaintenanceSwitches({u"vesper"_s, u"-r"_s, u"-u"_s}), 1); // and on it goes
}

QTEST_GUILESS_MAIN(TestConfigPermissions)
#include "tst_configpermissions.moc"
