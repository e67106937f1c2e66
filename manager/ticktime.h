// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qtypes.h>

#include <algorithm>

// The instants of the tick, all in milliseconds since the epoch, UTC. Local time would not do: when
// an hour repeats at the end of summer time, a truncated local time names an instant that is an
// hour old, and the clock would stop or spin until the hour is over.

/// The start of the second that \a nowMs lies in.
[[nodiscard]] constexpr qint64 startOfSecond(qint64 nowMs)
{
    const qint64 milliseconds = nowMs % 1000;
    return nowMs - milliseconds - (milliseconds < 0 ? 1000 : 0);
}

/// How long to wait at \a nowMs for the second after the one published, 1 to 1000 ms.
/// Counting from the published second keeps a tick whose own work crosses the boundary from losing
/// a second; the upper end covers a clock that was set back in the middle of a tick.
[[nodiscard]] constexpr int msToNextSecond(qint64 publishedMs, qint64 nowMs)
{
    return static_cast<int>(std::clamp<qint64>(publishedMs + 1000 - nowMs, 1, 1000));
}
