// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qobject.h>

class QQuickWindow;

/// Drops the frames that Qt's software renderer would paint and not show.
///
/// A window that gets another size is painted at once, since what the screen has of it is stale.
/// The change has asked for a frame as well, which follows: there is nothing new to show by then
/// and Qt does not show it, but paints all of it. While a clock is resized that is every other
/// frame. Figures: docs/performance.md.
class FrameThrift : public QObject
{
    Q_OBJECT

public:
    /// Watches \a window, which owns it.
    explicit FrameThrift(QQuickWindow *window);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    bool wouldBeShown() const;

    QQuickWindow *m_window; // the parent
};
