// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Construction and wiring, what the documents are given, and the event filter's way to the
// concerns.

#include "manager/vsmanager.h"

#include "config/vsconfig.h"
#include "platform/packageidentity.h"
#include "platform/vsnativeeventfilter.h"
#include "theme/vslistmodel.h"
#include "theme/vstheme.h"

#include <QtCore/qabstracteventdispatcher.h>
#include <QtCore/qthread.h>
#include <QtQml/qqmlapplicationengine.h>
#include <QtQml/qqmlcontext.h>
#include <QtWidgets/qmenu.h>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

VsManager::VsManager(QObject *parent)
    : QObject(parent)
    , m_config(VsConfig::instance())
    , m_amPmText(u"AM"_s)
    , m_isPackaged(hasPackageIdentity())
    , m_theme(new VsTheme(this))
    , m_nativeEventFilter(std::make_unique<VsNativeEventFilter>())
    , m_devicePixelRatio(m_config->devicePixelRatio())
{
    connect(&m_dpiCheckTimer, &QTimer::timeout, this, &VsManager::checkMainWindowDpi);

    m_tickTimer.setTimerType(Qt::PreciseTimer); // a coarse timer may be 50 ms late
    connect(&m_tickTimer, &QTimer::timeout, this, &VsManager::mainLoop);

    buildMenu();
    m_theme->buildThemeTable();
    m_theme->changeColorTone(m_config->themeName(), m_config->colorToneName());
    m_themeModel = new VsListModel(m_theme, VsListModel::ColorTones, this);

    scheduleUpdateChecks();

    m_topmostTimer.setInterval(500ms);
    connect(&m_topmostTimer, &QTimer::timeout, this, &VsManager::setTopmostForce);

    m_lazySaveTimer.setInterval(5s);
    m_lazySaveTimer.setSingleShot(true);
    connect(&m_lazySaveTimer, &QTimer::timeout, this, &VsManager::saveIfMoved);

    connectConfig();
    connectNativeEventFilter();
    connectStyle();
}

VsManager::~VsManager()
{
    m_dpiCheckTimer.stop();
    m_updateCheckTimer.stop();
    m_topmostTimer.stop();
    m_tickTimer.stop();
    endUpdateChecks();
    // Its document reads what the manager owns.
    if (m_settingsWindow) {
        m_settingsWindow->disconnect(this);
        delete m_settingsWindow;
    }
}

void VsManager::connectConfig()
{
    connect(m_config, &VsConfig::topmostChanged, this, &VsManager::setTopmost);
    connect(m_config, &VsConfig::topmostChanged, this, &VsManager::setTopmostTimerEnabled);
    connect(m_config, &VsConfig::raisePriorityOfTopmostChanged, this,
        &VsManager::setTopmostTimerEnabled);
    connect(m_config, &VsConfig::showOnTaskbarChanged, this,
        [this](bool enabled) { setShowOnTaskbar(enabled, true); });
    connect(m_config, &VsConfig::keepPositionWhenMonitorDetatchedChanged, this,
        &VsManager::keepOnScreen);
}

void VsManager::connectNativeEventFilter()
{
    auto *filter = m_nativeEventFilter.get();
    filter->setConfig(m_config);
    connect(filter, &VsNativeEventFilter::dpiChanged, this, &VsManager::onDpiChanged);
    connect(this, &VsManager::mainWindowIdChanged, filter, &VsNativeEventFilter::setMainWindowId);
    connect(this, &VsManager::mainWindowChanged, filter, &VsNativeEventFilter::setMainWindow);
    connect(filter, &VsNativeEventFilter::requestToSaveConfig, this, &VsManager::saveConfig);
    connect(filter, &VsNativeEventFilter::moveAndReturnMainWindow, this,
        &VsManager::moveAndReturnMainWindow);
    connect(filter, &VsNativeEventFilter::updateMask, this, &VsManager::updateMask);
    connect(&filter->placement(), &WindowPlacement::shownAgain, this, [this] {
        if (m_isTaskbarChangeDue)
            completeTaskbarChange();
    });
    connect(filter, &VsNativeEventFilter::aboutToMinimize, this, &VsManager::onAboutToMinimize);
    QAbstractEventDispatcher::instance()->installNativeEventFilter(filter);
}

void VsManager::setEngine(QQmlApplicationEngine *engine)
{
    if (m_engine == engine)
        return;
    m_engine = engine;
    if (!m_engine)
        return;
    QQmlContext *const context = m_engine->rootContext();
    context->setContextProperty(u"manager"_s, this);
    QJSEngine::setObjectOwnership(this, QJSEngine::CppOwnership);
    context->setContextProperty(u"config"_s, m_config);
    connect(m_config, &VsConfig::resizeEnabledChanged, this, &VsManager::setResizeEnabled);
    QJSEngine::setObjectOwnership(m_config, QJSEngine::CppOwnership);
    context->setContextProperty(u"theme"_s, m_theme);
    QJSEngine::setObjectOwnership(m_theme, QJSEngine::CppOwnership);
    context->setContextProperty(u"themeModel"_s, m_themeModel);
    QJSEngine::setObjectOwnership(m_themeModel, QJSEngine::CppOwnership);
}

bool VsManager::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == m_mainWindow)
        filterMainWindowEvent(event);
    else if (watched == m_menu.get())
        filterMenuEvent(event);
    else if (watched == m_settingsWindow)
        filterSettingsWindowEvent(event);
    else if (watched == m_popupWindow)
        filterPopupWindowEvent(event);
    return QObject::eventFilter(watched, event);
}
