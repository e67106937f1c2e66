// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

/// Chooses how everything is painted: by Qt Quick's software renderer, unless QT_QUICK_BACKEND
/// names another one, and by the painting thread alone, unless QT_NO_GUI_THREADPOOL says something
/// itself. To be called on the GUI thread before anything is painted. Figures: docs/performance.md.
void chooseRenderer();
