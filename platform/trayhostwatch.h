// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qobject.h>

/// Notices a host for tray icons that comes up after the program, as the panel may at sign-in.
class TrayHostWatch : public QObject
{
    Q_OBJECT

public:
    explicit TrayHostWatch(QObject *parent = nullptr);

Q_SIGNALS:
    /// Emitted at most once, and never when there was a host from the start: an icon that was made
    /// for one finds its way to the next by itself.
    void hostAppeared();

private Q_SLOTS:
    void lookForHost();

private:
    bool m_hostKnown = false;
};
