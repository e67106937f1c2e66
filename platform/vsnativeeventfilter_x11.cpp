// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// What takes the place of the messages of Windows on X11: signals that Qt has already made of them.

#include "platform/vsnativeeventfilter.h"

#include "platform/nearestscreen.h"
#include "platform/screenwatch.h"
#include "platform/terminationsignals.h"

#include <QtCore/qtimer.h>
#include <QtGui/qguiapplication.h>

#include <chrono>

using namespace std::chrono_literals;

bool VsNativeEventFilter::nativeEventFilter(
    const QByteArray &eventType, void *message, [[maybe_unused]] qintptr *result)
{
    if (eventType == "xcb_generic_event_t")
        m_placement.interpretNativeEvent(message);
    return false;
}

void VsNativeEventFilter::startWatching()
{
    auto watch = std::make_unique<ScreenWatch>();
    connect(watch.get(), &ScreenWatch::changed, this, [this] {
        if (m_mainWindow)
            handleDisplayChange(m_mainWindowId);
    });
    // At once: what a window manager does next is not the user's move, whatever key is held.
    connect(watch.get(), &ScreenWatch::changing, &m_placement,
        &WindowPlacement::compareAfterScreenChange);
    connect(&m_placement, &WindowPlacement::minimized, this, &VsNativeEventFilter::aboutToMinimize);
    connect(qGuiApp, &QGuiApplication::commitDataRequest, this,
        &VsNativeEventFilter::requestToSaveConfig);
    auto *signals = new TerminationSignals(watch.get());
    connect(signals, &TerminationSignals::received, this, [this] {
        // What the X server told before the signal may still be on its way.
        QTimer::singleShot(50ms, this, [this] {
            Q_EMIT requestToSaveConfig();
            QCoreApplication::exit(0); // not quit(), which a window may refuse
        });
    });
    m_watch = std::move(watch);
}

QRect VsNativeEventFilter::windowRectangle([[maybe_unused]] WId window) const
{
    return m_mainWindow ? m_mainWindow->frameGeometry() : QRect();
}

// The one where the clock belongs: a window manager may have moved it onto another one already.
bool VsNativeEventFilter::hasMonitor([[maybe_unused]] WId window)
{
    const QRect clock = clockGeometry();
    return meetsAnyScreen(clock.topLeft(), clock.size(), screenGeometries());
}

QRect VsNativeEventFilter::clockGeometry()
{
    return m_monitorLost ? m_savedGeometry : m_placement.wanted();
}

void VsNativeEventFilter::showWindow([[maybe_unused]] WId window)
{
    // The placement shows the clock, and no other window is hidden.
}

void VsNativeEventFilter::hideWindow([[maybe_unused]] WId window)
{
    // The placement hides the clock.
}

void VsNativeEventFilter::moveByOneAndBack(
    [[maybe_unused]] WId window, [[maybe_unused]] QPoint topLeft)
{
    // Qt repaints a window by itself when its screen changes.
}
