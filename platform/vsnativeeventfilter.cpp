// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "platform/vsnativeeventfilter.h"

VsNativeEventFilter::VsNativeEventFilter(QObject *parent)
    : QObject(parent)
{
}

bool VsNativeEventFilter::nativeEventFilter([[maybe_unused]] const QByteArray &eventType,
    [[maybe_unused]] void *message, [[maybe_unused]] qintptr *result)
{
    return false;
}

void VsNativeEventFilter::setMainWindowId(WId wid) { m_mainWindowId = wid; }

void VsNativeEventFilter::setMainWindow(QWindow *window) { m_mainWindow = window; }

void VsNativeEventFilter::setConfig(VsConfig *config) { m_config = config; }
