// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

/// Builds the whole program, runs it and returns its exit code: 255 when the main document cannot
/// be loaded, 0 or 1 after a clean-up that "--uninstall" asked for. \a argv is UTF-8.
int runVesper(int &argc, char **argv);
