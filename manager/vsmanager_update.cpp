// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The update check and its question.

#include "manager/vsmanager.h"

void VsManager::checkUpdate() { }

void VsManager::onVersionRecieved([[maybe_unused]] const VsUpdateChecker::VersionInfo &info) { }
