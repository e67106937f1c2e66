// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

/// Gives the system back what the program has freed. To be called when something large has gone for
/// good; takes some milliseconds.
void returnFreeMemory();
