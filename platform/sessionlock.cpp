// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "platform/sessionlock.h"

void SessionLock::setLocked(bool locked)
{
    if (m_isLocked == locked)
        return;
    m_isLocked = locked;
    Q_EMIT lockedChanged(locked);
}
