// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Where the catalogues beside a program lie depends on where the program is, and the system's
// locale is read once. So each case runs in a copy of this program in a folder of its own: started
// with "--child [language]" it installs the catalogues and tells what came of it.

#include "app/vstranslator.h"

#include <QtCore/qdir.h>
#include <QtCore/qjsondocument.h>
#include <QtCore/qjsonobject.h>
#include <QtCore/qprocess.h>
#include <QtCore/qtemporarydir.h>
#include <QtTest/qtest.h>
#include <QtWidgets/qapplication.h>

#include <cstdio>
#include <optional>

using namespace Qt::StringLiterals;

#if defined(__SANITIZE_ADDRESS__)
// A catalogue that fails to load is left allocated on purpose.
extern "C" const char *__lsan_default_suppressions();
extern "C" const char *__lsan_default_suppressions() { return "leak:VsTranslator::loadLanguage"; }
#endif

namespace
{

QJsonObject probeTexts()
{
    return {
        {u"both"_s, QCoreApplication::translate("Probe", "in both")},
        {u"beside"_s, QCoreApplication::translate("Probe", "beside")},
        {u"resource"_s, QCoreApplication::translate("Probe", "in the resource")},
    };
}

QJsonObject english()
{
    return {{u"both"_s, u"in both"_s}, {u"beside"_s, u"beside"_s},
        {u"resource"_s, u"in the resource"_s}};
}

int runChild(int argc, char **argv)
{
    QApplication application(argc, argv);
    QJsonObject result;
    {
        VsTranslator translator(&application);
        result[u"before"_s] = probeTexts();
        const QStringList arguments = QCoreApplication::arguments();
        result[u"installed"_s] = arguments.size() > 2 ? translator.loadLanguage(arguments.at(2))
                                                      : translator.loadSystemLanguage();
        result[u"texts"_s] = probeTexts();
        result[u"language"_s] = VsTranslator::systemLanguage();
    }
    result[u"after"_s] = probeTexts();
    std::fputs(QJsonDocument(result).toJson(QJsonDocument::Compact).constData(), stdout);
    return 0;
}

} // namespace

class TestVsTranslator : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }

    void hasNoMetaObjectOfItsOwn();
    void languageOfLocaleName_data();
    void languageOfLocaleName();
    void loadLanguage_data();
    void loadLanguage();
    void loadSystemLanguage_data();
    void loadSystemLanguage();

private:
    static QJsonObject resultOfChild(const QStringList &besideFiles,
        const std::optional<QString> &language, const QString &locale = u"C"_s);
};

/// What a copy of this program says that has \a besideFiles in its folder "translations". A name
/// with "broken" in it becomes a file that is no catalogue, every other one a copy of the one
/// catalogue.
QJsonObject TestVsTranslator::resultOfChild(
    const QStringList &besideFiles, const std::optional<QString> &language, const QString &locale)
{
    const QTemporaryDir folder;
    const QString program
        = folder.filePath(QFileInfo(QCoreApplication::applicationFilePath()).fileName());
    if (!QFile::copy(QCoreApplication::applicationFilePath(), program))
        return {};
    for (const QString &name : besideFiles) {
        const QString path = folder.filePath(u"translations/"_s + name);
        QDir().mkpath(QFileInfo(path).path());
        if (!name.contains(u"broken"_s)) {
            QFile::copy(u":/beside/extra_ja.qm"_s, path);
            continue;
        }
        QFile file(path);
        if (file.open(QIODevice::WriteOnly))
            file.write("no catalogue");
    }

    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"LC_ALL"_s, locale);
    environment.remove(u"LANGUAGE"_s);
    process.setProcessEnvironment(environment);
    process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    process.start(
        program, QStringList{u"--child"_s} + (language ? QStringList{*language} : QStringList()));
    if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit
        || process.exitCode() != 0)
        return {};
    return QJsonDocument::fromJson(process.readAllStandardOutput()).object();
}

void TestVsTranslator::hasNoMetaObjectOfItsOwn()
{
    const VsTranslator translator(qApp);
    QCOMPARE(translator.metaObject(), &QObject::staticMetaObject);
}

void TestVsTranslator::languageOfLocaleName_data()
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

void TestVsTranslator::languageOfLocaleName()
{
    QFETCH(const QString, name);
    QFETCH(const QString, expected);
    QCOMPARE(::languageOfLocaleName(name), expected);
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
    QTest::newRow("none") << u"de"_s << QStringList{} << false << english();
    QTest::newRow("only a corrupt one")
        << u"de"_s << QStringList{u"broken_de.qm"_s} << false << english();
    QTest::newRow("only one beside") << u"de"_s << QStringList{u"app_de.qm"_s} << true << beside;
    QTest::newRow("no language") << QString() << QStringList{u"app_de.qm"_s} << false << english();
    QTest::newRow("no language, name ends in an underscore")
        << QString() << QStringList{u"app_.qm"_s} << true << beside;
}

void TestVsTranslator::loadLanguage()
{
    QFETCH(const QString, language);
    QFETCH(const QStringList, beside);
    QFETCH(const bool, installed);
    QFETCH(const QJsonObject, texts);
    const QJsonObject result = resultOfChild(beside, language);
    QCOMPARE(result[u"before"_s], english());
    QCOMPARE(result[u"installed"_s], QJsonValue(installed));
    QCOMPARE(result[u"texts"_s], texts);
    QCOMPARE(result[u"after"_s], english());
}

void TestVsTranslator::loadSystemLanguage_data()
{
    QTest::addColumn<QString>("locale");
    QTest::addColumn<QString>("language");
    QTest::addColumn<bool>("installed");
    QTest::newRow("Japanese (Japan)") << u"ja_JP.UTF-8"_s << u"ja"_s << true;
    QTest::newRow("German (Germany)") << u"de_DE.UTF-8"_s << u"de"_s << false;
    QTest::newRow("no language") << u"C.UTF-8"_s << QString() << false;
}

void TestVsTranslator::loadSystemLanguage()
{
    QFETCH(const QString, locale);
    QFETCH(const QString, language);
    QFETCH(const bool, installed);
    const QJsonObject result = resultOfChild({}, std::nullopt, locale);
    QCOMPARE(result[u"language"_s], QJsonValue(language));
    QCOMPARE(result[u"installed"_s], QJsonValue(installed));
    QCOMPARE(result[u"texts"_s].toObject() == english(), !installed);
}

int main(int argc, char **argv)
{
    if (argc > 1 && qstrcmp(argv[1], "--child") == 0)
        return runChild(argc, argv);
    QApplication application(argc, argv);
    TestVsTranslator test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_vstranslator.moc"
