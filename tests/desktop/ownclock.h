// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/desktop/runningclock.h"

#include <QtCore/qrect.h>

#include <memory>

class LayerPictures;
class QQmlApplicationEngine;
class QQuickWindow;
class VsConfig;
class VsManager;

/// The clock on a real desktop, inside the test itself: for what no other program can bring about
/// or see. The geometry and all else come from the configuration at the time it is made.
class OwnClock
{
public:
    /// Makes \a home the one of this program. To be called once, before the first clock.
    static void prepare(const ClockHome &home);

    OwnClock();
    Q_DISABLE_COPY_MOVE(OwnClock)
    ~OwnClock();

    /// Stores the geometry that the next clock starts with.
    static void setStoredGeometry(QRect geometry);

    /// False when the window does not come to the screen.
    [[nodiscard]] bool waitForWindow();
    /// Waits until nothing but the ticks makes the clock paint. False when it does not come to
    /// rest.
    [[nodiscard]] bool waitForRest() const;

    VsManager *manager() const { return m_manager.get(); }
    QQuickWindow *window() const { return m_window; }
    /// The same window as the X server knows it.
    XWindow nativeWindow() const;
    /// Calls a slot or method of the manager by its name. False if it has none.
    [[nodiscard]] bool call(const char *method) const;

    /// The open settings window; null without one.
    static QQuickWindow *settingsWindow();
    /// Closes it and waits until it is gone. False when there is none or it stays.
    [[nodiscard]] static bool closeSettings();

private:
    std::unique_ptr<VsManager> m_manager;
    std::unique_ptr<LayerPictures> m_layerPictures; // outlives the engine, which calls it
    std::unique_ptr<QQmlApplicationEngine> m_engine; // it reads what the manager has published
    QQuickWindow *m_window = nullptr; // the engine's
};
