// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtWidgets/qwidget.h>

class QTextEdit;

/// A plain trace window for diagnosis. There is at most one, made by the first line that is
/// written.
class VsDebugWindow : public QWidget
{
    Q_OBJECT

public:
    /// Adds \a text as a paragraph. The first call shows the window; one that was closed stays
    /// hidden. GUI thread only.
    static void append(const QString &text);

private:
    VsDebugWindow();

    QTextEdit *m_textEdit;
};
