// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include "platform/windowplacement.h"

#include <QtCore/qabstractnativeeventfilter.h>
#include <QtCore/qobject.h>
#include <QtCore/qrect.h>
#include <QtGui/qwindow.h>

#include <memory>

class VsConfig;

/// Watches what the window system tells before Qt handles it, to keep the clock visible and in its
/// place when monitors come and go, to save at the end of the session, and to note the geometry
/// before a minimise.
class VsNativeEventFilter : public QObject, public QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    explicit VsNativeEventFilter(QObject *parent = nullptr);
    ~VsNativeEventFilter() override;

    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

    /// Decides what becomes of the clock after a change of the monitors, of which \a window was
    /// told. True when nobody else is to handle the change, Qt included.
    bool handleDisplayChange(WId window);

    /// Where the clock is. The filter passes on to it what the window system reports.
    [[nodiscard]] WindowPlacement &placement() { return m_placement; }

    /// To be called when the user has moved the clock: where it was when its monitor was lost does
    /// not count any more.
    void onUserMoved();

Q_SIGNALS:
    // Declared and connected, but emitted by nobody, like moveAndReturnMainWindow(): meant so.
    void dpiChanged(WId wid, uint xDpi, uint yDpi, QRect rect, bool *isMainWindow = nullptr);
    void requestToSaveConfig();
    void moveAndReturnMainWindow();
    void updateMask();
    void aboutToMinimize();

public Q_SLOTS:
    void setMainWindowId(WId wid);
    void setMainWindow(QWindow *window);
    void setConfig(VsConfig *config);

private:
    void onMonitorBack(WId window);
    void restore();
    void noteLostMonitor();
    void nudge(WId window, QPoint topLeft);

    // The native effects and what they go by, in one file for each system.
    void startWatching();
    [[nodiscard]] QRect windowRectangle(WId window) const;
    [[nodiscard]] bool hasMonitor(WId window);
    [[nodiscard]] QRect clockGeometry(); // where the clock belongs
    void showWindow(WId window);
    void hideWindow(WId window);
    void moveByOneAndBack(WId window, QPoint topLeft);

    WId m_mainWindowId = 0;
    bool m_monitorLost = false;
    QWindow *m_mainWindow = nullptr;
    // Both as they were when the monitor was lost; noted, and read by nobody: meant so.
    double m_screenDevicePixelRatio = 1.0;
    double m_windowDevicePixelRatio = 1.0;
    QRect m_savedGeometry;
    VsConfig *m_config = nullptr; // not owned
    WindowPlacement m_placement;
    std::unique_ptr<QObject> m_watch; // what a system needs beside its messages
};
