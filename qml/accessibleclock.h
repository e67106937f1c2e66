// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

class QObject;

/// Lets screen readers ask the clock's face for its time and date. The text is made up when it is
/// asked for: nothing is announced as the clock ticks. The face is the item with the object name
/// "clockFace" in \a window, and its text that of the window's property "mgr". To be called once.
void offerAccessibleClock(const QObject &window);
