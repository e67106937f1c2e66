// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

/// Removes the folder that holds the configuration file with everything in it, and the folder above
/// it when that is left empty. False when something could not be removed.
bool removeConfigurationFolder();

/// Takes back what the program left in the user's profile: its entries in the start-up folder and
/// the configuration folder. Each is tried whatever becomes of the other; false when something
/// stays.
bool uninstallCleanup();
