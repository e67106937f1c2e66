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

QTEST_APPLESS_MAIN(TestLanguageName)
#include "tst_languagename.moc"
