// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/qml/documents.h"

/// The main document, shown, without the layers of the face: they take time and are not looked at.
/// Points are global.
class ClockWindow
{
public:
    explicit ClockWindow(bool resizeEnabled = false);

    [[nodiscard]] QQuickWindow *window() const { return m_window; }
    [[nodiscard]] QRect geometry() const { return m_window->geometry(); }
    [[nodiscard]] QObject *item(const QString &id) const { return byId(m_root.get(), id); }
    /// True as soon as the pictures of all four grips have been taken.
    [[nodiscard]] bool hasGrips() const;
    /// Places the square clock.
    void place(QRect geometry);

    void press(QPoint point, Qt::MouseButton button = Qt::LeftButton);
    void move(QPoint point, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    /// The same two, told with a place in the window that need not fit.
    void pressInside(QPoint local, QPoint point);
    void moveInside(QPoint local, QPoint point, Qt::KeyboardModifiers modifiers = Qt::NoModifier);
    void release(QPoint point, Qt::MouseButton button = Qt::LeftButton);

    Documents documents{Documents::AllObjects};

private:
    std::unique_ptr<QObject> m_root;
    QQuickWindow *m_window = nullptr; // the root
    Qt::MouseButton m_button = Qt::NoButton; // the one that was pressed last
};
