// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/qml/clockwindow.h"

#include "qml/exactpointer.h"

#include <algorithm>

using namespace Qt::StringLiterals;

ClockWindow::ClockWindow(bool resizeEnabled)
{
    for (const auto *layer : {"base", "background", "dial", "handHour", "handMinute", "handSecond"})
        documents.theme.setProperty(layer, QString());
    documents.config.setResizeEnabled(resizeEnabled);
    m_root = documents.create(u"main.qml"_s);
    m_window = qobject_cast<QQuickWindow *>(m_root.get());
    if (!m_window)
        qFatal("the main document does not load");
    new ExactPointer(m_window);
    m_window->show();
    place({200, 150, 320, 320});
    if (!QTest::qWaitForWindowExposed(m_window))
        qFatal("the window does not appear");
}

bool ClockWindow::hasGrips() const
{
    constexpr const char16_t *ids[] = {u"resizeHandleTopLeft", u"resizeHandleTopRight",
        u"resizeHandleBottomRight", u"resizeHandleBottomLeft"};
    return std::ranges::all_of(ids, [this](const char16_t *id) {
        return !item(QString::fromUtf16(id))->property("img").value<QImage>().isNull();
    });
}

void ClockWindow::place(QRect geometry)
{
    m_window->setGeometry(geometry);
    // The items follow with the resize event.
    const QSizeF size(geometry.size());
    if (!QTest::qWaitFor([&] { return m_window->contentItem()->size() == size; }))
        qFatal("the window does not take its size");
    documents.manager.calls.clear();
}

void ClockWindow::press(QPoint point, Qt::MouseButton button)
{
    m_button = button;
    QTest::mousePress(m_window, button, {}, m_window->mapFromGlobal(point));
}

void ClockWindow::pressInside(QPoint local, QPoint point)
{
    m_button = Qt::LeftButton;
    qt_handleMouseEvent(m_window, local, point, m_button, m_button, QEvent::MouseButtonPress, {},
        ++QTest::lastMouseTimestamp);
}

void ClockWindow::move(QPoint point, Qt::KeyboardModifiers modifiers)
{
    moveInside(m_window->mapFromGlobal(point), point, modifiers);
}

void ClockWindow::moveInside(QPoint local, QPoint point, Qt::KeyboardModifiers modifiers)
{
    // Not through QTest: a pointer that a button holds may leave the window.
    qt_handleMouseEvent(m_window, local, point, m_button, Qt::NoButton, QEvent::MouseMove,
        modifiers, ++QTest::lastMouseTimestamp);
    QCoreApplication::processEvents(); // the items follow the window's size
}

void ClockWindow::release(QPoint point, Qt::MouseButton button)
{
    QTest::mouseRelease(m_window, button, {}, m_window->mapFromGlobal(point));
}
