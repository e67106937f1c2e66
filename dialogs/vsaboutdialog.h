// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtGui/qcolor.h>
#include <QtWidgets/qdialog.h>

class QBoxLayout;
class QLabel;

/// Name, version and notices of the program, with the way to the licence texts and to the maker.
class VsAboutDialog : public QDialog
{
    Q_OBJECT

public:
    explicit VsAboutDialog(QWidget *parent = nullptr, Qt::WindowFlags flags = {});

    /// The native window above which the dialog stays, set before it is shown; 0 for none. It may
    /// be one that is no widget.
    void setOwnerWindow(WId window) { m_ownerWindow = window; }

    bool eventFilter(QObject *watched, QEvent *event) override;

public Q_SLOTS:
    /// Gives the link the colour of the palette's text.
    void onPaletteTextChanged(QColor color);
    /// Opens one more window with the licence texts.
    void showLicense();

protected:
    bool event(QEvent *event) override;

private:
    QBoxLayout *makeHeader();
    QLabel *makeLink();
    void filterLinkEvent(const QEvent &event);
    void colourLink(const QString &colour);
    void underlineLink(bool on);

    QLabel *m_linkLabel = nullptr; // owned by the layout
    WId m_ownerWindow = 0;
};
