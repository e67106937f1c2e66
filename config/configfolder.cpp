// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "config/configfolder.h"

#include "config/vsconfig.h"
#include "platform/autostart.h"

#include <QtCore/qdir.h>
#include <QtCore/qfileinfo.h>

bool removeConfigurationFolder()
{
    QDir dir(QFileInfo(VsConfig::configFilePath()).path());
    if (!dir.removeRecursively())
        return false;
    if (!dir.cdUp())
        return true;
    dir.refresh();
    if (!dir.isEmpty(QDir::Files | QDir::Dirs | QDir::Drives | QDir::NoDotAndDotDot))
        return true;
    const QString name = dir.dirName();
    return dir.cdUp() && dir.rmdir(name);
}

bool uninstallCleanup()
{
    const bool linksRemoved = AutoStart::removeAutoStartLinks();
    const bool folderRemoved = removeConfigurationFolder();
    return folderRemoved && linksRemoved;
}
