// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// No frame is painted in vain, and none is missing.

#include "qml/framethrift.h"
#include "qml/renderer.h"

#include <QtGui/qguiapplication.h>
#include <QtQuick/qquickitem.h>
#include <QtQuick/qquickview.h>
#include <QtTest/qsignalspy.h>
#include <QtTest/qtest.h>

class TestFrameThrift : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void everyFrameIsShown();
    void everyChangeIsPainted();

private:
    std::unique_ptr<QQuickView> m_view;
    QQuickItem *m_item = nullptr; // all of the view, red
};

void TestFrameThrift::init()
{
    m_view = std::make_unique<QQuickView>();
    QQmlComponent component(m_view->engine());
    component.setData("import QtQuick\nRectangle { color: \"red\" }", {});
    m_item = qobject_cast<QQuickItem *>(component.create());
    QVERIFY(m_item);
    m_item->setParent(m_view.get());
    m_item->setParentItem(m_view->contentItem());
    const auto fill = [this] { m_item->setSize(m_view->size()); };
    connect(m_view.get(), &QQuickView::widthChanged, m_item, fill);
    new FrameThrift(m_view.get());
    m_view->resize(100, 100);
    m_view->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_view.get()));
}

void TestFrameThrift::everyFrameIsShown()
{
    const QSignalSpy painted(m_view.get(), &QQuickView::beforeRendering);
    const QSignalSpy shown(m_view.get(), &QQuickView::frameSwapped);
    for (int side = 101; side <= 120; ++side) {
        m_view->resize(side, side);
        QTest::qWait(20); // the frame that was asked for would come by now
    }
    QCOMPARE_GE(shown.size(), 20);
    QCOMPARE(painted.size(), shown.size());
}

void TestFrameThrift::everyChangeIsPainted()
{
    for (const char *color : {"green", "blue", "red", "green"}) {
        QSignalSpy shown(m_view.get(), &QQuickView::frameSwapped);
        m_view->resize(m_view->size() + QSize(1, 1));
        QTRY_COMPARE_GE(shown.size(), 1);
        shown.clear();
        m_item->setProperty("color", QColor::fromString(QLatin1StringView(color)));
        QTRY_COMPARE(shown.size(), 1);
        QCOMPARE(
            m_view->grabWindow().pixelColor(50, 50), QColor::fromString(QLatin1StringView(color)));
    }
}

int main(int argc, char **argv)
{
    chooseRenderer();
    const QGuiApplication application(argc, argv);
    TestFrameThrift test;
    return QTest::qExec(&test, argc, argv);
}
#include "tst_framethrift.moc"
