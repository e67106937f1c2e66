// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qcoreapplication.h>
#include <QtCore/qcoreevent.h>
#include <QtCore/qhash.h>
#include <QtCore/qpointer.h>
#include <QtCore/qtimer.h>

/// Sees every repeating timer of this thread that goes off, whoever has it: those of an object that
/// shows nothing of them.
class FiredTimers : public QObject
{ // clazy:exclude=missing-qobject-macro
public:
    FiredTimers() { qApp->installEventFilter(this); }

    /// How often one of \a intervalMs has gone off so far.
    [[nodiscard]] qsizetype count(int intervalMs) const { return m_counts.value(intervalMs); }

    /// The one of \a intervalMs that went off last; null when it is gone or there was none.
    [[nodiscard]] const QTimer *last(int intervalMs) const { return m_last.value(intervalMs); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (auto *const timer = qobject_cast<QTimer *>(watched);
            timer && event->type() == QEvent::Timer && !timer->isSingleShot()) {
            ++m_counts[timer->interval()];
            m_last[timer->interval()] = timer;
        }
        return false;
    }

private:
    QHash<int, qsizetype> m_counts;
    QHash<int, QPointer<QTimer>> m_last;
};
