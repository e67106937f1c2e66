// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "cannedanswer.h"
#include "offscreenwarnings.h"

#include "config/maker.h"
#include "update/vsupdatechecker.h"

#include <QtCore/qmetaobject.h>
#include <QtCore/qregularexpression.h>
#include <QtNetwork/qnetworkaccessmanager.h>
#include <QtTest/qsignalspy.h>
#include <QtTest/qtest.h>

using namespace Qt::StringLiterals;

namespace
{

// What a checker tells of one answer, in order.
QStringList newsOf(CannedAnswer &answer, VsUpdateChecker::VersionInfo *info = nullptr)
{
    VsUpdateChecker checker;
    QStringList news;
    QObject::connect(&checker, &VsUpdateChecker::errorOccured, &checker,
        [&news](const QString &text) { news += u"error: "_s + text; });
    QObject::connect(&checker, &VsUpdateChecker::versionInfoRecieved, &checker,
        [&news, info](const VsUpdateChecker::VersionInfo &received) {
            news += u"version"_s;
            if (info)
                *info = received;
        });
    QObject::connect(
        &checker, &VsUpdateChecker::finished, &checker, [&news] { news += u"finished"_s; });
    checker.onManagerFinished(&answer);
    return news;
}

} // namespace

class TestVsUpdateChecker : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnRealWarning(); }
    void infoIsKnownByItsName();
    void interfaceStandsInOrder();
    void asksOneQuestion();
    void defaultInfoIsEmpty();
    void newsOfAnAnswer_data();
    void newsOfAnAnswer();
    void allFields();
    void missingFieldsAreEmpty();
    void networkError();
    void brokenAnswer();
    void noReply();
    void infoTravelsInAQueue();
};

// The first of all: whoever connects to the checker's signal makes it known as well.
void TestVsUpdateChecker::infoIsKnownByItsName()
{
    const VsUpdateChecker checker;
    QCOMPARE(QMetaType::fromName("VsUpdateChecker::VersionInfo"),
        QMetaType::fromType<VsUpdateChecker::VersionInfo>());
}

void TestVsUpdateChecker::interfaceStandsInOrder()
{
    const QMetaObject &type = VsUpdateChecker::staticMetaObject;
    QByteArrayList methods;
    for (int i = type.methodOffset(); i < type.methodCount(); ++i) {
        const QMetaMethod method = type.method(i);
        methods += (method.methodType() == QMetaMethod::Signal ? "signal " : "slot ")
            + method.methodSignature() + ": " + method.parameterNames().join(' ');
    }
    QCOMPARE(methods,
        (QByteArrayList{"signal errorOccured(QString): errorString",
            "signal versionInfoRecieved(VsUpdateChecker::VersionInfo): info",
            "signal finished(): ", "slot onManagerFinished(QNetworkReply*): reply"}));
}

void TestVsUpdateChecker::asksOneQuestion()
{
    VsUpdateChecker checker;
    checker.checkForUpdate();
    const auto questions = checker.findChildren<QNetworkReply *>(); // none has left yet
    QCOMPARE(questions.size(), 1);
    QCOMPARE(questions.first()->operation(), QNetworkAccessManager::GetOperation);
    QCOMPARE(questions.first()->url().toString(QUrl::FullyEncoded),
        u"https://"_s + Maker::updateHost
            + u"/software/download/getlastinfo/?name=Vesper&platform=win&arch=x64"_s);
    QVERIFY(questions.first()->request().rawHeaderList().isEmpty());
}

void TestVsUpdateChecker::defaultInfoIsEmpty()
{
    const VsUpdateChecker::VersionInfo info;
    QVERIFY(!info.result);
    for (const QString &text :
        {info.name, info.version, info.fileName, info.site, info.url, info.timestamp})
        QVERIFY(text.isEmpty());
}

void TestVsUpdateChecker::newsOfAnAnswer_data()
{
    QTest::addColumn<QByteArray>("body");
    QTest::addColumn<bool>("version");
    QTest::newRow("true") << R"({"result": true, "version": "5.0"})"_ba << true;
    QTest::newRow("false") << R"({"result": false, "version": "5.0"})"_ba << false;
    QTest::newRow("missing") << R"({"version": "5.0"})"_ba << false;
    QTest::newRow("a text") << R"({"result": "true", "version": "5.0"})"_ba << false;
    QTest::newRow("a number") << R"({"result": 1, "version": "5.0"})"_ba << false;
    QTest::newRow("array") << R"([{"result": true}])"_ba << false;
    QTest::newRow("empty object") << "{}"_ba << false;
}

void TestVsUpdateChecker::newsOfAnAnswer()
{
    QFETCH(QByteArray, body);
    QFETCH(bool, version);
    CannedAnswer answer(body);
    QCOMPARE(newsOf(answer),
        version ? QStringList({u"version"_s, u"finished"_s}) : QStringList{u"finished"_s});
}

void TestVsUpdateChecker::allFields()
{
    CannedAnswer answer(R"({"result": true, "name": "Vesper", "version": "4.1.0.0",
        "fileName": "setup.exe", "site": "https://a.example/", "url": "https://b.example/c",
        "timestamp": "2026-11-21 10:00"})"_ba);
    VsUpdateChecker::VersionInfo info;
    newsOf(answer, &info);
    QVERIFY(info.result);
    QCOMPARE(info.name, u"Vesper"_s);
    QCOMPARE(info.version, u"4.1.0.0"_s);
    QCOMPARE(info.fileName, u"setup.exe"_s);
    QCOMPARE(info.site, u"https://a.example/"_s);
    QCOMPARE(info.url, u"https://b.example/c"_s);
    QCOMPARE(info.timestamp, u"2026-11-21 10:00"_s);
}

void TestVsUpdateChecker::missingFieldsAreEmpty()
{
    CannedAnswer answer(R"({"result": true, "version": 5, "name": null})"_ba);
    VsUpdateChecker::VersionInfo info;
    QCOMPARE(newsOf(answer, &info), QStringList({u"version"_s, u"finished"_s}));
    QVERIFY(info.version.isEmpty());
    QVERIFY(info.name.isEmpty());
    QVERIFY(info.site.isEmpty());
}

void TestVsUpdateChecker::networkError()
{
    CannedAnswer answer(QNetworkReply::HostNotFoundError);
    QCOMPARE(newsOf(answer), QStringList({u"error: it failed"_s, u"finished"_s}));
}

void TestVsUpdateChecker::brokenAnswer()
{
    for (const QByteArray &body : {"<html>"_ba, ""_ba, R"({"result": tr)"_ba}) {
        CannedAnswer answer(body);
        const QStringList news = newsOf(answer);
        QCOMPARE(news.size(), 2);
        QVERIFY(news.first().startsWith(u"error: "_s));
        QCOMPARE(news.last(), u"finished"_s);
    }
}

void TestVsUpdateChecker::noReply()
{
    VsUpdateChecker checker;
    QSignalSpy finished(&checker, &VsUpdateChecker::finished);
    checker.onManagerFinished(nullptr);
    QVERIFY(finished.isEmpty());
}

void TestVsUpdateChecker::infoTravelsInAQueue()
{
    VsUpdateChecker checker;
    QString version;
    connect(
        &checker, &VsUpdateChecker::versionInfoRecieved, this,
        [&version](const VsUpdateChecker::VersionInfo &info) { version = info.version; },
        Qt::QueuedConnection);
    CannedAnswer answer(R"({"result": true, "version": "5.0"})"_ba);
    checker.onManagerFinished(&answer);
    QVERIFY(version.isEmpty());
    QTRY_COMPARE(version, u"5.0"_s);
}

QTEST_GUILESS_MAIN(TestVsUpdateChecker)
#include "tst_vsupdatechecker.moc"
