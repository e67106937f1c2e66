// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "platform/trayhostwatch.h"

// The taskbar is there from the start, and tells every icon when it comes back.
TrayHostWatch::TrayHostWatch(QObject *parent)
    : QObject(parent)
{
}

void TrayHostWatch::lookForHost() { }
