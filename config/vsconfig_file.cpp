// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The file: where it lies, reading and writing it.

#include "config/vsconfig.h"

#include "config/maker.h"
#include "config/vsconfig_settings.h"

#include <QtCore/qdir.h>
#include <QtCore/qfile.h>
#include <QtCore/qfileinfo.h>
#include <QtCore/qjsondocument.h>
#include <QtCore/qstandardpaths.h>

using namespace Qt::StringLiterals;

QString VsConfig::configFilePath()
{
    // One level up as text: QDir::cdUp() refuses to go where no folder is yet, as in a fresh home,
    // and the path would be another one on the first run.
    const QDir appData(QStandardPaths::writableLocation(QStandardPaths::AppDataLocation));
    const QString parent = QDir::cleanPath(appData.absoluteFilePath(u".."_s));
    const QDir folder(parent + u'/' + Maker::organizationDomain + u"/Vesper"_s);
    if (!folder.exists())
        folder.mkpath(u"."_s);
    return folder.filePath(u"config.json"_s);
}

void VsConfig::load()
{
    QFile file(configFilePath());
    if (!file.open(QIODevice::ReadOnly))
        return;
    const QByteArray text = file.readAll();
    file.close();

    QJsonParseError error;
    const QJsonDocument document = QJsonDocument::fromJson(text, &error);
    if (error.error != QJsonParseError::NoError)
        return;
    const QJsonObject object = document.object();
    for (const Setting &setting : settings())
        setting.read(*this, object);
}

void VsConfig::save() const
{
    QJsonObject object;
    for (const Setting &setting : settings())
        setting.write(*this, object);
    // Before the file is emptied: whoever is killed while it is empty has lost the settings.
    const QByteArray text = QJsonDocument(object).toJson(QJsonDocument::Indented);

    const QFileInfo target(configFilePath());
    if (!target.dir().exists() && !QDir().mkdir(target.path()))
        return;
    // In place on purpose: a link or a permission that the user gave the file stays. A write that
    // was cut short reads as no JSON at the next start, which means the defaults.
    QFile file(target.filePath());
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate))
        return;
    file.write(text);
    file.flush();
    file.close();
}
