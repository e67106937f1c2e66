// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The one setting that is no stored value: whether the program starts at sign-in.

#include "confighome.h"
#include "fakeautostart.h"
#include "signallog.h"

#include "config/vsconfig.h"

#include <QtTest/qtest.h>

#include <memory>

using namespace Qt::StringLiterals;

class TestConfigAutoStart : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_home.reset(); }
    void isReadAtConstruction_data();
    void isReadAtConstruction();
    void setterChangesTheSystem_data();
    void setterChangesTheSystem();
    void linkIsDescribed();
    void isNotCopied();

private:
    std::unique_ptr<ConfigHome> m_home;
};

void TestConfigAutoStart::init()
{
    QTest::failOnWarning();
    m_home = std::make_unique<ConfigHome>();
    FakeAutoStart::state() = {};
}

void TestConfigAutoStart::isReadAtConstruction_data()
{
    QTest::addColumn<FakeAutoStart::State>("state");
    QTest::addColumn<bool>("expected");
    QTest::addColumn<QStringList>("callsAfterTheSearch");
    using State = FakeAutoStart::State;
    QTest::newRow("no link") << State{} << false << QStringList{};
    QTest::newRow("a link") << State{.found = true} << true << QStringList{};
    QTest::newRow("a link through cmd is replaced")
        << State{.found = true, .viaCmd = true} << true << QStringList{u"remove"_s, u"create"_s};
    QTest::newRow("the replacement cannot be written")
        << State{.found = true, .viaCmd = true, .canCreate = false} << false
        << QStringList{u"remove"_s, u"create"_s};
    QTest::newRow("the link through cmd cannot be removed")
        << State{.found = true, .viaCmd = true, .canRemove = false} << false
        << QStringList{u"remove"_s};
}

void TestConfigAutoStart::isReadAtConstruction()
{
    QFETCH(const FakeAutoStart::State, state);
    QFETCH(const bool, expected);
    QFETCH(const QStringList, callsAfterTheSearch);
    FakeAutoStart::state() = state;
    const VsConfig config;
    QCOMPARE(config.autoStartAtSignIn(), expected);
    QCOMPARE(FakeAutoStart::state().calls,
        QStringList({u"find the target, the arguments, paths"_s,
            u"find the target, the arguments, viaCmd"_s})
            + callsAfterTheSearch);
}

void TestConfigAutoStart::setterChangesTheSystem_data()
{
    QTest::addColumn<bool>("from");
    QTest::addColumn<bool>("to");
    QTest::addColumn<bool>("works");
    QTest::addColumn<QStringList>("calls");
    QTest::addColumn<bool>("emits");
    QTest::addColumn<bool>("expected");
    const QStringList none;
    const QStringList create{u"create"_s};
    const QStringList remove{u"remove"_s};
    QTest::newRow("stays off") << false << false << true << none << false << false;
    QTest::newRow("stays on") << true << true << true << none << false << true;
    QTest::newRow("on") << false << true << true << create << true << true;
    QTest::newRow("on, but there is no start-up folder")
        << false << true << false << create << true << false;
    QTest::newRow("off") << true << false << true << remove << true << false;
    QTest::newRow("off, but a link cannot be removed")
        << true << false << false << remove << true << true;
}

void TestConfigAutoStart::setterChangesTheSystem()
{
    QFETCH(const bool, from);
    QFETCH(const bool, to);
    QFETCH(const bool, works);
    QFETCH(const QStringList, calls);
    QFETCH(const bool, emits);
    QFETCH(const bool, expected);
    FakeAutoStart::state() = {.found = from};
    VsConfig config;
    QCOMPARE(config.autoStartAtSignIn(), from);
    FakeAutoStart::state() = {.canCreate = works, .canRemove = works};
    const SignalLog log(&config);

    config.setAutoStartAtSignIn(to);
    QCOMPARE(FakeAutoStart::state().calls, calls);
    QCOMPARE(config.autoStartAtSignIn(), expected);
    QCOMPARE(log.names(), QList<QByteArray>(emits ? 1 : 0, "autoStartAtSignInChanged"));
    if (emits)
        QCOMPARE(log.emissions().constFirst().arguments, QVariantList{expected});
}

void TestConfigAutoStart::linkIsDescribed()
{
    VsConfig config;
    config.setAutoStartAtSignIn(true);
    QCOMPARE(FakeAutoStart::state().createdName, u"Vesper"_s);
    const AutoStart::ShortcutSpec &spec = FakeAutoStart::state().createdSpec;
    QCOMPARE(spec.description, u"Vesper - by Marrowby Inc."_s);
    QCOMPARE(spec.targetPath, u"the target"_s);
    QCOMPARE(spec.arguments, u"the arguments"_s);
    QCOMPARE(spec.workingDirectory, u"the folder"_s);
    QCOMPARE(spec.iconPath, u"the icon"_s);
    QCOMPARE(spec.iconIndex, 3);
    QCOMPARE(spec.showCommand, 7);
}

void TestConfigAutoStart::isNotCopied()
{
    VsConfig off;
    FakeAutoStart::state() = {.found = true};
    VsConfig on;
    FakeAutoStart::state() = {};
    const VsConfig copy(on);
    QCOMPARE(copy.autoStartAtSignIn(), false);
    off = on;
    QCOMPARE(off.autoStartAtSignIn(), false);
    on = copy;
    QCOMPARE(on.autoStartAtSignIn(), true);
    QCOMPARE(FakeAutoStart::state().calls, QStringList());
}

QTEST_GUILESS_MAIN(TestConfigAutoStart)
#include "tst_configautostart.moc"
