// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "platform/screenwatch.h"

#include <QtGui/qguiapplication.h>
#include <QtGui/qscreen.h>

#include <chrono>

using namespace std::chrono_literals;

namespace
{

// One change of the set-up arrives as several: outputs go and come, and each may move the others.
constexpr auto burst = 100ms;

} // namespace

ScreenWatch::ScreenWatch(QObject *parent)
    : QObject(parent)
{
    m_burstTimer.setSingleShot(true);
    m_burstTimer.setInterval(burst);
    connect(&m_burstTimer, &QTimer::timeout, this, &ScreenWatch::changed);
    connect(qGuiApp, &QGuiApplication::screenRemoved, this, &ScreenWatch::noteChange);
    connect(qGuiApp, &QGuiApplication::screenAdded, this, [this](const QScreen *screen) {
        watch(screen);
        noteChange();
    });
    const QList<QScreen *> screens = QGuiApplication::screens();
    for (const QScreen *screen : screens)
        watch(screen);
}

void ScreenWatch::watch(const QScreen *screen)
{
    connect(screen, &QScreen::geometryChanged, this, &ScreenWatch::noteChange);
}

void ScreenWatch::noteChange()
{
    m_burstTimer.start();
    Q_EMIT changing();
}
