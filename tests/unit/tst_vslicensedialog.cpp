// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "offscreenwarnings.h"

#include "dialogs/vslicensedialog.h"

#include <QtCore/qdir.h>
#include <QtCore/qlocale.h>
#include <QtGui/qclipboard.h>
#include <QtGui/qguiapplication.h>
#include <QtTest/qtest.h>
#include <QtWidgets/qlayout.h>
#include <QtWidgets/qpushbutton.h>
#include <QtWidgets/qtextbrowser.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace
{

QString header(const QString &name)
{
    return u"--- %1 ---------------------------------------------\n\n"_s.arg(name);
}

} // namespace

class TestVsLicenseDialog : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup() { m_dialog.reset(); }
    void cleanupTestCase() { removeFolder(); }
    void looks();
    void slotIsKnown();
    void emptyWithoutTheFolder();
    void readsLater();
    void onlyTheSecond();
    void bothInOrder();
    void languageDecides();
    void textIsPlain();
    void textIsUtf8();
    void unreadableFileIsSkipped();
    void copiesAll();
    void copiesNothing();
    void closes();
    void tabLeavesTheText();

private:
    static QDir folder() { return QDir(QCoreApplication::applicationDirPath() + u"/LICENSE"_s); }
    static void removeFolder() { folder().removeRecursively(); }
    static void write(const QString &name, const QByteArray &text);
    QString text() const;
    QPushButton &button(const QString &text) const;

    std::unique_ptr<VsLicenseDialog> m_dialog;
};

void TestVsLicenseDialog::init()
{
    failOnRealWarning();
    removeFolder();
    m_dialog = std::make_unique<VsLicenseDialog>();
}

void TestVsLicenseDialog::write(const QString &name, const QByteArray &text)
{
    QVERIFY(folder().mkpath(u"."_s));
    QFile file(folder().filePath(name));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(text), text.size());
}

QString TestVsLicenseDialog::text() const
{
    return m_dialog->findChild<QTextBrowser *>()->toPlainText();
}

QPushButton &TestVsLicenseDialog::button(const QString &text) const
{
    const QList<QPushButton *> buttons = m_dialog->findChildren<QPushButton *>();
    return **std::find_if(buttons.begin(), buttons.end(),
        [&text](const QPushButton *candidate) { return candidate->text() == text; });
}

void TestVsLicenseDialog::looks()
{
    QCOMPARE(m_dialog->windowTitle(), u"License"_s);
    QCOMPARE(m_dialog->size(), QSize(480, 580));
    QCOMPARE(m_dialog->layout()->contentsMargins(), QMargins(9, 9, 9, 9));
    QVERIFY(m_dialog->findChild<QTextBrowser *>()->isReadOnly());
    QVERIFY(!button(u"Copy"_s).autoDefault());
}

void TestVsLicenseDialog::slotIsKnown()
{
    const QMetaObject &type = VsLicenseDialog::staticMetaObject;
    QCOMPARE(type.methodCount() - type.methodOffset(), 1);
    QCOMPARE(type.method(type.methodOffset()).methodSignature(), "readLicense()");
}

void TestVsLicenseDialog::emptyWithoutTheFolder()
{
    m_dialog->readLicense();
    QVERIFY(text().isEmpty());
}

void TestVsLicenseDialog::readsLater()
{
    write(u"LICENSE-LGPL-3"_s, "text");
    QVERIFY(text().isEmpty());
    QTRY_VERIFY(!text().isEmpty());
}

void TestVsLicenseDialog::onlyTheSecond()
{
    write(u"LICENSE-LGPL-3"_s, "the licence of a library");
    m_dialog->readLicense();
    QCOMPARE(text().trimmed(), header(u"LICENSE-LGPL-3"_s) + u"the licence of a library"_s);
}

void TestVsLicenseDialog::bothInOrder()
{
    write(u"LICENSE-LGPL-3"_s, "second");
    write(u"License_en.txt"_s, "first");
    m_dialog->readLicense();
    const QString both = text();
    QVERIFY(both.startsWith(header(u"License_en.txt"_s) + u"first\n"_s));
    QVERIFY(both.contains(u"first\n\n\n\n\n"_s + header(u"LICENSE-LGPL-3"_s) + u"second"_s));
    QVERIFY(both.endsWith(u"second\n\n\n\n"_s));
}

// Run twice: once more in a Japanese environment.
void TestVsLicenseDialog::languageDecides()
{
    write(u"License_ja.txt"_s, "ja");
    write(u"License_en.txt"_s, "en");
    m_dialog->readLicense();
    const bool japanese = QLocale::system().language() == QLocale::Japanese;
    QVERIFY(text().startsWith(header(japanese ? u"License_ja.txt"_s : u"License_en.txt"_s)));
    QCOMPARE(text().count(u"--- "_s), 1); // one text alone
}

void TestVsLicenseDialog::textIsPlain()
{
    write(u"LICENSE-LGPL-3"_s, "<b>not bold</b> &amp; so on");
    m_dialog->readLicense();
    QVERIFY(text().contains(u"<b>not bold</b> &amp; so on"_s));
}

void TestVsLicenseDialog::textIsUtf8()
{
    write(u"LICENSE-LGPL-3"_s, "\xe4\xbb\xa4\xe5\x92\x8c");
    m_dialog->readLicense();
    QVERIFY(text().contains(u"令和"_s));
}

void TestVsLicenseDialog::unreadableFileIsSkipped()
{
    QVERIFY(folder().mkpath(u"License_en.txt"_s)); // a folder has no text, whoever asks
    write(u"LICENSE-LGPL-3"_s, "text");
    m_dialog->readLicense();
    QVERIFY(text().startsWith(header(u"LICENSE-LGPL-3"_s)));
}

void TestVsLicenseDialog::copiesAll()
{
    write(u"LICENSE-LGPL-3"_s, "text");
    m_dialog->readLicense();
    button(u"Copy"_s).click();
    QCOMPARE(QGuiApplication::clipboard()->text(), text());
    QCOMPARE(
        m_dialog->findChild<QTextBrowser *>()->textCursor().selectedText().size(), text().size());
}

void TestVsLicenseDialog::copiesNothing()
{
    QGuiApplication::clipboard()->setText(u"before"_s);
    button(u"Copy"_s).click();
    QCOMPARE(QGuiApplication::clipboard()->text(), QString());
}

void TestVsLicenseDialog::closes()
{
    m_dialog->show();
    button(u"Close"_s).click();
    QVERIFY(!m_dialog->isVisible());
}

void TestVsLicenseDialog::tabLeavesTheText()
{
    m_dialog->show();
    QVERIFY(QTest::qWaitForWindowActive(m_dialog.get()));
    m_dialog->findChild<QTextBrowser *>()->setFocus();
    QTest::keyClick(m_dialog->windowHandle(), Qt::Key_Tab);
    QVERIFY(button(u"Copy"_s).hasFocus());
    QTest::keyClick(m_dialog->windowHandle(), Qt::Key_Tab);
    QVERIFY(button(u"Close"_s).hasFocus());
    QTest::keyClick(m_dialog->windowHandle(), Qt::Key_Space);
    QVERIFY(!m_dialog->isVisible());
}

QTEST_MAIN(TestVsLicenseDialog)
#include "tst_vslicensedialog.moc"
