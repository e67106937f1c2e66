// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qobject.h>
#include <QtCore/qstring.h>

/// Asks the maker's update service for the newest release.
class VsUpdateChecker : public QObject
{
    Q_OBJECT

public:
    /// The service's answer. Travels by value in queued signals.
    struct VersionInfo {
        bool result = false; ///< the service found the program; when false nothing else is read
        QString name; ///< product name as the service knows it
        QString version; ///< newest version, dotted numbers
        QString fileName; ///< name of the installer file
        QString site; ///< web page of the release
        QString url; ///< download address
        QString timestamp; ///< release time, kept as text
    };

    using QObject::QObject;
};
