// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qobject.h>

#include <memory>

class QSocketNotifier;

/// Brings SIGTERM, SIGINT and SIGHUP into the event loop for as long as it lives. At most one at a
/// time.
class TerminationSignals : public QObject
{
    Q_OBJECT

public:
    explicit TerminationSignals(QObject *parent = nullptr);
    ~TerminationSignals() override;

Q_SIGNALS:
    /// One of the signals has arrived.
    void received();

private:
    std::unique_ptr<QSocketNotifier> m_notifier;
};
