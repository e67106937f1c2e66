// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "manager/windowkeeper_x11.h"

#include "manager/managedwindow_x11.h"

#include <QtCore/qcoreapplication.h>
#include <QtGui/qevent.h>
#include <QtGui/qwindow.h>

#include <utility>

namespace
{

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
{
    // Emitted before the window system is asked to show or hide the window.
    connect(window, &QWindow::visibleChanged, this, &WindowKeeper::onVisibleChanged);
    QCoreApplication::instance()->installNativeEventFilter(this);
    window->installEventFilter(this);
}

bool WindowKeeper::nativeEventFilter(
    const QByteArray &eventType, void *message, [[maybe_unused]] qintptr *result)
{
    if (eventType != "xcb_generic_event_t" || !m_window->handle())
        return false;
    const WId window = m_window->winId();
    const auto isInCareAs
        = [=](ManagedWindow::Care care) { return ManagedWindow::careFor(window) == care; };
    // A window on the taskbar, as its flags tell, has a desktop, where it is to stay.
    if (ManagedWindow::isNewManager(message))
        m_isDue = m_isDue || !m_window->flags().testFlag(Qt::WindowSystemMenuHint);
    else if (ManagedWindow::isUnmapOf(message, window))
        m_isDue = m_isDue || !isInCareAs(ManagedWindow::Care::Iconic); // which keeps its states
    else if (ManagedWindow::isCareSet(message, window) && m_isDue
        && isInCareAs(ManagedWindow::Care::Normal))
        apply();
    return false;
}

bool WindowKeeper::eventFilter(QObject *watched, QEvent *event)
{
    if (isNewSurface(event))
        prepareForShow();
    return QObject::eventFilter(watched, event);
}

void WindowKeeper::onVisibleChanged(bool visible)
{
    if (!m_window->handle())
        return; // a new surface comes first
    ManagedWindow::awaitCare(m_window->winId(), !visible);
    if (visible)
        prepareForShow();
}

void WindowKeeper::prepareForShow()
{
    ManagedWindow::setFrameless(m_window->winId());
    if (!m_window->windowStates().testFlag(Qt::WindowMinimized))
        ManagedWindow::startShown(m_window->winId());
    apply();
    m_isDue = true;
}

void WindowKeeper::apply()
{
    m_isDue = false;
    if (m_context)
        m_apply();
}
