// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The windows beside the clock: settings, popup, About; saving, quitting and the update check.

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

void VsManager::saveConfig() { }

void VsManager::lazySaveConfig() { }

void VsManager::quitApp() { }

void VsManager::checkUpdate() { }

void VsManager::onVersionRecieved([[maybe_unused]] VsUpdateChecker::VersionInfo info) { }

void VsManager::showAboutVesper() { }

void VsManager::openDefaultWeb() { }
