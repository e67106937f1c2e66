// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "dialogs/vslicensedialog.h"

#include "config/languagename.h"

#include <QtCore/qcoreapplication.h>
#include <QtCore/qdir.h>
#include <QtCore/qfile.h>
#include <QtCore/qtimer.h>
#include <QtGui/qclipboard.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qicon.h>
#include <QtGui/qtextcursor.h>
#include <QtGui/qtextdocument.h>
#include <QtWidgets/qboxlayout.h>
#include <QtWidgets/qpushbutton.h>
#include <QtWidgets/qtextbrowser.h>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace
{

// A paragraph of its own at the end, whatever the text looks like; QTextEdit::append() would take
// markup for markup. The view stays where it is.
void appendPlainText(QTextDocument &document, const QString &text)
{
    QTextCursor cursor(&document);
    cursor.movePosition(QTextCursor::End);
    if (!document.isEmpty())
        cursor.insertBlock();
    cursor.insertText(text);
}

} // namespace

VsLicenseDialog::VsLicenseDialog(QWidget *parent, Qt::WindowFlags flags)
    : QDialog(parent, flags)
    , m_textBrowser(new QTextBrowser)
{
    setWindowTitle(tr("License"));
    setWindowIcon(QIcon(u":/images/app_icon.svg"_s));

    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(9, 9, 9, 9);
    layout->addWidget(m_textBrowser);
    layout->addLayout(makeButtons());
    resize(480, 580);
    // Later, so that the window is there before the files are read.
    QTimer::singleShot(10ms, this, &VsLicenseDialog::readLicense);
}

QBoxLayout *VsLicenseDialog::makeButtons()
{
    auto *const copy = new QPushButton(tr("Copy"));
    copy->setDefault(false);
    copy->setAutoDefault(false);
    connect(copy, &QPushButton::clicked, this, &VsLicenseDialog::copyAll);
    auto *const close = new QPushButton(tr("Close"));
    connect(close, &QPushButton::clicked, this, &QDialog::close);

    auto *const buttons = new QHBoxLayout;
    buttons->setContentsMargins(0, 0, 0, 0);
    buttons->addStretch();
    buttons->addWidget(copy);
    buttons->addWidget(close);
    return buttons;
}

void VsLicenseDialog::copyAll()
{
    m_textBrowser->selectAll();
    // What QTextBrowser::copy() does, but with nothing to copy as well.
    QGuiApplication::clipboard()->setText(m_textBrowser->toPlainText());
}

void VsLicenseDialog::readLicense()
{
    if (!m_textBrowser)
        return;
    QDir folder(QCoreApplication::applicationDirPath());
    if (!folder.cd(u"LICENSE"_s))
        return;
    const QString ownLicense
        = isJapaneseLanguage(systemLanguageName()) ? u"License_ja.txt"_s : u"License_en.txt"_s;
    for (const QString &name : {ownLicense, u"LICENSE-LGPL-3"_s}) {
        QFile file(folder.filePath(name));
        if (!file.open(QIODevice::ReadOnly))
            continue;
        const QString header
            = u"--- %1 ---------------------------------------------\n\n"_s.arg(name);
        appendPlainText(*m_textBrowser->document(), header + QString::fromUtf8(file.readAll()));
        appendPlainText(*m_textBrowser->document(), u"\n\n\n"_s);
    }
}
