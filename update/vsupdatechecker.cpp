// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "update/vsupdatechecker.h"

#include "config/maker.h"

#include <QtCore/qjsondocument.h>
#include <QtCore/qjsonobject.h>
#include <QtCore/qurl.h>
#include <QtNetwork/qnetworkaccessmanager.h>
#include <QtNetwork/qnetworkreply.h>
#include <QtNetwork/qnetworkrequest.h>

using namespace Qt::StringLiterals;

namespace
{

// One question on every system: the service's answer is right for all of them.
QUrl serviceUrl()
{
    return QUrl(u"https://"_s + Maker::updateHost
            + u"/software/download/getlastinfo/?name=Vesper&platform=win&arch=x64"_s,
        QUrl::TolerantMode);
}

VsUpdateChecker::VersionInfo versionInfo(const QJsonObject &object)
{
    VsUpdateChecker::VersionInfo info;
    info.result = object["result"_L1].toBool();
    if (!info.result)
        return info;
    info.name = object["name"_L1].toString();
    info.version = object["version"_L1].toString();
    info.fileName = object["fileName"_L1].toString();
    info.site = object["site"_L1].toString();
    info.url = object["url"_L1].toString();
    info.timestamp = object["timestamp"_L1].toString();
    return info;
}

} // namespace

VsUpdateChecker::VsUpdateChecker(QObject *parent)
    : QObject(parent)
    , m_networkAccessManager(new QNetworkAccessManager(this))
{
    qRegisterMetaType<VersionInfo>();
    connect(m_networkAccessManager, &QNetworkAccessManager::finished, this,
        &VsUpdateChecker::onManagerFinished);
}

void VsUpdateChecker::checkForUpdate()
{
    QNetworkReply *const reply = m_networkAccessManager->get(QNetworkRequest(serviceUrl()));
    // No release has so much to tell: a server gone mad must not take the machine's memory. What
    // is cut short counts as a network error.
    connect(reply, &QNetworkReply::downloadProgress, reply, [reply](qint64 received) {
        constexpr qint64 limitBytes = qint64(16) << 20;
        if (received > limitBytes)
            reply->abort();
    });
}

void VsUpdateChecker::onManagerFinished(QNetworkReply *reply)
{
    if (!reply)
        return;
    if (reply->error() != QNetworkReply::NoError) {
        Q_EMIT errorOccured(reply->errorString());
    } else {
        QJsonParseError error;
        const QJsonDocument answer = QJsonDocument::fromJson(reply->readAll(), &error);
        if (error.error != QJsonParseError::NoError) {
            Q_EMIT errorOccured(error.errorString());
        } else if (const VersionInfo info = versionInfo(answer.object()); info.result) {
            Q_EMIT versionInfoRecieved(info);
        }
    }
    Q_EMIT finished();
}
