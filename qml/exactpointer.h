// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qobject.h>
#include <QtCore/qpoint.h>

class QMouseEvent;
class QWindow;

/// Lets the documents of a window see the pointer where it is, even while they move the window.
///
/// An X server tells where the pointer was in the window before it took the moves that are still on
/// their way. A document knows only this place and adds the window's newest position: a fast drag
/// would go wrong by the moves in between, up to throwing the window off. The place on the screen
/// is told, too, and is right; while a button is held, the place in the window is computed from it
/// anew.
class ExactPointer : public QObject
{
    Q_OBJECT

public:
    /// Watches \a window, which owns it.
    explicit ExactPointer(QWindow *window);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void rememberPress(const QMouseEvent *event);
    bool sendAnew(QMouseEvent *event);

    QWindow *m_window; // the parent
    QPointF m_error; // of Qt's idea of the window's position, at the press
};
