// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The settings window, its popup, and quitting, which waits for it.

#include "manager/vsmanager.h"

void VsManager::openSettings() { }

void VsManager::openSettingsByQml() { openSettings(); }

void VsManager::setPopupWindow(QQuickWindow *window)
{
    if (m_popupWindow == window)
        return;
    m_popupWindow = window;
    Q_EMIT popupWindowChanged();
}

void VsManager::quitApp()
{
    saveConfig();
    Q_EMIT quitByQml();
}
