// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qabstractnativeeventfilter.h>
#include <QtCore/qobject.h>
#include <QtCore/qrect.h>
#include <QtGui/qwindow.h>

class VsConfig;

/// Watches the raw messages of the application's windows before Qt handles them, to keep the clock
/// visible and in its place when monitors change.
class VsNativeEventFilter : public QObject, public QAbstractNativeEventFilter
{
    Q_OBJECT

public:
    explicit VsNativeEventFilter(QObject *parent = nullptr);

    /// Never consumes a message so far.
    bool nativeEventFilter(const QByteArray &eventType, void *message, qintptr *result) override;

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
    WId m_mainWindowId = 0;
    QWindow *m_mainWindow = nullptr;
    VsConfig *m_config = nullptr; // not owned
};
