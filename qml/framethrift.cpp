// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "qml/framethrift.h"

#include <QtCore/qcoreevent.h>
#include <QtQuick/private/qquickwindow_p.h>
#include <QtQuick/private/qsgsoftwarerenderloop_p.h>
#include <QtQuick/qquickwindow.h>

FrameThrift::FrameThrift(QQuickWindow *window)
    : QObject(window)
    , m_window(window)
{
    window->installEventFilter(this);
}

bool FrameThrift::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::UpdateRequest && !wouldBeShown())
        return true;
    return QObject::eventFilter(watched, event);
}

// The loop notes for itself whether anything has asked for a frame since the last one. Its class is
// not exported, so nothing that looks for the type can be asked: no cast, no inherits(), no
// sanitizer.
[[gnu::no_sanitize("vptr")]] bool FrameThrift::wouldBeShown() const
{
    const QSGRenderLoop *loop = QQuickWindowPrivate::get(m_window)->windowManager;
    if (!loop || loop->metaObject()->className() != QByteArrayView("QSGSoftwareRenderLoop"))
        return true;
    const auto &windows = static_cast<const QSGSoftwareRenderLoop *>(loop)->m_windows;
    const auto found = windows.constFind(m_window);
    return found == windows.constEnd() || found->updatePending;
}
