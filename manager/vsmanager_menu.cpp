// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The context menu and its light and dark style.

#include "manager/vsmanager.h"

void VsManager::showContextMenu([[maybe_unused]] QPoint pos) { }

void VsManager::hideContextMenu() { }

void VsManager::openMenu() { }

void VsManager::changeDarkMode() { }

void VsManager::changeLightMode() { }

void VsManager::onPaletteTextColorChanged([[maybe_unused]] QColor color) { }
