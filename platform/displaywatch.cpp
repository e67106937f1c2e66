// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "platform/displaywatch.h"

#include "platform/nearestscreen.h"

#include <QtGui/qguiapplication.h>

#include <chrono>

using namespace std::chrono_literals;

namespace
{

// One change of the set-up arrives as several: outputs go and come, and each may move the others.
constexpr auto burst = 100ms;
// Much longer than a burst, which may arrive late: a window manager's answer to a change must not
// count as the place.
constexpr auto stillness = 1000ms;
// By then a window manager that cares for stray windows has done so; some leave no more than a rim
// of them in sight.
constexpr auto patience = 1000ms;

void setUp(QTimer &timer, std::chrono::milliseconds interval)
{
    timer.setSingleShot(true);
    timer.setInterval(interval);
}

} // namespace

DisplayWatch::DisplayWatch(QObject *parent)
    : QObject(parent)
{
    setUp(m_changeTimer, burst);
    setUp(m_settleTimer, stillness);
    setUp(m_rescueTimer, patience);
    connect(&m_changeTimer, &QTimer::timeout, this, &DisplayWatch::displayChanged);
    connect(&m_settleTimer, &QTimer::timeout, this, &DisplayWatch::noteSettledGeometry);
    connect(&m_rescueTimer, &QTimer::timeout, this, [this] {
        if (m_window)
            moveWindowOntoNearestScreen(m_window);
    });

    const auto changed = [this] { m_changeTimer.start(); };
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, changed);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this, changed](const QScreen *screen) {
        watchScreen(screen);
        changed();
    });
    const QList<QScreen *> screens = QGuiApplication::screens();
    for (const QScreen *screen : screens)
        watchScreen(screen);
}

void DisplayWatch::watchScreen(const QScreen *screen)
{
    connect(screen, &QScreen::geometryChanged, this, [this] { m_changeTimer.start(); });
}

void DisplayWatch::setWindow(QWindow *window)
{
    if (m_window)
        disconnect(m_window, nullptr, this, nullptr);
    m_window = window;
    if (!m_window)
        return;
    noteSettledGeometry();
    const auto moved = [this] { m_settleTimer.start(); };
    connect(m_window, &QWindow::xChanged, this, moved);
    connect(m_window, &QWindow::yChanged, this, moved);
    connect(m_window, &QWindow::widthChanged, this, moved);
    connect(m_window, &QWindow::heightChanged, this, moved);
    connect(m_window, &QWindow::windowStateChanged, this, [this](Qt::WindowState state) {
        if (state == Qt::WindowMinimized)
            Q_EMIT minimized();
    });
}

void DisplayWatch::noteSettledGeometry()
{
    if (m_window && !m_changeTimer.isActive())
        m_settledGeometry = m_window->geometry();
}

void DisplayWatch::setWindowHidden(bool hidden)
{
    if (hidden && !m_hiddenLock) // a second one made in its place would be one too late
        m_hiddenLock.emplace();
    m_window->setVisible(!hidden);
    if (!hidden)
        m_hiddenLock.reset();
}
