// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "qml/exactpointer.h"

#include <QtCore/qcoreapplication.h>
#include <QtGui/qevent.h>
#include <QtGui/qwindow.h>

#include <algorithm>
#include <cmath>

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
    case QEvent::MouseButtonDblClick:
        rememberPress(static_cast<QMouseEvent *>(event));
        break;
    case QEvent::MouseButtonRelease:
    case QEvent::MouseMove:
        return sendAnew(static_cast<QMouseEvent *>(event));
    default:
        break;
    }
    return QObject::eventFilter(watched, event);
}

// What was pressed is what the user saw below the pointer, wherever Qt believes the window to be:
// right after it appeared that may be wrong under some window managers.
void ExactPointer::rememberPress(const QMouseEvent *event)
{
    if (event->buttons() == event->button())
        m_error = event->globalPosition() - m_window->mapToGlobal(event->scenePosition());
}

bool ExactPointer::sendAnew(QMouseEvent *event)
{
    const QPointF position = m_window->mapFromGlobal(event->globalPosition() - m_error);
    const QPointF off = position - event->scenePosition();
    const bool isHeld = event->buttons() || event->type() == QEvent::MouseButtonRelease;
    // Half a pixel and less is rounding. The event that is sent anew comes through here as well.
    if (!isHeld || std::max(std::abs(off.x()), std::abs(off.y())) <= 0.5)
        return false;
    QMouseEvent exact(event->type(), position, position, event->globalPosition(), event->button(),
        event->buttons(), event->modifiers(), event->source(), event->pointingDevice());
    exact.setTimestamp(event->timestamp());
    QCoreApplication::sendEvent(m_window, &exact);
    event->setAccepted(exact.isAccepted());
    return true;
}
