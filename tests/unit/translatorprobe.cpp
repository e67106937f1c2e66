// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "translatorprobe.h"

#include "app/vstranslator.h"

#include <QtCore/qdir.h>
#include <QtCore/qjsondocument.h>
#include <QtCore/qprocess.h>
#include <QtCore/qtemporarydir.h>

#include <cstdio>

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

} // namespace

// The program's own catalogue has the name of the test's and may be found before it.
static void removeOwnCatalogue() { Q_CLEANUP_RESOURCE(vesper_application); }

QJsonObject TranslatorProbe::english()
{
    return {{u"both"_s, u"in both"_s}, {u"beside"_s, u"beside"_s},
        {u"resource"_s, u"in the resource"_s}};
}

QJsonObject TranslatorProbe::result(
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

bool TranslatorProbe::isChild(int argc, char **argv)
{
    return argc > 1 && qstrcmp(argv[1], "--child") == 0;
}

int TranslatorProbe::runChild(int argc, char **argv)
{
    removeOwnCatalogue();
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
