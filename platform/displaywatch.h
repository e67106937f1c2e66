// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qcoreapplication.h>
#include <QtCore/qobject.h>
#include <QtCore/qpointer.h>
#include <QtCore/qrect.h>
#include <QtCore/qtimer.h>
#include <QtGui/qscreen.h>
#include <QtGui/qwindow.h>

#include <optional>

/// Tells of a change of the screens where no window message does, and knows where a window was
/// before it: a window manager may have moved it by the time the change is known here.
class DisplayWatch : public QObject
{
    Q_OBJECT

public:
    explicit DisplayWatch(QObject *parent = nullptr);

    /// Watches \a window from now on, which keeps its owner.
    void setWindow(QWindow *window);

    [[nodiscard]] QWindow *window() const { return m_window; }

    /// The geometry that the window had when it last stood still for a moment.
    [[nodiscard]] QRect settledGeometry() const { return m_settledGeometry; }

    /// Takes \a geometry, where the window is about to be put, for settled at once.
    void setSettledGeometry(const QRect &geometry) { m_settledGeometry = geometry; }

    /// Hides the window or shows it. While it is hidden the program lives on, whichever other
    /// window is closed.
    void setWindowHidden(bool hidden);

    /// Brings the window fully onto the nearest screen a second from now.
    void rescueLater() { m_rescueTimer.start(); }
    void cancelRescue() { m_rescueTimer.stop(); }

Q_SIGNALS:
    /// Screens were added, removed or moved, once for a burst of such changes.
    void displayChanged();
    /// The window has been minimised; its geometry is still the one from before.
    void minimized();

private:
    void watchScreen(const QScreen *screen);
    void noteSettledGeometry();

    QPointer<QWindow> m_window;
    QRect m_settledGeometry;
    QTimer m_changeTimer;
    QTimer m_settleTimer;
    QTimer m_rescueTimer;
    std::optional<QEventLoopLocker> m_hiddenLock;
};
