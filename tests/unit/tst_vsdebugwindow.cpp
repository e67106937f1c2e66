// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "offscreenwarnings.h"

#include "dialogs/vsdebugwindow.h"

#include <QtTest/qtest.h>
#include <QtWidgets/qapplication.h>
#include <QtWidgets/qtextedit.h>

using namespace Qt::StringLiterals;

class TestVsDebugWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnRealWarning(); }
    void noLineNoWindow();
    void linesGoIntoOneWindow();
    void closedWindowStaysHidden();
};

void TestVsDebugWindow::noLineNoWindow() { QVERIFY(QApplication::topLevelWidgets().isEmpty()); }

void TestVsDebugWindow::linesGoIntoOneWindow()
{
    VsDebugWindow::append(u"first"_s);
    VsDebugWindow::append(u"second"_s);
    QCOMPARE(QApplication::topLevelWidgets().size(), 1);
    const QWidget *window = QApplication::topLevelWidgets().constFirst();
    QVERIFY(window->isVisible());
    QCOMPARE(window->size(), QSize(640, 480));
    QCOMPARE(window->findChild<QTextEdit *>()->toPlainText(), u"first\nsecond"_s);
}

void TestVsDebugWindow::closedWindowStaysHidden()
{
    QWidget *window = QApplication::topLevelWidgets().constFirst();
    window->close();
    VsDebugWindow::append(u"third"_s);
    QVERIFY(!window->isVisible());
    QCOMPARE(window->findChild<QTextEdit *>()->toPlainText(), u"first\nsecond\nthird"_s);
}

QTEST_MAIN(TestVsDebugWindow)
#include "tst_vsdebugwindow.moc"
