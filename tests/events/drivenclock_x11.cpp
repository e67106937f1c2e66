// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/events/drivenclock.h"

#include "tests/desktop/monitors.h"
#include "tests/desktop/runningclock.h"
#include "tests/desktop/statusnotifierhost.h"

#include <QtCore/qdebug.h>
#include <QtCore/qfileinfo.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qpixmap.h>
#include <QtGui/qscreen.h>
#include <QtTest/qtestsystem.h>

using namespace Qt::StringLiterals;

namespace
{

constexpr QRect leftMonitor(0, 0, 1920, 1080);
constexpr QRect rightMonitor(1920, 0, 960, 1080);

} // namespace

struct DrivenClock::Program {
    ClockHome home;
    StatusNotifierHost tray;
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

// KWin brings what has been dragged back onto the screen now and then.
bool DrivenClock::canHangOverTheEdge()
{
    return qEnvironmentVariable("VESPER_WM") != u"kwin_x11"_s;
}

bool DrivenClock::losesInput() { return false; }

bool DrivenClock::mayHaveFrame() { return false; }

bool DrivenClock::hasTwoMonitors() { return true; }

bool DrivenClock::setUpMonitors()
{
    const QRect whole = QGuiApplication::primaryScreen()->virtualGeometry();
    if (whole != (leftMonitor | rightMonitor)) {
        qWarning() << "The screen should be VESPER_SCREEN=2880x1080, but is" << whole;
        return false;
    }
    return Monitors::divide(leftMonitor);
}

bool DrivenClock::isMonitorConnected() { return Monitors::has(u"right"_s); }

bool DrivenClock::connectMonitor(bool on)
{
    return on ? Monitors::addRight(rightMonitor) : Monitors::removeRight();
}

DrivenClock::~DrivenClock() = default;

bool DrivenClock::start()
{
    const qsizetype icons = m_program->tray.items().size();
    m_program->clock = std::make_unique<RunningClock>(m_program->home,
        ClockStart{.environment = {{u"QT_LINUX_ACCESSIBILITY_ALWAYS_ON"_s, u"1"_s}}});
    const auto hasIcon = [&] {
        return m_program->tray.items().size() > icons
            && m_program->tray.menuTexts().contains(u"Quit"_s);
    };
    if (!m_program->clock->waitForWindow() || !QTest::qWaitFor(hasIcon))
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

bool DrivenClock::pressControl(const QString &name) const
{
    return m_program->clock->pressControl(name);
}

bool DrivenClock::chooseInTray(const QString &text) const { return m_program->tray.choose(text); }

void DrivenClock::settleFocus() { } // the window manager gives it to the clock or to nobody
