// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/desktop/ownclock.h"

#include "config/maker.h"
#include "config/vsconfig.h"
#include "manager/vsmanager.h"
#include "qml/exactpointer.h"
#include "qml/layerpictures.h"
#include "qml/renderer.h"
#include "qml/vespermodule.h"
#include "tests/desktop/sceneitems.h"

#include <QtCore/qcoreapplication.h>
#include <QtGui/qguiapplication.h>
#include <QtQml/qqmlapplicationengine.h>
#include <QtQuick/qquickwindow.h>
#include <QtTest/qtest.h>

#include <algorithm>
#include <chrono>

using namespace Qt::StringLiterals;

void OwnClock::prepare(const ClockHome &home)
{
    qputenv("HOME", home.path().toUtf8());
    QCoreApplication::setOrganizationDomain(Maker::organizationDomain);
    QCoreApplication::setApplicationName(u"Vesper"_s);
    chooseRenderer();
    registerVesperModule();
}

void OwnClock::setStoredGeometry(QRect geometry)
{
    VsConfig *config = VsConfig::instance();
    config->setLeft(geometry.x());
    config->setTop(geometry.y());
    config->setWidth(geometry.width());
    config->setHeight(geometry.height());
}

OwnClock::OwnClock()
    : m_manager(std::make_unique<VsManager>())
    , m_layerPictures(std::make_unique<LayerPictures>())
    , m_engine(std::make_unique<QQmlApplicationEngine>())
{
    m_layerPictures->addTo(m_engine.get());
    m_engine->setImportPathList(m_engine->importPathList() << QStringLiteral(VESPER_IMPORTS));
    m_manager->setEngine(m_engine.get());
    m_engine->load(u"qrc:/qt/qml/vesper/qml/main.qml"_s);
    const QObjectList roots = m_engine->rootObjects();
    m_window = roots.isEmpty() ? nullptr : qobject_cast<QQuickWindow *>(roots.constFirst());
}

OwnClock::~OwnClock() = default;

bool OwnClock::waitForWindow()
{
    if (!m_window)
        return false;
    m_layerPictures->setWindow(m_window);
    m_manager->setMainWindow(m_window);
    new ExactPointer(m_window);
    m_manager->start();
    return QTest::qWaitForWindowExposed(m_window);
}

bool OwnClock::waitForRest() const
{
    return QTest::qWaitFor(
        [this] { return SceneItems::isSharp(m_window); }, std::chrono::minutes(1));
}

XWindow OwnClock::nativeWindow() const { return XWindow(uint32_t(m_window->winId())); }

bool OwnClock::call(const char *method) const
{
    return QMetaObject::invokeMethod(m_manager.get(), method);
}

QQuickWindow *OwnClock::settingsWindow()
{
    const QWindowList windows = QGuiApplication::topLevelWindows();
    const auto found = std::ranges::find_if(
        windows, [](const QWindow *window) { return window->objectName() == "settingsWindow"_L1; });
    return found == windows.end() ? nullptr : qobject_cast<QQuickWindow *>(*found);
}

bool OwnClock::closeSettings()
{
    return settingsWindow() && settingsWindow()->close()
        && QTest::qWaitFor([] { return !settingsWindow(); });
}
