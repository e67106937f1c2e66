// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "qml/exactpointer.h"

#include <QtCore/qcoreapplication.h>
#include <QtGui/qevent.h>
#include <QtGui/qwindow.h>

ExactPointer::ExactPointer(QWindow *window)
    : QObject(window)
    , m_window(window)
{
    window->installEventFilter(this);
}

bool ExactPointer::eventFilter(QObject *watched, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonRelease:
    case QEvent::MouseButtonDblClick:
    case QEvent::MouseMove:
        return sendAnew(static_cast<QMouseEvent *>(event));
    default:
        return QObject::eventFilter(watched, event);
    }
}

bool ExactPointer::sendAnew(QMouseEvent *event)
{
    const QPointF position = m_window->mapFromGlobal(event->globalPosition());
    // Half a pixel and less is rounding. The event that is sent anew comes through here as well.
    if ((position - event->scenePosition()).manhattanLength() <= 1)
        return false;
    QMouseEvent exact(event->type(), position, position, event->globalPosition(), event->button(),
        event->buttons(), event->modifiers(), event->pointingDevice());
    exact.setTimestamp(event->timestamp());
    QCoreApplication::sendEvent(m_window, &exact);
    event->setAccepted(exact.isAccepted());
    return true;
}
