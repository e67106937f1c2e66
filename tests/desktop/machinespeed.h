// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

/// How many times as long as on the machine that limits of time are meant for this one takes to
/// draw the layers of a clock, from 1 to 8: in one go, or each time after a rest, when a virtual
/// machine may have to fetch its memory back. There they take 10 ms at 960 pixels. Measured at the
/// first call, which takes up to two seconds, and printed.
[[nodiscard]] double machineSlowness();
[[nodiscard]] double machineSlownessAfterRest();
