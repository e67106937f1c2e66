// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "config/languagename.h"

#include <QtTest/qtest.h>

using namespace Qt::StringLiterals;

class TestLanguageName : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void japaneseLanguage_data();
    void japaneseLanguage();
    void languageOfLocaleName_data();
    void languageOfLocaleName();
};

void TestLanguageName::japaneseLanguage_data()
{
    QTest::addColumn<QString>("language");
    QTest::addColumn<bool>("japanese");

    QTest::newRow("ja") << u"ja"_s << true;
    QTest::newRow("ja-JP") << u"ja-JP"_s << true;
    QTest::newRow("ja_JP") << u"ja_JP"_s << true;
    QTest::newRow("any case") << u"JA-jp"_s << true;
    QTest::newRow("a script") << u"ja-Hans"_s << false;
    QTest::newRow("none") << QString() << false;
    QTest::newRow("another") << u"jam"_s << false;
}

void TestLanguageName::japaneseLanguage()
{
    QFETCH(QString, language);
    QTEST(isJapaneseLanguage(language), "japanese");
}

void TestLanguageName::languageOfLocaleName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("expected");
    QTest::newRow("Japanese") << u"ja_JP"_s << u"ja"_s;
    QTest::newRow("German") << u"de_DE"_s << u"de"_s;
    QTest::newRow("three letters") << u"fil_PH"_s << u"fil"_s;
    QTest::newRow("cut at the last underscore") << u"zh_Hant_TW"_s << u"zh_Hant"_s;
    QTest::newRow("no underscore") << u"C"_s << QString();
    QTest::newRow("another separator") << u"ja-JP"_s << QString();
    QTest::newRow("underscore first") << u"_JP"_s << QString();
    QTest::newRow("empty") << QString() << QString();
}

void TestLanguageName::languageOfLocaleName()
{
    QFETCH(const QString, name);
    QFETCH(const QString, expected);
    QCOMPARE(::languageOfLocaleName(name), expected);
}

QTEST_APPLESS_MAIN(TestLanguageName)
#include "tst_languagename.moc"
