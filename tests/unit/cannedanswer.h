// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qbytearray.h>
#include <QtNetwork/qnetworkreply.h>

#include <algorithm>

/// An answer from the network that needs no server.
class CannedAnswer : public QNetworkReply
{
public:
    explicit CannedAnswer(const QByteArray &body)
        : m_body(body)
    {
        open(QIODevice::ReadOnly);
    }
    explicit CannedAnswer(NetworkError error) { setError(error, QStringLiteral("it failed")); }

    void abort() override { }
    qint64 bytesAvailable() const override
    {
        return m_body.size() - m_read + QNetworkReply::bytesAvailable();
    }

protected:
    qint64 readData(char *data, qint64 size) override
    {
        const qint64 count = std::min(size, qint64(m_body.size()) - m_read);
        std::copy_n(m_body.constData() + m_read, count, data);
        m_read += count;
        return count;
    }

private:
    QByteArray m_body;
    qint64 m_read = 0;
};
