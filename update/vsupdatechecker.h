// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qmetatype.h>
#include <QtCore/qobject.h>
#include <QtCore/qstring.h>

class QNetworkAccessManager;
class QNetworkReply;

/// Asks the maker's update service once for the newest release. Made for one check in a thread of
/// its own; the spellings of errorOccured and versionInfoRecieved are meant so.
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

    explicit VsUpdateChecker(QObject *parent = nullptr);

    /// Sends the question and returns at once. One GET over https; the network stack decides all
    /// else, but an answer of more than 16 MiB is cut off and counts as an error.
    void checkForUpdate();

Q_SIGNALS:
    /// The check has failed in the network or on an answer that is no JSON.
    void errorOccured(QString errorString);
    /// The service knows a release.
    void versionInfoRecieved(VsUpdateChecker::VersionInfo info);
    /// The check is over, whatever came of it.
    void finished();

public Q_SLOTS:
    /// Reads the answer; \a reply stays with its network manager. Null is no answer at all.
    void onManagerFinished(QNetworkReply *reply);

private:
    QNetworkAccessManager *m_networkAccessManager; // owned as a child
};

Q_DECLARE_METATYPE(VsUpdateChecker::VersionInfo)
