// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The filter's meta-object: two of its signals are there for whoever knows them by name.

#include "platform/vsnativeeventfilter.h"

#include <QtCore/qmetaobject.h>
#include <QtTest/qtest.h>

class TestVsNativeEventFilter : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void methodsStandInOrder();
};

void TestVsNativeEventFilter::methodsStandInOrder()
{
    const QByteArrayList expected{
        "signal dpiChanged(WId,uint,uint,QRect,bool*): wid xDpi yDpi rect isMainWindow",
        "cloned signal dpiChanged(WId,uint,uint,QRect): wid xDpi yDpi rect",
        "signal requestToSaveConfig(): ",
        "signal moveAndReturnMainWindow(): ",
        "signal updateMask(): ",
        "signal aboutToMinimize(): ",
        "slot setMainWindowId(WId): wid",
        "slot setMainWindow(QWindow*): window",
        "slot setConfig(VsConfig*): config",
    };
    QByteArrayList actual;
    const QMetaObject &meta = VsNativeEventFilter::staticMetaObject;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        const QMetaMethod method = meta.method(i);
        actual += QByteArray(method.attributes() & QMetaMethod::Cloned ? "cloned " : "")
            + (method.methodType() == QMetaMethod::Signal ? "signal " : "slot ")
            + method.methodSignature() + ": " + method.parameterNames().join(' ');
    }
    QCOMPARE(actual, expected);
}

QTEST_MAIN(TestVsNativeEventFilter)
#include "tst_vsnativeeventfilter.moc"
