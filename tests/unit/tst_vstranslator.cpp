// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "translatorprobe.h"

#include "app/vstranslator.h"
#include "config/languagename.h"

#include <QtCore/qlocale.h>

using namespace Qt::StringLiterals;

class TestVsTranslator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }

    void hasNoMetaObjectOfItsOwn();
    void systemLanguageIsThatOfTheSystemsLocale();
    void loadLanguage_data();
    void loadLanguage();
};

void TestVsTranslator::hasNoMetaObjectOfItsOwn()
{
    const VsTranslator translator(qApp);
    QCOMPARE(translator.metaObject(), &QObject::staticMetaObject);
}

void TestVsTranslator::systemLanguageIsThatOfTheSystemsLocale()
{
    QCOMPARE(VsTranslator::systemLanguage(), ::languageOfLocaleName(QLocale::system().name()));
}

void TestVsTranslator::loadLanguage_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<QStringList>("beside");
    QTest::addColumn<bool>("installed");
    QTest::addColumn<QJsonObject>("texts");
    const QJsonObject resource{
        {u"both"_s, u"資源"_s}, {u"beside"_s, u"beside"_s}, {u"resource"_s, u"資源のみ"_s}};
    const QJsonObject both{
        {u"both"_s, u"資源"_s}, {u"beside"_s, u"隣のみ"_s}, {u"resource"_s, u"資源のみ"_s}};
    const QJsonObject beside{
        {u"both"_s, u"隣"_s}, {u"beside"_s, u"隣のみ"_s}, {u"resource"_s, u"in the resource"_s}};

    QTest::newRow("the resource's") << u"ja"_s << QStringList{} << true << resource;
    QTest::newRow("one beside, and the resource's wins")
        << u"ja"_s << QStringList{u"extra_ja.qm"_s} << true << both;
    QTest::newRow("any name with the ending")
        << u"ja"_s << QStringList{u"a_b_ja.qm"_s} << true << both;
    QTest::newRow("corrupt one beside")
        << u"ja"_s << QStringList{u"broken_ja.qm"_s} << true << resource;
    QTest::newRow("corrupt and good ones beside")
        << u"ja"_s << QStringList{u"broken_ja.qm"_s, u"extra_ja.qm"_s, u"zbroken_ja.qm"_s} << true
        << both;
    QTest::newRow("other languages beside")
        << u"ja"_s << QStringList{u"app_de.qm"_s, u"app_jaa.qm"_s, u"ja.qm"_s, u"app_ja.qm.bak"_s}
        << true << resource;
    QTest::newRow("folder of that name")
        << u"ja"_s << QStringList{u"extra_ja.qm/extra_ja.qm"_s} << true << resource;
    QTest::newRow("none") << u"de"_s << QStringList{} << false << TranslatorProbe::english();
    QTest::newRow("only a corrupt one")
        << u"de"_s << QStringList{u"broken_de.qm"_s} << false << TranslatorProbe::english();
    QTest::newRow("only one beside") << u"de"_s << QStringList{u"app_de.qm"_s} << true << beside;
    QTest::newRow("no language") << QString() << QStringList{u"app_de.qm"_s} << false
                                 << TranslatorProbe::english();
    QTest::newRow("no language, name ends in an underscore")
        << QString() << QStringList{u"app_.qm"_s} << true << beside;
}

void TestVsTranslator::loadLanguage()
{
    QFETCH(const QString, language);
    QFETCH(const QStringList, beside);
    QFETCH(const bool, installed);
    QFETCH(const QJsonObject, texts);
    const QJsonObject result = TranslatorProbe::result(beside, language);
    QCOMPARE(result[u"before"_s], TranslatorProbe::english());
    QCOMPARE(result[u"installed"_s], QJsonValue(installed));
    QCOMPARE(result[u"texts"_s], texts);
    QCOMPARE(result[u"after"_s], TranslatorProbe::english());
}

int main(int argc, char **argv) { return TranslatorProbe::runTest<TestVsTranslator>(argc, argv); }

#include "tst_vstranslator.moc"
