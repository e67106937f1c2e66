// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "dialogs/vsdebugwindow.h"

#include <QtWidgets/qboxlayout.h>
#include <QtWidgets/qtextedit.h>

VsDebugWindow::VsDebugWindow()
    : m_textEdit(new QTextEdit)
{
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(m_textEdit);
    resize(640, 480);
    show();
}

void VsDebugWindow::append(const QString &text)
{
    // Never deleted, so that a line written at the very end still finds it.
    static auto *const window = new VsDebugWindow;
    window->m_textEdit->append(text);
}
