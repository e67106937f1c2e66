// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "offscreenwarnings.h"
#include "openedaddresses.h"

#include "config/maker.h"
#include "dialogs/vsaboutdialog.h"
#include "dialogs/vslicensedialog.h"

#include <QtCore/qmetaobject.h>
#include <QtGui/qicon.h>
#include <QtGui/qpainter.h>
#include <QtTest/qtest.h>
#include <QtWidgets/qapplication.h>
#include <QtWidgets/qboxlayout.h>
#include <QtWidgets/qlabel.h>
#include <QtWidgets/qpushbutton.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace
{

QString colour(const QString &name) { return u"QLabel{color: %1;}"_s.arg(name); }

} // namespace

class TestVsAboutDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_dialog.reset(); }
    void slotsStandInOrder();
    void showsNameAndVersion();
    void showsThePictures_data();
    void showsThePictures();
    void namesTheLicences();
    void margins();
    void linkTakesItsColourFromTheMouse();
    void linkFollowsThePalette();
    void clickOpensTheSiteOnce();
    void linkOpensByKeyboard();
    void heldKeyOpensNothingMore();
    void tabGoesThroughAll();
    void everyClickOpensALicenceDialog();
    void licenceDialogGoesWhenClosed();

private:
    QLabel &link() const;
    QPushButton &details() const { return *m_dialog->findChild<QPushButton *>(); }

    std::unique_ptr<VsAboutDialog> m_dialog;
};

void TestVsAboutDialog::init()
{
    failOnRealWarning();
    m_dialog = std::make_unique<VsAboutDialog>();
}

QLabel &TestVsAboutDialog::link() const
{
    const QList<QLabel *> labels = m_dialog->findChildren<QLabel *>();
    return **std::find_if(labels.begin(), labels.end(),
        [](const QLabel *label) { return label->text() == Maker::notice; });
}

void TestVsAboutDialog::slotsStandInOrder()
{
    const QMetaObject &type = VsAboutDialog::staticMetaObject;
    QCOMPARE(type.methodCount() - type.methodOffset(), 2);
    QCOMPARE(type.method(type.methodOffset()).methodSignature(), "onPaletteTextChanged(QColor)");
    QCOMPARE(type.method(type.methodOffset() + 1).methodSignature(), "showLicense()");
}

void TestVsAboutDialog::showsNameAndVersion()
{
    QCOMPARE(m_dialog->windowTitle(), u"About Vesper"_s);
    const QList<QLabel *> labels = m_dialog->findChildren<QLabel *>();
    QCOMPARE(labels.at(1)->text(), u"Vesper"_s);
    QCOMPARE(labels.at(1)->font().pointSize(), 38);
    QCOMPARE(labels.at(2)->text(), u"Version 4.0.2.0"_s);
}

void TestVsAboutDialog::showsThePictures_data()
{
    QTest::addColumn<int>("label");
    QTest::addColumn<QString>("file");
    QTest::newRow("icon") << 0 << u":/images/app_icon.svg"_s;
    QTest::newRow("logo, which is not square") << 3 << u":/images/marrowby_logo_gray.svg"_s;
}

// Run twice: once more at a pixel ratio of 2.
void TestVsAboutDialog::showsThePictures()
{
    QFETCH(const int, label);
    QFETCH(const QString, file);
    const QPixmap picture = m_dialog->findChildren<QLabel *>().at(label)->pixmap();
    const QSize side = QSize(48, 48) * qApp->devicePixelRatio();
    QCOMPARE(picture.size(), side);
    QCOMPARE(picture.deviceIndependentSize(), QSizeF(48, 48));

    // The artwork as it is at this size, in the middle of nothing.
    QImage expected(side, QImage::Format_ARGB32_Premultiplied);
    expected.fill(Qt::transparent);
    const QImage artwork = QIcon(file).pixmap(side, 1.0).toImage();
    QCOMPARE(qMax(artwork.width(), artwork.height()), side.width());
    QPainter(&expected).drawImage(
        (side.width() - artwork.width()) / 2, (side.height() - artwork.height()) / 2, artwork);
    expected.setDevicePixelRatio(qApp->devicePixelRatio());
    QCOMPARE(picture.toImage().convertToFormat(expected.format()), expected);
}

void TestVsAboutDialog::namesTheLicences()
{
    const QStringList lines = m_dialog->findChildren<QLabel *>().at(4)->text().split(u'\n');
    QCOMPARE(lines.size(), 5);
    QVERIFY(lines.at(0).contains(u"\"Marrowby Software End-User License\""_s));
    QCOMPARE(lines.at(1), u"This software uses a dynamic link library of \"Qt\"."_s);
    QVERIFY(lines.at(2).startsWith(u"Copyright"_s));
    for (const auto ending : {".dll"_L1, ".dylib"_L1, ".framework"_L1, ".so.<number>"_L1})
        QVERIFY(lines.at(3).contains(ending));
    QCOMPARE(lines.at(4), u"GNU Lesser General Public License version 3 is applied to Qt."_s);
    QVERIFY(m_dialog->findChildren<QLabel *>().at(4)->wordWrap());
}

void TestVsAboutDialog::margins()
{
    QCOMPARE(m_dialog->layout()->contentsMargins(), QMargins(12, 12, 12, 12));
}

void TestVsAboutDialog::linkTakesItsColourFromTheMouse()
{
    m_dialog->show();
    QCOMPARE(link().cursor().shape(), Qt::PointingHandCursor);
    const OpenedAddresses opened;
    QEnterEvent enter({}, {}, {});
    QCoreApplication::sendEvent(&link(), &enter);
    QCOMPARE(link().styleSheet(), colour(u"orange"_s));
    QTest::mousePress(&link(), Qt::LeftButton);
    QCOMPARE(link().styleSheet(), colour(u"darkorange"_s));
    QTest::mouseRelease(&link(), Qt::LeftButton);
    QCOMPARE(link().styleSheet(), colour(u"orange"_s));

    QPalette palette;
    palette.setColor(QPalette::Text, QColor(1, 2, 3)); // as after a change of the system's style
    QApplication::setPalette(palette);
    QEvent leave(QEvent::Leave);
    QCoreApplication::sendEvent(&link(), &leave);
    QCOMPARE(link().styleSheet(), colour(u"#010203"_s));
    QApplication::setPalette({});
}

void TestVsAboutDialog::linkFollowsThePalette()
{
    m_dialog->onPaletteTextChanged(QColor(10, 20, 255));
    QCOMPARE(link().styleSheet(), colour(u"#0a14ff"_s));
}

void TestVsAboutDialog::clickOpensTheSiteOnce()
{
    m_dialog->show();
    const OpenedAddresses opened;
    QTest::mousePress(&link(), Qt::LeftButton);
    QVERIFY(opened.addresses.isEmpty());
    QTest::mouseRelease(&link(), Qt::LeftButton);
    QCOMPARE(opened.addresses, QList<QUrl>{QUrl(Maker::webSite)});
}

void TestVsAboutDialog::linkOpensByKeyboard()
{
    m_dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
    const OpenedAddresses opened;
    link().setFocus();
    QVERIFY(link().font().underline());
    QTest::keyClick(&link(), Qt::Key_Return);
    QCOMPARE(opened.addresses, QList<QUrl>{QUrl(Maker::webSite)});
    QVERIFY(m_dialog->isVisible());
    details().setFocus();
    QVERIFY(!link().font().underline());
}

void TestVsAboutDialog::heldKeyOpensNothingMore()
{
    const OpenedAddresses opened;
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, {}, true);
    QCoreApplication::sendEvent(&link(), &repeated);
    QVERIFY(opened.addresses.isEmpty());
}

void TestVsAboutDialog::tabGoesThroughAll()
{
    m_dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
    details().setFocus();
    QTest::keyClick(m_dialog->windowHandle(), Qt::Key_Tab);
    QVERIFY(link().hasFocus());
    QTest::keyClick(m_dialog->windowHandle(), Qt::Key_Tab);
    QVERIFY(details().hasFocus());
    QTest::keyClick(m_dialog->windowHandle(), Qt::Key_Space);
    QCOMPARE(m_dialog->findChildren<VsLicenseDialog *>().size(), 1);
}

void TestVsAboutDialog::everyClickOpensALicenceDialog()
{
    QVERIFY(!details().isDefault());
    QVERIFY(!details().autoDefault());
    QCOMPARE(details().text(), u"Details..."_s);
    details().click();
    details().click();
    const auto dialogs = m_dialog->findChildren<VsLicenseDialog *>();
    QCOMPARE(dialogs.size(), 2);
    for (const VsLicenseDialog *dialog : dialogs) {
        QVERIFY(dialog->isVisible());
        QVERIFY(!dialog->isModal());
        QVERIFY(!dialog->windowFlags().testFlag(Qt::WindowContextHelpButtonHint));
    }
}

void TestVsAboutDialog::licenceDialogGoesWhenClosed()
{
    details().click();
    m_dialog->findChild<VsLicenseDialog *>()->close();
    QTRY_VERIFY(!m_dialog->findChild<VsLicenseDialog *>());
}

QTEST_MAIN(TestVsAboutDialog)
#include "tst_vsaboutdialog.moc"
