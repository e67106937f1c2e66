// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

/// Limits of the square clock's side in device-independent pixels.
constexpr int minimumClockSide = 72;
constexpr int maximumClockSide = 7680;
