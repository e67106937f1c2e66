// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Saving: at once, and after a while of rest if the clock was moved.

#include "manager/vsmanager.h"

#include "config/saturate.h"
#include "config/vsconfig.h"
#include "platform/vsnativeeventfilter.h"

#include <cmath>

void VsManager::saveConfig()
{
    syncWindowGeometory();
    m_config->save();
}

void VsManager::lazySaveConfig()
{
    if (!m_mainWindow)
        return;
    m_nativeEventFilter->onUserMoved();
    if (!m_lazySavePending) {
        m_lazySavePending = true;
        // The stored geometry, not the window's: what was written last is what counts.
        m_pendingPosition = QPoint(toIntSaturated(std::round(m_config->left())),
            toIntSaturated(std::round(m_config->top())));
        m_pendingSize
            = QSize(toIntSaturated(m_config->width()), toIntSaturated(m_config->height()));
    }
    m_lazySaveTimer.start(); // anew with each call of a burst
}

// Other settings alone are not written here: meant so.
void VsManager::saveIfMoved()
{
    m_lazySavePending = false;
    syncWindowGeometory();
    if (m_config->position() != m_pendingPosition.toPointF()
        || m_config->size() != m_pendingSize.toSizeF())
        m_config->save();
}
