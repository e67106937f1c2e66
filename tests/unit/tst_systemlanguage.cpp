// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Where the environment says what the system's language is.

#include "translatorprobe.h"

using namespace Qt::StringLiterals;

class TestSystemLanguage : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }

    void loadSystemLanguage_data();
    void loadSystemLanguage();
};

void TestSystemLanguage::loadSystemLanguage_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("language");
    QTest::addColumn<bool>("installed");
    QTest::newRow("Japanese (Japan)") << u"ja_JP.UTF-8"_s << u"ja"_s << true;
    QTest::newRow("German (Germany)") << u"de_DE.UTF-8"_s << u"de"_s << false;
    QTest::newRow("no language") << u"C.UTF-8"_s << QString() << false;
}

void TestSystemLanguage::loadSystemLanguage()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, language);
    QFETCH(const bool, installed);
    const QJsonObject result = TranslatorProbe::result({}, std::nullopt, locale);
    QCOMPARE(result[u"language"_s], QJsonValue(language));
    QCOMPARE(result[u"installed"_s], QJsonValue(installed));
    QCOMPARE(result[u"texts"_s].toObject() == TranslatorProbe::english(), !installed);
}

int main(int argc, char **argv) { return TranslatorProbe::runTest<TestSystemLanguage>(argc, argv); }

#include "tst_systemlanguage.moc"
