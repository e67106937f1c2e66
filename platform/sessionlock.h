// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qobject.h>

#include <memory>

class SessionLockSource;

/// Tells when nobody can see the desktop: the session is locked, or the screen saver is on.
/// Where the system says nothing of the kind it stays silent.
class SessionLock : public QObject
{
    Q_OBJECT

public:
    explicit SessionLock(QObject *parent = nullptr);
    ~SessionLock() override;

    /// For what the system says; emits only a change.
    void setLocked(bool locked);

Q_SIGNALS:
    void lockedChanged(bool locked);

private:
    bool m_isLocked = false;
    std::unique_ptr<SessionLockSource> m_source; // of one system
};
