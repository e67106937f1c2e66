// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The manager's meta-object: documents and native code rely on its names, types and order.

#include "confighome.h"
#include "offscreenwarnings.h"

#include "config/vsconfig.h"
#include "manager/vsmanager.h"
#include "theme/vstheme.h"

#include <QtCore/qmetaobject.h>
#include <QtQml/qqmlapplicationengine.h>
#include <QtQml/qqmlcontext.h>
#include <QtTest/qsignalspy.h>
#include <QtTest/qtest.h>

using namespace Qt::StringLiterals;

class TestVsManagerInterface : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnRealWarning(); }
    void methods();
    void properties_data();
    void properties();
    void angleSetters_data();
    void angleSetters();
    void textSetters_data();
    void textSetters();
    void publishesFourObjects();
    void publishesOncePerEngine();
    void resizingFollowsTheSettingOnceThereIsAnEngine();
    void isMouseInnerImage();

private:
    ConfigHome m_home;
};

void TestVsManagerInterface::methods()
{
    static const QByteArrayList expected{
        "0 secondHandAngleChanged(double)",
        "0 minuteHandAngleChanged(double)",
        "0 hourHandAngleChanged(double)",
        "0 timeTextChanged(QString)",
        "0 quitByQml()",
        "0 reqOpenMenu()",
        "0 dateTextChanged(QString)",
        "0 paletteTextColorChanged(QColor)",
        "0 amPmTextChanged(QString)",
        "0 callJavaScriptGC()",
        "0 mainWindowIdChanged(WId)",
        "0 mainWindowChanged(QWindow*)",
        "0 callJavaScriptUpdateMask()",
        "0 callJavaScriptResize(QSize)",
        "0 callJavaScriptAutoResize(double)",
        "0 windowMovingAnimationFinished(QWindow*)",
        "0 popupWindowChanged()",
        "0 keyPressedOnPopupWindow(QQuickWindow*,int)",
        "0 keyReleasedOnPopupWindow(QQuickWindow*,int)",
        "0 popupWindowLostFocus(QQuickWindow*)",
        "0 keyPressedOnSettingsWindow(int)",
        "0 mouseButtonPressedOnSettingsWindow(int)",
        "0 mainWindowStateChanged(Qt::WindowStates)",
        "0 doTest()",
        "1 public start()",
        "1 public showContextMenu(QPoint)",
        "1 public hideContextMenu()",
        "1 public quitApp()",
        "1 public openMenu()",
        "1 public openSettings()",
        "1 public openSettingsByQml()",
        "1 public changeDarkMode()",
        "1 public changeLightMode()",
        "1 public setTopmost(bool)",
        "1 public setShowOnTaskbar(bool,bool)",
        "1 public setShowOnTaskbar(bool)",
        "1 public updateTimeTextImmediately()",
        "1 public updateDateTextImmediately()",
        "1 public updateMask()",
        "1 public clearMask()",
        "1 public checkUpdate()",
        "1 public setIgnoreMouseEvent(bool)",
        "1 public setResizeEnabled(bool)",
        "1 public saveConfig()",
        "1 public lazySaveConfig()",
        "1 public syncWindowGeometory()",
        "1 public moveAndReturnMainWindow()",
        "1 private mainLoop()",
        "1 private onVersionRecieved(VsUpdateChecker::VersionInfo)",
        "1 private onPaletteTextColorChanged(QColor)",
        "1 private setTopmostTimerEnabled(bool)",
        "1 private setTopmostForce()",
        "1 private onDpiChanged(WId,uint,uint,QRect)",
        "1 private checkMainWindowDpi()",
        "1 private moveWindowWithAnimation(QWindow*,QPoint)",
        "1 private onAboutToMinimize()",
        "2 public showAboutVesper()",
        "2 public isMouseInnerImage(QPoint,QImage)",
        "2 public moveToTopLeft()",
        "2 public moveToTopRight()",
        "2 public moveToBottomRight()",
        "2 public moveToBottomLeft()",
        "2 public moveToCenterAtCurrentScreen()",
        "2 public isAvailableScreen(QPoint)",
        "2 public getCurrentScreenGeometory()",
        "2 public openDefaultWeb()",
    };

    QByteArrayList actual;
    const QMetaObject &meta = VsManager::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        switch (method.methodType()) {
        case QMetaMethod::Signal:
            actual << "0 " + method.methodSignature();
            break;
        case QMetaMethod::Slot:
            actual << (method.access() == QMetaMethod::Public ? "1 public " : "1 private ")
                    + method.methodSignature();
            break;
        default:
            actual << "2 public " + method.methodSignature();
        }
    }
    QCOMPARE(actual, expected);
}

void TestVsManagerInterface::properties_data()
{
    QTest::addColumn<int>("index");
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<QByteArray>("notifySignal");
    QTest::addColumn<bool>("final");

    const QByteArray angle = "double";
    const QByteArray text = "QString";
    QTest::newRow("secondHandAngle") << 0 << angle << QByteArray("secondHandAngleChanged") << false;
    QTest::newRow("minuteHandAngle") << 1 << angle << QByteArray("minuteHandAngleChanged") << false;
    QTest::newRow("hourHandAngle") << 2 << angle << QByteArray("hourHandAngleChanged") << false;
    QTest::newRow("timeText") << 3 << text << QByteArray("timeTextChanged") << false;
    QTest::newRow("dateText") << 4 << text << QByteArray("dateTextChanged") << false;
    QTest::newRow("amPmText") << 5 << text << QByteArray("amPmTextChanged") << false;
    QTest::newRow("popupWindow") << 6 << QByteArray("QQuickWindow*")
                                 << QByteArray("popupWindowChanged") << true;
}

void TestVsManagerInterface::properties()
{
    const QMetaObject &meta = VsManager::staticMetaObject;
    QCOMPARE(meta.propertyCount() - meta.propertyOffset(), 7);
    const int row = meta.indexOfProperty(QTest::currentDataTag()) - meta.propertyOffset();
    QFETCH(int, index);
    QCOMPARE(row, index);
    const QMetaProperty property = meta.property(meta.propertyOffset() + row);
    QTEST(QByteArray(property.typeName()), "type");
    QTEST(property.notifySignal().name(), "notifySignal");
    QTEST(property.isFinal(), "final");
    QVERIFY(property.isReadable() && property.isWritable() && property.isStored()
        && property.isScriptable() && property.isDesignable());
}

void TestVsManagerInterface::angleSetters_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::newRow("second") << QByteArray("secondHandAngle");
    QTest::newRow("minute") << QByteArray("minuteHandAngle");
    QTest::newRow("hour") << QByteArray("hourHandAngle");
}

void TestVsManagerInterface::angleSetters()
{
    QFETCH(QByteArray, property);
    VsManager manager;
    const QMetaProperty meta
        = manager.metaObject()->property(manager.metaObject()->indexOfProperty(property));
    QSignalSpy spy(&manager, meta.notifySignal());
    QCOMPARE(manager.property(property), 0.0);
    manager.setProperty(property, 0.0);
    QCOMPARE(spy.size(), 0);
    manager.setProperty(property, 90.0);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.takeFirst().first(), 90.0);
    manager.setProperty(property, 90.0 + 1e-12); // differs, but not by enough
    QCOMPARE(spy.size(), 0);
    QCOMPARE(manager.property(property), 90.0);
}

void TestVsManagerInterface::textSetters_data()
{
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QString>("initial");
    QTest::newRow("time") << QByteArray("timeText") << QString();
    QTest::newRow("date") << QByteArray("dateText") << QString();
    QTest::newRow("marker") << QByteArray("amPmText") << u"AM"_s;
}

void TestVsManagerInterface::textSetters()
{
    QFETCH(QByteArray, property);
    QFETCH(QString, initial);
    VsManager manager;
    const QMetaProperty meta
        = manager.metaObject()->property(manager.metaObject()->indexOfProperty(property));
    QSignalSpy spy(&manager, meta.notifySignal());
    QCOMPARE(manager.property(property), initial);
    manager.setProperty(property, initial);
    QCOMPARE(spy.size(), 0);
    manager.setProperty(property, u"other"_s);
    QCOMPARE(spy.size(), 1);
    QCOMPARE(spy.first().first(), u"other"_s);
}

void TestVsManagerInterface::publishesFourObjects()
{
    QQmlApplicationEngine engine;
    VsManager manager;
    manager.setEngine(&engine);
    const QQmlContext *context = engine.rootContext();
    QCOMPARE(context->contextProperty(u"manager"_s).value<QObject *>(), &manager);
    QCOMPARE(context->contextProperty(u"config"_s).value<QObject *>(), VsConfig::instance());
    QCOMPARE(
        context->contextProperty(u"theme"_s).value<QObject *>(), manager.findChild<VsTheme *>());
    QCOMPARE(context->contextProperty(u"themeModel"_s).value<QObject *>()->property("count"), 10);
    for (const QString &name : {u"manager"_s, u"config"_s, u"theme"_s, u"themeModel"_s}) {
        QCOMPARE(QJSEngine::objectOwnership(context->contextProperty(name).value<QObject *>()),
            QJSEngine::CppOwnership);
    }
}

void TestVsManagerInterface::publishesOncePerEngine()
{
    QQmlApplicationEngine engine;
    VsManager manager;
    manager.setEngine(nullptr);
    manager.setEngine(&engine);
    engine.rootContext()->setContextProperty(u"manager"_s, QVariant());
    manager.setEngine(&engine);
    QVERIFY(!engine.rootContext()->contextProperty(u"manager"_s).isValid());
}

void TestVsManagerInterface::resizingFollowsTheSettingOnceThereIsAnEngine()
{
    auto *config = VsConfig::instance();
    config->setResizeEnabled(false);
    QWindow window;
    window.resize(200, 200);
    QQmlApplicationEngine engine;
    VsManager manager;
    manager.setMainWindow(&window);
    config->setResizeEnabled(true);
    QVERIFY(!window.mask().isEmpty());
    config->setResizeEnabled(false);
    manager.setEngine(&engine);
    config->setResizeEnabled(true);
    QVERIFY(window.mask().isEmpty());
    config->setResizeEnabled(false);
    QVERIFY(!window.mask().isEmpty());
}

void TestVsManagerInterface::isMouseInnerImage()
{
    QImage image(2, 1, QImage::Format_ARGB32);
    image.setPixel(0, 0, qRgba(255, 255, 255, 0));
    image.setPixel(1, 0, qRgba(0, 0, 0, 1));
    VsManager manager;
    QVERIFY(!manager.isMouseInnerImage(QPoint(0, 0), image));
    QVERIFY(manager.isMouseInnerImage(QPoint(1, 0), image));
    QVERIFY(!manager.isMouseInnerImage(QPoint(2, 0), image));
    QVERIFY(!manager.isMouseInnerImage(QPoint(0, -1), image));
    QVERIFY(!manager.isMouseInnerImage(QPoint(0, 0), QImage()));
}

QTEST_MAIN(TestVsManagerInterface)
#include "tst_vsmanager_interface.moc"
