// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "confighome.h"
#include "fakeautostart.h"

#include "config/configfolder.h"

#include <QtTest/qtest.h>

#include <memory>

using namespace Qt::StringLiterals;

using Removal = bool (*)();
Q_DECLARE_METATYPE(Removal)

class TestConfigFolder : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void removesEverythingOfItsOwn_data() { addRemovals(); }
    void removesEverythingOfItsOwn();
    void folderThatIsMissing_data() { addRemovals(); }
    void folderThatIsMissing();
    void otherFilesOfTheMakerStay_data();
    void otherFilesOfTheMakerStay();
    void linkTargetStays();
    void resetLeavesTheStartUpFolderAlone();
    void uninstallReportsLinksThatStay();

private:
    static void addRemovals();

    std::unique_ptr<ConfigHome> m_home;
};

void TestConfigFolder::init()
{
    QTest::failOnWarning();
    m_home = std::make_unique<ConfigHome>();
    FakeAutoStart::state() = {};
}

void TestConfigFolder::cleanup() { m_home.reset(); }

void TestConfigFolder::addRemovals()
{
    QTest::addColumn<Removal>("remove");
    QTest::newRow("reset") << &removeConfigurationFolder;
    QTest::newRow("uninstall") << &uninstallCleanup;
}

void TestConfigFolder::removesEverythingOfItsOwn()
{
    QFETCH(const Removal, remove);
    QVERIFY(m_home->writeFile("{}"));
    QVERIFY(QDir().mkpath(m_home->configFolder() + u"/deep/.hidden"_s));
    QVERIFY(remove());
    QVERIFY(!QDir(m_home->makerFolder()).exists());
    QVERIFY(QDir(m_home->dataFolder()).exists());
}

void TestConfigFolder::folderThatIsMissing()
{
    QFETCH(const Removal, remove);
    QVERIFY(!QDir(m_home->makerFolder()).exists());
    QVERIFY(remove());
    QVERIFY(!QDir(m_home->makerFolder()).exists());
}

void TestConfigFolder::otherFilesOfTheMakerStay_data()
{
    QTest::addColumn<Removal>("remove");
    QTest::addColumn<QString>("other");
    QTest::newRow("reset, a file") << &removeConfigurationFolder << u"other.txt"_s;
    QTest::newRow("reset, another program's folder") << &removeConfigurationFolder << u"Other/f"_s;
    QTest::newRow("uninstall, a file") << &uninstallCleanup << u"other.txt"_s;
    QTest::newRow("uninstall, another program's folder") << &uninstallCleanup << u"Other/f"_s;
}

void TestConfigFolder::otherFilesOfTheMakerStay()
{
    QFETCH(const Removal, remove);
    QFETCH(const QString, other);
    QVERIFY(m_home->writeFile("{}"));
    QFile file(m_home->makerFolder() + u'/' + other);
    QVERIFY(QDir().mkpath(QFileInfo(file).path()));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.close();
    QVERIFY(remove());
    QVERIFY(!QDir(m_home->configFolder()).exists());
    QVERIFY(file.exists());
}

void TestConfigFolder::linkTargetStays()
{
    const QTemporaryDir elsewhere;
    const QString target = elsewhere.filePath(u"kept"_s);
    QVERIFY(QFile(target).open(QIODevice::WriteOnly));
    QVERIFY(m_home->writeFile("{}"));
    QVERIFY(QFile::link(elsewhere.path(), m_home->configFolder() + u"/link.lnk"_s));
    QVERIFY(removeConfigurationFolder());
    QVERIFY(QFile::exists(target));
}

void TestConfigFolder::resetLeavesTheStartUpFolderAlone()
{
    QVERIFY(removeConfigurationFolder());
    QCOMPARE(FakeAutoStart::state().calls, QStringList());
}

void TestConfigFolder::uninstallReportsLinksThatStay()
{
    QVERIFY(m_home->writeFile("{}"));
    FakeAutoStart::state() = {.canRemove = false};
    QVERIFY(!uninstallCleanup());
    QCOMPARE(FakeAutoStart::state().calls, QStringList{u"remove"_s});
    QVERIFY2(!QDir(m_home->configFolder()).exists(), "the folder goes even if a link stays");
}

QTEST_GUILESS_MAIN(TestConfigFolder)
#include "tst_configfolder.moc"
