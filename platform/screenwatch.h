// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qobject.h>
#include <QtCore/qtimer.h>

class QScreen;

/// Reports changes of the screens where no window message does.
class ScreenWatch : public QObject
{
    Q_OBJECT

public:
    explicit ScreenWatch(QObject *parent = nullptr);

Q_SIGNALS:
    /// At each of the changes that changed() sums up.
    void changing();
    /// Screens were added, removed or moved; emitted once for a burst of such changes.
    void changed();

private:
    void watch(const QScreen *screen);
    void noteChange();

    QTimer m_burstTimer;
};
