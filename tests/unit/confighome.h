// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include "config/maker.h"

#include <QtCore/qdir.h>
#include <QtCore/qfile.h>
#include <QtCore/qstandardpaths.h>
#include <QtCore/qtemporarydir.h>

/// A fresh home for the configuration, for the time of its life. Where the system knows the home
/// from the environment that is a temporary folder in which nothing exists yet; elsewhere it is the
/// test mode's folder, emptied.
class ConfigHome
{
public:
    ConfigHome()
    {
        qputenv("HOME", QFile::encodeName(m_home.filePath(QStringLiteral("fresh"))));
        qunsetenv("XDG_DATA_HOME");
        QStandardPaths::setTestModeEnabled(true);
        QDir(makerFolder()).removeRecursively();
    }
    ~ConfigHome() { QDir(makerFolder()).removeRecursively(); }
    Q_DISABLE_COPY_MOVE(ConfigHome)

    /// The folder above the application's own data folder; nothing makes it exist.
    QString dataFolder() const
    {
        return QStandardPaths::writableLocation(QStandardPaths::AppDataLocation)
            .section(u'/', 0, -2);
    }
    QString makerFolder() const { return dataFolder() + u'/' + Maker::organizationDomain; }
    QString configFolder() const { return makerFolder() + QStringLiteral("/Vesper"); }
    QString configFile() const { return configFolder() + QStringLiteral("/config.json"); }

    /// Puts \a text where the configuration is read from.
    bool writeFile(const QByteArray &text) const
    {
        QFile file(configFile());
        return QDir().mkpath(configFolder()) && file.open(QIODevice::WriteOnly)
            && file.write(text) == text.size();
    }

    /// What the file holds; null when it cannot be read.
    QByteArray readFile() const
    {
        QFile file(configFile());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

private:
    QTemporaryDir m_home;
};
