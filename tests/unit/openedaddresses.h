// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qobject.h>
#include <QtCore/qurl.h>
#include <QtGui/qdesktopservices.h>

/// Takes every web address that the program opens in the place of the browser.
class OpenedAddresses : public QObject
{
    Q_OBJECT

public:
    OpenedAddresses()
    {
        for (const QString &scheme : schemes())
            QDesktopServices::setUrlHandler(scheme, this, "open");
    }
    ~OpenedAddresses() override
    {
        for (const QString &scheme : schemes())
            QDesktopServices::unsetUrlHandler(scheme);
    }
    Q_DISABLE_COPY_MOVE(OpenedAddresses)

    QList<QUrl> addresses;

public Q_SLOTS:
    void open(const QUrl &address) { addresses += address; }

private:
    static const QStringList &schemes()
    {
        static const QStringList schemes{QStringLiteral("https"), QStringLiteral("http")};
        return schemes;
    }
};
