// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "manager/windowstyle.h"

#include "manager/managedwindow_x11.h"
#include "manager/windowkeeper_x11.h"

#include <QtGui/qguiapplication.h>

#include <algorithm>
#include <utility>

using ManagedWindow::State;

namespace
{

// A menu has no window manager that would keep it above what is raised.
bool hasOpenMenu()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    return std::any_of(windows.begin(), windows.end(),
        [](const QWindow *window) { return window->type() == Qt::Popup && window->isVisible(); });
}

} // namespace

void WindowStyle::setWindowTopmost(WId window, bool on)
{
    ManagedWindow::setStates(window, {State::Above}, on);
    if (on && !hasOpenMenu())
        ManagedWindow::raise(window);
}

bool WindowStyle::isWindowTopmost(WId window)
{
    return ManagedWindow::hasState(window, State::Above);
}

void WindowStyle::setWindowTransparentForMouse(WId window, bool on)
{
    ManagedWindow::letMouseThrough(window, on);
}

void WindowStyle::setWindowToolStyle(WId window, bool tool)
{
    // On every virtual desktop, as Windows shows a tool window.
    ManagedWindow::setStates(window, {State::SkipTaskbar, State::SkipPager, State::Sticky}, tool);
    if (tool)
        ManagedWindow::showOnAllDesktops(window);
    else
        ManagedWindow::showOnCurrentDesktop(window);
}

void WindowStyle::offerForRestore(WId window)
{
    ManagedWindow::setStates(window, {State::SkipTaskbar, State::SkipPager}, false);
}

void WindowStyle::keepFrameless(WId window) { ManagedWindow::setFrameless(window); }

void WindowStyle::showWindow([[maybe_unused]] WId window)
{
    // Nobody hides the native window behind Qt's back here.
}

void WindowStyle::reapplyWhenLost(QWindow *window, QObject *context, std::function<void()> apply)
{
    new WindowKeeper(window, context, std::move(apply));
}

void WindowStyle::touchThreadDpiAwareness()
{
    // X11 has one scale for all threads.
}
