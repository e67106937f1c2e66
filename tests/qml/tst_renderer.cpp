// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// What paints the clock.

#include "qml/renderer.h"

#include <QtCore/private/qthreadpool_p.h>
#include <QtGui/private/qguiapplication_p.h>
#include <QtGui/qimage.h>
#include <QtQuick/qquickwindow.h>
#include <QtTest/qtest.h>

using namespace Qt::StringLiterals;

namespace
{

// The pool of Qt's painter, which newer versions of Qt keep in Qt Gui.
template <typename Core, typename Gui> QThreadPool *painterThreadPool()
{
    if constexpr (requires { Gui::qtGuiThreadPool(); })
        return Gui::qtGuiThreadPool();
    else
        return Core::qtGuiInstance();
}

} // namespace

class TestRenderer : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QTest::failOnWarning();
        qunsetenv("QT_QUICK_BACKEND");
        qunsetenv("QT_NO_GUI_THREADPOOL");
        chooseRenderer();
    }
    void isTheSoftwareRenderer();
    void paintsWithoutThreadPool();
    void leavesTheEnvironmentAlone();
};

void TestRenderer::isTheSoftwareRenderer()
{
    QCOMPARE(QQuickWindow::sceneGraphBackend(), u"software"_s);
}

void TestRenderer::paintsWithoutThreadPool()
{
    const QThreadPool *const pool = painterThreadPool<QThreadPoolPrivate, QGuiApplicationPrivate>();
    QVERIFY(!pool);
}

void TestRenderer::leavesTheEnvironmentAlone()
{
    QVERIFY(!qEnvironmentVariableIsSet("QT_NO_GUI_THREADPOOL"));
}

QTEST_MAIN(TestRenderer)
#include "tst_renderer.moc"
