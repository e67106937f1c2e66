// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include "config/vsconfig.h"
#include "qml/renderer.h"
#include "tests/qml/standinmanager.h"
#include "theme/vslistmodel.h"
#include "theme/vstheme.h"

#include <QtQml/qqmlapplicationengine.h>
#include <QtQml/qqmlcontext.h>
#include <QtQuick/qquickitem.h>
#include <QtQuick/qquickview.h>
#include <QtTest/qtest.h>
#include <QtWidgets/qapplication.h>

#include <memory>

/// An empty home for the life of the process, so that no real settings are read or written. To be
/// made before the application object.
void useTemporaryHome();

/// Lets every warning fail the test but those about what the offscreen platform cannot do and those
/// of Qt's tray icon, which is shown before its picture
/// is loaded and looks for a tray on every platform.
void failOnRealWarning();

/// An engine with the module, and the objects that the documents find in it.
class Documents
{
public:
    enum Context { NoObjects, AllObjects };

    explicit Documents(Context context);

    /// The object \a document of the module's folder qml, or null; owned by the caller.
    std::unique_ptr<QObject> create(const QString &document);
    /// The clock face in \a view, which gets its size from \a side. Null when it does not load.
    QQuickItem *createFace(QQuickView &view, qreal side);

    // Before the engine, which has to go first.
    VsConfig config;
    VsTheme theme;
    VsListModel themeModel{&theme, VsListModel::ColorTones};
    StandInManager manager;
    QQmlApplicationEngine engine;
};

/// The object that has \a id in the document of \a root.
template <typename T = QObject> T *byId(const QObject *root, const QString &id)
{
    return qobject_cast<T *>(qmlContext(root)->objectForName(id));
}

/// What QTEST_MAIN does, in a home of its own and with the renderer that the program uses.
template <typename TestCase> int runQmlTest(int argc, char **argv)
{
    useTemporaryHome();
    chooseRenderer();
    const QApplication application(argc, argv);
    TestCase testCase;
    return QTest::qExec(&testCase, argc, argv);
}
