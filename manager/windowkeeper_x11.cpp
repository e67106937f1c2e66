// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "manager/windowkeeper_x11.h"

#include "manager/managedwindow_x11.h"

#include <QtCore/qcoreapplication.h>
#include <QtGui/qevent.h>
#include <QtGui/qwindow.h>

#include <chrono>
#include <utility>

using namespace std::chrono_literals;

namespace
{

constexpr auto settling = 10s; // after a show

bool isNewSurface(const QEvent *event)
{
    return event->type() == QEvent::PlatformSurface
        && static_cast<const QPlatformSurfaceEvent *>(event)->surfaceEventType()
        == QPlatformSurfaceEvent::SurfaceCreated;
}

} // namespace

WindowKeeper::WindowKeeper(QWindow *window, QObject *context, std::function<void()> apply)
    : QObject(window)
    , m_window(window)
    , m_context(context)
    , m_apply(std::move(apply))
    , m_untilSettled(settling) // it may have been shown already
{
    m_newManagerTimer.setSingleShot(true);
    m_newManagerTimer.setInterval(1s); // by then it has the windows in its care
    connect(&m_newManagerTimer, &QTimer::timeout, this, &WindowKeeper::applyForNewManager);
    QCoreApplication::instance()->installNativeEventFilter(this);
    window->installEventFilter(this);
}

bool WindowKeeper::nativeEventFilter(
    const QByteArray &eventType, void *message, [[maybe_unused]] qintptr *result)
{
    if (eventType != "xcb_generic_event_t")
        return false;
    if (ManagedWindow::isNewManager(message))
        m_newManagerTimer.start();
    else if (m_window->handle() && ManagedWindow::isMapOf(message, m_window->winId()))
        m_dueWhenSeen = m_dueWhenSeen || !m_untilSettled.hasExpired();
    return false;
}

bool WindowKeeper::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::Show || isNewSurface(event)) {
        prepareForShow();
        apply();
        m_untilSettled.setRemainingTime(settling);
    } else if (event->type() == QEvent::Expose && m_dueWhenSeen && isSeen()) {
        m_dueWhenSeen = false;
        apply();
    }
    return QObject::eventFilter(watched, event);
}

// An exposure may be one of an earlier show. While the window is not on the screen again, the
// window manager may have put it into a frame that has no place yet.
bool WindowKeeper::isSeen() const
{
    return m_window->isExposed() && ManagedWindow::isViewable(m_window->winId());
}

void WindowKeeper::prepareForShow() const
{
    ManagedWindow::setFrameless(m_window->winId());
    if (!m_window->windowStates().testFlag(Qt::WindowMinimized))
        ManagedWindow::startShown(m_window->winId());
}

void WindowKeeper::apply() const
{
    if (m_context)
        m_apply();
}

// What is minimised comes back by a show. What is on the taskbar, as its flags tell, has a desktop,
// where it is to stay.
void WindowKeeper::applyForNewManager() const
{
    if (!m_window->windowStates().testFlag(Qt::WindowMinimized)
        && !m_window->flags().testFlag(Qt::WindowSystemMenuHint))
        apply();
}
