// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "app/application.h"

#include "app/commandline.h"
#include "app/platformstart.h"
#include "app/vstranslator.h"
#include "config/maker.h"
#include "manager/vsmanager.h"
#include "platform/sessionlock.h"
#include "platform/trayhostwatch.h"
#include "qml/accessibleclock.h"
#include "qml/exactpointer.h"
#include "qml/layerpictures.h"
#include "qml/renderer.h"
#include "qml/vespermodule.h"

#include <QtCore/qurl.h>
#include <QtGui/qicon.h>
#include <QtGui/qwindow.h>
#include <QtQml/qqmlapplicationengine.h>
#include <QtQml/qqmlextensionplugin.h>
#include <QtQuick/qquickwindow.h>
#include <QtWidgets/qapplication.h>

using namespace Qt::StringLiterals;

namespace
{

void setUpGlobals()
{
    QApplication::setStyle(u"Fusion"_s);
    QCoreApplication::setAttribute(Qt::AA_DontUseNativeMenuBar, true);
    QCoreApplication::setOrganizationDomain(Maker::organizationDomain);
    QGuiApplication::setDesktopFileName(u"vesper"_s);
    QGuiApplication::setWindowIcon(QIcon(u":/images/app_icon.svg"_s));
    chooseRenderer();
}

void adoptMainWindow(QQmlApplicationEngine &engine, VsManager &manager, LayerPictures &layers)
{
    const QList<QObject *> roots = engine.rootObjects();
    if (auto *window = roots.isEmpty() ? nullptr : qobject_cast<QQuickWindow *>(roots.first())) {
        layers.setWindow(window);
        manager.setMainWindow(window);
        // After the manager, so that its event filter sees only what this one lets through.
        new ExactPointer(window);
        offerAccessibleClock(*window);
        manager.start();
        manager.placeFirstClock();
        manager.keepOnScreen();
    } else {
        QCoreApplication::exit(-1);
    }
}

} // namespace

int runVesper(int &argc, char **argv)
{
    prepareWindowSystem(argc, argv);
    const QApplication application(argc, argv);
    windowSystemChosen();
    if (const auto exitCode = runMaintenanceSwitches(QCoreApplication::arguments()))
        return *exitCode;
    setUpGlobals();

    VsTranslator translator(qApp);
    translator.loadSystemLanguage();
    const QString languageName = VsTranslator::systemLanguage();

    registerVesperModule();
    LayerPictures layerPictures; // outlives the engine, which calls it
    QQmlApplicationEngine engine;
    layerPictures.addTo(&engine);
    engine.setImportPathList(engine.importPathList() + fallbackImportPaths());
    VsManager manager;
    manager.setEngine(&engine);
    VsManager::setLanguageName(languageName);

    const QUrl url(u"qrc:/qt/qml/vesper/qml/main.qml"_s, QUrl::TolerantMode);
    // Queued, so that the window is handed over by the event loop, after load() has returned.
    QObject::connect(
        &engine, &QQmlApplicationEngine::objectCreated, &application,
        [url, &engine, &manager, &layerPictures](const QObject *object, const QUrl &objectUrl) {
            // Goes on after the exit, finds no root object and asks for it again: meant so.
            if (!object && objectUrl == url)
                QCoreApplication::exit(-1);
            adoptMainWindow(engine, manager, layerPictures);
        },
        Qt::QueuedConnection);
    const TrayHostWatch trayHostWatch; // older than the tray icon, so that it misses nothing
    engine.load(url);
    QObject::connect(&trayHostWatch, &TrayHostWatch::hostAppeared, &engine, [&engine] {
        const QList<QObject *> roots = engine.rootObjects();
        for (QObject *const root : roots)
            QMetaObject::invokeMethod(root, "renewTrayIcon");
    });
    const SessionLock sessionLock;
    QObject::connect(
        &sessionLock, &SessionLock::lockedChanged, &manager, &VsManager::setSessionLocked);
    return QApplication::exec();
}
