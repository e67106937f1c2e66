// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// About the program and its maker: the dialog and the web site.

#include "manager/vsmanager.h"

#include "config/maker.h"
#include "dialogs/vsaboutdialog.h"
#include "manager/windowstyle.h"

#include <QtCore/qurl.h>
#include <QtGui/qdesktopservices.h>

#include <chrono>

using namespace std::chrono_literals;

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
