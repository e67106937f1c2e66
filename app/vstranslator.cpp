// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "app/vstranslator.h"

#include "config/languagename.h"

#include <QtCore/qdir.h>
#include <QtCore/qtranslator.h>
#include <QtWidgets/qapplication.h>

using namespace Qt::StringLiterals;

VsTranslator::VsTranslator(QApplication *application, QObject *parent)
    : QObject(parent)
    , m_application(application)
    , m_searchPaths{
          QDir(QCoreApplication::applicationDirPath()).absoluteFilePath(u"translations"_s),
          u":/translations"_s,
      }
{
}

VsTranslator::~VsTranslator()
{
    for (QTranslator *translator : std::as_const(m_translators))
        m_application->removeTranslator(translator);
    qDeleteAll(m_translators);
}

bool VsTranslator::loadSystemLanguage() { return loadLanguage(systemLanguage()); }

bool VsTranslator::loadLanguage(const QString &language)
{
    bool installed = false;
    for (const QString &path : std::as_const(m_searchPaths)) {
        const QFileInfoList catalogues = QDir(path).entryInfoList(
            {u"*_%1.qm"_s.arg(language)}, QDir::Files | QDir::NoDotAndDotDot, QDir::Unsorted);
        for (const QFileInfo &catalogue : catalogues) {
            auto *const translator = new QTranslator;
            // One that fails to load is left allocated on purpose.
            if (!translator->load(catalogue.absoluteFilePath()))
                continue;
            m_application->installTranslator(translator);
            m_translators.append(translator);
            installed = true;
        }
    }
    return installed;
}

QString VsTranslator::systemLanguage() { return systemLanguageName(); }
