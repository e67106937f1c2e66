// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Saving, About and the maker's web site.

#include "manager/vsmanager.h"

#include "config/maker.h"
#include "config/saturate.h"
#include "config/vsconfig.h"
#include "dialogs/vsaboutdialog.h"
#include "manager/windowstyle.h"

#include <QtCore/qurl.h>
#include <QtGui/qdesktopservices.h>

#include <chrono>
#include <cmath>

using namespace std::chrono_literals;

void VsManager::saveConfig()
{
    syncWindowGeometory();
    m_config->save();
}

void VsManager::lazySaveConfig()
{
    if (!m_mainWindow)
        return;
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

void VsManager::showAboutVesper()
{
    auto *const dialog = new VsAboutDialog(
        nullptr, Qt::WindowTitleHint | Qt::CustomizeWindowHint | Qt::WindowCloseButtonHint);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->setModal(true);
    connect(
        this, &VsManager::paletteTextColorChanged, dialog, &VsAboutDialog::onPaletteTextChanged);
    if (m_mainWindow) {
        dialog->setOwnerWindow(m_mainWindow->winId());
        // A dialog that is not topmost would come up behind a clock that is.
        dialog->setWindowFlag(
            Qt::WindowStaysOnTopHint, WindowStyle::isWindowTopmost(m_mainWindow->winId()));
    }
    dialog->show();
}

void VsManager::openDefaultWeb()
{
    QTimer::singleShot(1ms, this, [] { QDesktopServices::openUrl(QUrl(Maker::webSite)); });
}
