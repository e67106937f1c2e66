// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "dialogs/vsaboutdialog.h"

#include "config/maker.h"
#include "dialogs/vslicensedialog.h"
#include "dialogs/windowowner.h"

#include <QtCore/qtimer.h>
#include <QtCore/qurl.h>
#include <QtGui/qdesktopservices.h>
#include <QtGui/qevent.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qicon.h>
#include <QtGui/qpainter.h>
#include <QtWidgets/qboxlayout.h>
#include <QtWidgets/qlabel.h>
#include <QtWidgets/qpushbutton.h>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace
{

// As large as every other, with the artwork in its middle, whatever the shape of that.
QPixmap picture(const QString &file)
{
    const qreal ratio = qGuiApp->devicePixelRatio();
    const QSize size = QSize(48, 48) * ratio;
    const QPixmap artwork = QIcon(file).pixmap(size, 1.0);
    QRect place = artwork.rect();
    QPixmap picture(size);
    place.moveCenter(picture.rect().center());
    picture.fill(Qt::transparent);
    QPainter(&picture).drawPixmap(place.topLeft(), artwork);
    picture.setDevicePixelRatio(ratio); // only now: all of the above is in pixels
    return picture;
}

QLabel *makePicture(const QString &file)
{
    auto *const label = new QLabel;
    label->setPixmap(picture(file));
    return label;
}

QBoxLayout *makeNameColumn()
{
    auto *const name = new QLabel(u"Vesper"_s);
    QFont font = name->font();
    font.setPointSize(38);
    name->setFont(font);

    auto *const column = new QVBoxLayout;
    column->addWidget(name, 0, Qt::AlignLeft | Qt::AlignTop);
    column->addWidget(new QLabel(VsAboutDialog::tr("Version %1").arg(Maker::programVersion)), 0,
        Qt::AlignTop | Qt::AlignHCenter);
    return column;
}

void openMakerSite() { QDesktopServices::openUrl(QUrl(Maker::webSite)); }

// A key that is held down opens nothing more.
bool opensLink(const QKeyEvent &event)
{
    const bool isEnter = event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
    return isEnter && !event.isAutoRepeat();
}

} // namespace

VsAboutDialog::VsAboutDialog(QWidget *parent, Qt::WindowFlags flags)
    : QDialog(parent, flags)
{
    setWindowTitle(tr("About Vesper"));
    setWindowIcon(QIcon(u":/images/app_icon.svg"_s));

    auto *const statement
        = new QLabel(tr("\"Marrowby Software End-User License\" applies to this software.\n"
                        "This software uses a dynamic link library of \"Qt\".\n"
                        "Copyright (C) The Qt Company Ltd. and other contributors.\n"
                        "Qt's libraries are the files whose names begin with Qt or libQt and end "
                        "in .dll, .dylib, .framework or .so.<number>.\n"
                        "GNU Lesser General Public License version 3 is applied to Qt."));
    statement->setWordWrap(true);

    auto *const details = new QPushButton(tr("Details..."));
    details->setDefault(false);
    details->setAutoDefault(false);
    connect(details, &QPushButton::clicked, this, &VsAboutDialog::showLicense);

    auto *const layout = new QVBoxLayout(this);
    layout->setContentsMargins(12, 12, 12, 12);
    layout->addLayout(makeHeader());
    layout->addSpacing(16);
    layout->addWidget(statement);
    layout->addStretch();
    layout->addWidget(details, 0, Qt::AlignRight);
    m_linkLabel = makeLink();
    layout->addWidget(m_linkLabel);
}

QBoxLayout *VsAboutDialog::makeHeader()
{
    auto *const header = new QHBoxLayout;
    header->addWidget(makePicture(u":/images/app_icon.svg"_s), 0, Qt::AlignTop);
    header->addSpacing(12);
    header->addLayout(makeNameColumn());
    header->addStretch();
    header->addWidget(
        makePicture(u":/images/marrowby_logo_gray.svg"_s), 0, Qt::AlignRight | Qt::AlignTop);
    return header;
}

QLabel *VsAboutDialog::makeLink()
{
    auto *const link = new QLabel(tr("%1").arg(Maker::notice));
    link->setCursor(Qt::PointingHandCursor);
    link->setFocusPolicy(Qt::TabFocus);
    link->installEventFilter(this);
    return link;
}

bool VsAboutDialog::eventFilter(QObject *watched, QEvent *event)
{
    if (m_linkLabel && watched == m_linkLabel)
        filterLinkEvent(*event);
    return QDialog::eventFilter(watched, event);
}

void VsAboutDialog::filterLinkEvent(const QEvent &event)
{
    switch (event.type()) {
    case QEvent::Enter:
        colourLink(u"orange"_s);
        break;
    case QEvent::Leave:
        onPaletteTextChanged(QGuiApplication::palette().color(QPalette::Text));
        break;
    case QEvent::MouseButtonPress:
        colourLink(u"darkorange"_s);
        break;
    case QEvent::MouseButtonRelease:
        colourLink(u"orange"_s);
        openMakerSite();
        break;
    case QEvent::FocusIn:
    case QEvent::FocusOut:
        underlineLink(event.type() == QEvent::FocusIn); // a label shows no focus by itself
        break;
    case QEvent::KeyPress:
        if (opensLink(static_cast<const QKeyEvent &>(event)))
            openMakerSite();
        break;
    default:
        break;
    }
}

void VsAboutDialog::colourLink(const QString &colour)
{
    m_linkLabel->setStyleSheet(u"QLabel{color: %1;}"_s.arg(colour));
}

void VsAboutDialog::underlineLink(bool on)
{
    QFont font = m_linkLabel->font();
    font.setUnderline(on);
    m_linkLabel->setFont(font);
}

void VsAboutDialog::onPaletteTextChanged(QColor color)
{
    if (m_linkLabel)
        colourLink(color.name());
}

void VsAboutDialog::showLicense()
{
    auto *const dialog = new VsLicenseDialog(
        this, Qt::WindowTitleHint | Qt::WindowCloseButtonHint | Qt::CustomizeWindowHint);
    dialog->setAttribute(Qt::WA_DeleteOnClose);
    dialog->show();
}

bool VsAboutDialog::event(QEvent *event)
{
    if (event->type() == QEvent::ShowToParent) {
        // Not before the native window is on the screen.
        QTimer::singleShot(1ms, this, [this] {
            if (m_ownerWindow != 0)
                setWindowOwner(winId(), m_ownerWindow);
        });
    }
    return QDialog::event(event);
}
