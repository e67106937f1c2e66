// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtWidgets/qdialog.h>

class QBoxLayout;
class QTextBrowser;

/// The licence texts that are installed beside the program, in the folder LICENSE.
class VsLicenseDialog : public QDialog
{
    Q_OBJECT

public:
    explicit VsLicenseDialog(QWidget *parent = nullptr, Qt::WindowFlags flags = {});

public Q_SLOTS:
    /// Appends the texts of the user's language; one that is not there is left out without a word.
    void readLicense();

private:
    QBoxLayout *makeButtons();
    void copyAll();

    QTextBrowser *m_textBrowser = nullptr; // owned by the layout
};
