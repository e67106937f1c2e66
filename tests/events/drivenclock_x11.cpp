// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/events/drivenclock.h"

#include "tests/desktop/runningclock.h"

#include <QtCore/qfileinfo.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qpixmap.h>
#include <QtGui/qscreen.h>
#include <QtTest/qtestsystem.h>

using namespace Qt::StringLiterals;

struct DrivenClock::Program {
    ClockHome home;
    std::unique_ptr<RunningClock> clock;

    XWindow window() const { return clock->window(); }
    QList<XWindow> dialogs() const
    {
        QList<XWindow> windows = XWindow::allOfProcess(clock->pid());
        windows.removeOne(window());
        return windows;
    }
};

DrivenClock::DrivenClock(const QJsonObject &settings)
    : m_program(std::make_unique<Program>())
{
    m_program->home.writeSettings(settings);
}

bool DrivenClock::canHangOverTheEdge() { return true; }

bool DrivenClock::losesInput() { return false; }

DrivenClock::~DrivenClock() = default;

bool DrivenClock::start()
{
    m_program->clock = std::make_unique<RunningClock>(m_program->home);
    if (!m_program->clock->waitForWindow())
        return false;
    QTest::qWait(styleMs);
    return true;
}

std::optional<int> DrivenClock::waitForExit() { return m_program->clock->waitForExit(); }

bool DrivenClock::isRunning() const { return m_program->clock->isRunning(); }

QByteArray DrivenClock::output() { return m_program->clock->output(); }

QJsonObject DrivenClock::settings() const { return m_program->home.settings(); }

QDateTime DrivenClock::settingsTime() const
{
    return QFileInfo(m_program->home.settingsFolder() + u"/config.json"_s).lastModified();
}

bool DrivenClock::isSeen() const { return m_program->window().isMapped(); }

QRect DrivenClock::geometry() const { return m_program->window().geometry(); }

bool DrivenClock::isMasked() const { return m_program->window().isShaped(); }

bool DrivenClock::isTopmost() const { return m_program->window().states().contains("ABOVE"); }

bool DrivenClock::isOnTaskbar() const
{
    return !m_program->window().states().contains("SKIP_TASKBAR");
}

bool DrivenClock::hasKeyboard() const { return XWindow::active() == m_program->window(); }

void DrivenClock::restore() const { m_program->window().activate(); }

QList<QRect> DrivenClock::menus() const
{
    QList<QRect> result;
    const QList<XWindow> popups = XWindow::popups();
    for (const XWindow popup : popups)
        result.append(popup.geometry());
    return result;
}

// Not that of the screen, where the compositor may be late.
QImage DrivenClock::menuPicture() const
{
    const QList<XWindow> popups = XWindow::popups();
    return popups.isEmpty()
        ? QImage()
        : QGuiApplication::primaryScreen()->grabWindow(popups.last().id()).toImage();
}

int DrivenClock::dialogs() const { return int(m_program->dialogs().size()); }

bool DrivenClock::dialogHasKeyboard() const
{
    return m_program->dialogs().contains(XWindow::active());
}

void DrivenClock::closeDialogs() const
{
    const QList<XWindow> dialogs = m_program->dialogs();
    for (const XWindow dialog : dialogs)
        dialog.close();
}

void DrivenClock::settleFocus() { } // the window manager gives it to the clock or to nobody
