// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qcoreapplication.h>
#include <QtCore/qobject.h>
#include <QtCore/qpoint.h>
#include <QtCore/qpointer.h>
#include <QtCore/qrect.h>
#include <QtCore/qtimer.h>
#include <QtGui/qwindow.h>

#include <chrono>
#include <optional>

class VsConfig;

/// The only owner of where the clock is. It keeps three geometries apart, in device-independent
/// pixels:
///
/// - wanted: what the user or a call inside the process gave last. Only this is ever saved.
/// - asked: what the window system was asked for last. While its answer is due, QWindow reports
///   this and nothing older, so whoever computes the next step from the window's geometry computes
///   it from here.
/// - seen: what the window system reports once it has settled. A place that it chose by itself
///   changes QWindow's geometry but not what is wanted.
///
/// After a show, a restore or a change of the screens the window is compared with what is wanted
/// and corrected once; if the window system insists, it stays.
class WindowPlacement : public QObject
{
    Q_OBJECT

public:
    enum class State { Hidden, Shown, Minimized, AwaitingMonitor };

    explicit WindowPlacement(QObject *parent = nullptr);

    /// Looks after \a window, without ownership. Null for none.
    void setWindow(QWindow *window);
    /// Takes the window's geometry for wanted. Until this or the first change that the process
    /// makes, any place is as good as another.
    void adoptGeometry();
    /// Says whether the clock keeps its place without a monitor. Not owned; null counts as no.
    void setConfig(const VsConfig *config) { m_config = config; }

    /// Hidden without a window.
    [[nodiscard]] State state() const;
    /// The geometry to save.
    [[nodiscard]] QRect wanted();
    /// Whether the window is somewhere else than wanted: the window system moved it, or it has been
    /// brought onto a screen because its own is away.
    [[nodiscard]] bool isDisplaced();
    /// Whether that is because its screen is away.
    [[nodiscard]] bool isRescued();

    /// Sets the window's geometry again after something has lost it. This changes what is wanted
    /// only if the window is where it is wanted.
    void restore(const QRect &geometry);
    /// Moves the window onto the nearest screen until its own is there again, and shows it if it
    /// waits for that one. Does nothing if it belongs on a screen that is there, at least partly,
    /// or keeps its place without one.
    void bringOntoScreen();
    /// Hides the window until its monitor is back, or ends that. A minimised window stays as it is.
    void setAwaitsMonitor(bool awaits);
    /// To be called when the screens have changed: compares the window with what is wanted a second
    /// later, when window managers have dealt with stray windows.
    void compareAfterScreenChange();

    /// Looks at a native event before Qt does, and may rewrite it.
    void interpretNativeEvent(void *message);

    bool eventFilter(QObject *watched, QEvent *event) override;

Q_SIGNALS:
    /// The user has moved the window through the window manager.
    void movedByUser();
    /// The window has been asked to return to where it is wanted, perhaps with another size.
    void corrected();
    /// The window is shown again after it has waited for its monitor.
    void shownAgain();
    /// The window has been minimised; its geometry is still the one from before.
    void minimized();

private:
    void noteChange();
    [[nodiscard]] bool hasMovedWithPointer(QPoint offset) const;
    void expectSystemChange();
    void move(const QRect &geometry);
    void endCorrectionIfInPlace();
    void settleWithin(std::chrono::milliseconds time);
    void settle();
    void settleWithoutMonitor();
    [[nodiscard]] bool isOnAnyScreen() const;
    [[nodiscard]] bool isPlaceKept() const;
    [[nodiscard]] QRect target() const;

    // One file for each window system.
    void showWindow(bool on);
    [[nodiscard]] bool isShown() const;
    [[nodiscard]] bool isAt(const QRect &geometry) const; // and can be seen there
    void request(const QRect &geometry);
    void reportPlace();
    [[nodiscard]] bool isHeldByButton() const; // with the pointer on the window
    [[nodiscard]] static bool isAnyKeyHeld();

    QPointer<QWindow> m_window;
    const VsConfig *m_config = nullptr;
    QRect m_wanted;
    std::optional<QPoint> m_lastPointer; // on the window
    QPoint m_pointerOffset; // from there, at the last change that the window system made
    QRect m_asked; // or seen, once the window system has settled for something else
    double m_ratio = 1; // device pixel ratio of the window, as last seen
    bool m_isWantedKnown = false; // until then any place is as good as another
    bool m_hearing = false; // the next change is the window system's
    bool m_isUserMoving = false; // but made by the user through the window manager
    bool m_isAnswerDue = false; // the window system has not settled yet
    bool m_isReporting = false; // reportPlace() has been called, and its event is on its way
    bool m_isCorrectionDue = false;
    bool m_isScreenChange = false; // the correction is one after a change of the screens
    bool m_awaitsMonitor = false;
    QTimer m_settleTimer;
    std::optional<QEventLoopLocker> m_hiddenLock; // closing other windows must not end the program
};
