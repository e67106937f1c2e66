// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qlist.h>
#include <QtCore/qobject.h>
#include <QtCore/qstringlist.h>

class QApplication;
class QTranslator;

/// Installs the catalogues of a language and takes them out again when it is destroyed. They come
/// from the folder "translations" beside the program and then from the program's resources, so that
/// a text present in both is the resource's. Without a catalogue the interface stays in English.
class VsTranslator : public QObject
{ // clazy:exclude=missing-qobject-macro has no meta-object of its own
public:
    /// \a application must outlive the translator. Loads nothing yet.
    explicit VsTranslator(QApplication *application, QObject *parent = nullptr);
    VsTranslator(const VsTranslator &) = delete;
    VsTranslator &operator=(const VsTranslator &) = delete;
    ~VsTranslator() override;

    /// True when at least one catalogue was installed.
    bool loadSystemLanguage();
    bool loadLanguage(const QString &language);

    /// Language code of the system's locale, as systemLanguageName() gives it.
    static QString systemLanguage();

private:
    QApplication *m_application;
    QList<QTranslator *> m_translators;
    QStringList m_searchPaths;
};
