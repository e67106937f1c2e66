// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The decision about a display change, common to all systems.

#include "platform/vsnativeeventfilter.h"

#include "config/vsconfig.h"

#include <QtCore/qdebug.h>
#include <QtCore/qtimer.h>
#include <QtGui/qscreen.h>

#include <utility>

VsNativeEventFilter::VsNativeEventFilter(QObject *parent)
    : QObject(parent)
{
    connect(&m_placement, &WindowPlacement::movedByUser, this, &VsNativeEventFilter::onUserMoved);
    connect(&m_placement, &WindowPlacement::corrected, this, &VsNativeEventFilter::updateMask);
    startWatching();
}

VsNativeEventFilter::~VsNativeEventFilter() = default;

bool VsNativeEventFilter::handleDisplayChange(WId window)
{
    const QRect rectangle = windowRectangle(window);
    qDebug() << "Display Change";
    qDebug() << rectangle;
    if (hasMonitor(window)) {
        qDebug() << "Monitor is Avialable"; // so spelled: meant
        const bool isBack = std::exchange(m_monitorLost, false) && m_mainWindow;
        if (isBack)
            onMonitorBack(window);
        else
            nudge(window, rectangle.topLeft());
        if (!isBack || !m_config || !m_config->keepPositionWhenMonitorDetatched())
            m_placement.compareAfterScreenChange();
        return true;
    }

    noteLostMonitor();
    if (m_mainWindow && !(m_config && m_config->keepPositionWhenMonitorDetatched())) {
        QTimer::singleShot(0, this, &VsNativeEventFilter::updateMask);
        m_placement.compareAfterScreenChange();
        return false;
    }
    if (m_mainWindow) {
        hideWindow(window);
        if (window == m_mainWindowId)
            m_placement.setAwaitsMonitor(true);
    }
    nudge(window, rectangle.topLeft());
    return true;
}

void VsNativeEventFilter::noteLostMonitor()
{
    qDebug() << "Monitor is lost";
    if (m_mainWindow) {
        m_windowDevicePixelRatio = m_mainWindow->devicePixelRatio();
        m_savedGeometry = clockGeometry();
        if (const QScreen *screen = m_mainWindow->screen())
            m_screenDevicePixelRatio = screen->devicePixelRatio();
    }
    m_monitorLost = true;
}

void VsNativeEventFilter::onUserMoved()
{
    if (m_monitorLost)
        m_savedGeometry = m_placement.wanted();
}

void VsNativeEventFilter::onMonitorBack(WId window)
{
    showWindow(window);
    if (window == m_mainWindowId)
        m_placement.setAwaitsMonitor(false);
    QTimer::singleShot(0, this, &VsNativeEventFilter::restore);
}

void VsNativeEventFilter::restore()
{
    if (m_mainWindow) // it may have been taken away since
        m_placement.restore(QRect(m_savedGeometry.topLeft(), m_mainWindow->size()));
    Q_EMIT updateMask();
}

// Once the message has been handled: a window that is moved is painted anew on its new monitor.
void VsNativeEventFilter::nudge(WId window, QPoint topLeft)
{
    QTimer::singleShot(0, this, [this, window, topLeft] {
        moveByOneAndBack(window, topLeft);
        Q_EMIT updateMask();
    });
}

void VsNativeEventFilter::setMainWindowId(WId wid) { m_mainWindowId = wid; }

void VsNativeEventFilter::setMainWindow(QWindow *window)
{
    m_mainWindow = window;
    m_placement.setWindow(window);
}

void VsNativeEventFilter::setConfig(VsConfig *config)
{
    m_config = config;
    m_placement.setConfig(config);
}
