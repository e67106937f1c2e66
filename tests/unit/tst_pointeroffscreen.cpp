// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Where the pointer is on no screen, as between two of them.

#include "confighome.h"
#include "offscreenwarnings.h"

#include "manager/vsmanager.h"

#include <QtGui/qcursor.h>
#include <QtTest/qsignalspy.h>
#include <QtTest/qtest.h>

class TestPointerOffScreen : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void screenIsTheNullRectangle();
    void moveToTheMiddleStaysInPlace();

private:
    ConfigHome m_home;
};

void TestPointerOffScreen::init()
{
    failOnRealWarning();
    QCursor::setPos(-500, -500);
    QVERIFY(!QGuiApplication::screenAt(QCursor::pos()));
}

void TestPointerOffScreen::screenIsTheNullRectangle()
{
    VsManager manager;
    QCOMPARE(manager.getCurrentScreenGeometory(), QRect(0, 0, 0, 0));
}

void TestPointerOffScreen::moveToTheMiddleStaysInPlace()
{
    QWindow window;
    window.setGeometry(30, 40, 200, 200);
    VsManager manager;
    manager.setMainWindow(&window);
    QSignalSpy finished(&manager, &VsManager::windowMovingAnimationFinished);
    manager.moveToCenterAtCurrentScreen();
    QVERIFY(finished.wait()); // it goes all the same
    QCOMPARE(window.geometry(), QRect(30, 40, 200, 200));
}

QTEST_MAIN(TestPointerOffScreen)
#include "tst_pointeroffscreen.moc"
