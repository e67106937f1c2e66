// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// What takes the place of the messages of Windows on X11. Native events are not looked at: Qt has
// already made signals of those that matter.

#include "platform/vsnativeeventfilter.h"

#include "platform/displaywatch.h"
#include "platform/nearestscreen.h"
#include "platform/terminationsignals.h"

#include <QtCore/qtimer.h>
#include <QtGui/qguiapplication.h>

#include <chrono>

using namespace std::chrono_literals;

namespace
{

DisplayWatch *watchOf(const std::unique_ptr<QObject> &watch)
{
    return static_cast<DisplayWatch *>(watch.get());
}

} // namespace

bool VsNativeEventFilter::nativeEventFilter([[maybe_unused]] const QByteArray &eventType,
    [[maybe_unused]] void *message, [[maybe_unused]] qintptr *result)
{
    return false;
}

void VsNativeEventFilter::startWatching()
{
    auto watch = std::make_unique<DisplayWatch>();
    connect(watch.get(), &DisplayWatch::minimized, this, &VsNativeEventFilter::aboutToMinimize);
    connect(watch.get(), &DisplayWatch::displayChanged, this, [this] {
        // Windows finds a place for a window whose monitor is gone; here nobody may.
        if (!m_mainWindow)
            return;
        if (handleDisplayChange(m_mainWindowId))
            watchOf(m_watch)->cancelRescue();
        else
            watchOf(m_watch)->rescueLater();
    });
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

void VsNativeEventFilter::watchMainWindow() { watchOf(m_watch)->setWindow(m_mainWindow); }

QRect VsNativeEventFilter::windowRectangle([[maybe_unused]] WId window) const
{
    return m_mainWindow ? m_mainWindow->frameGeometry() : QRect();
}

bool VsNativeEventFilter::hasMonitor([[maybe_unused]] WId window) const
{
    const QRect clock = clockGeometry();
    return meetsAnyScreen(clock.topLeft(), clock.size(), screenGeometries());
}

// Where the clock belongs. While its monitor is away that is not where somebody has put it
// meanwhile.
QRect VsNativeEventFilter::clockGeometry() const
{
    return m_monitorLost ? m_savedGeometry : watchOf(m_watch)->settledGeometry();
}

void VsNativeEventFilter::showWindow([[maybe_unused]] WId window)
{
    watchOf(m_watch)->setSettledGeometry(m_savedGeometry); // it may be lost again within a second
    watchOf(m_watch)->setWindowHidden(false);
}

void VsNativeEventFilter::hideWindow([[maybe_unused]] WId window)
{
    watchOf(m_watch)->setWindowHidden(true);
}

void VsNativeEventFilter::moveByOneAndBack(
    [[maybe_unused]] WId window, [[maybe_unused]] QPoint topLeft)
{
    // Qt paints a window anew by itself when its screen changes.
}
