// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The settings window, its popup, and quitting, which waits for it.

#include "manager/vsmanager.h"

#include "config/vsconfig.h"
#include "platform/freememory.h"

#include <QtCore/qdebug.h>
#include <QtCore/qtimer.h>
#include <QtGui/qevent.h>
#include <QtGui/qicon.h>
#include <QtGui/qscreen.h>
#include <QtQml/qqmlapplicationengine.h>
#include <QtQml/qqmlcomponent.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace
{

// In the middle of the screen under the mouse, and no larger than it.
QRect fittedToScreen(QRect geometry, const QScreen &screen)
{
    const QRect available = screen.availableGeometry();
    geometry.setSize(geometry.size().boundedTo(available.size()));
    geometry.moveCenter(available.center());
    return geometry;
}

// With its frame, which is not known before the window is seen: without this the buttons at the
// lower edge would be cut off where the window fills the screen.
void fitFrameToScreen(QWindow &window)
{
    const QRect inside = window.screen()->availableGeometry().marginsRemoved(window.frameMargins());
    const QRect geometry = window.geometry();
    if (geometry.height() > inside.height() || geometry.width() > inside.width())
        window.setGeometry(geometry & inside);
}

} // namespace

void VsManager::openSettings()
{
    if (!m_settingsWindow)
        createSettingsWindow();
    if (!m_settingsWindow)
        return;
    const QScreen *const screen = QGuiApplication::screenAt(QCursor::pos());
    const QRect geometry = m_settingsWindow->geometry();
    m_settingsWindow->setGeometry(screen ? fittedToScreen(geometry, *screen) : geometry);
    m_settingsFrameFits = false;
    m_settingsWindow->show();
    // One that is open already may lie below others.
    m_settingsWindow->raise();
    m_settingsWindow->requestActivate();
}

// A document that does not load leaves no window and no message: meant so.
void VsManager::createSettingsWindow()
{
    if (!m_engine)
        return;
    QQmlComponent component(m_engine, QUrl(u"qrc:/qt/qml/vesper/qml/Settings.qml"_s));
    if (component.status() != QQmlComponent::Ready)
        return;
    QObject *const object = component.create();
    auto *const window = qobject_cast<QQuickWindow *>(object);
    if (!window) {
        delete object;
        return;
    }
    window->setIcon(QIcon(u":/images/app_icon.svg"_s));
    m_settingsWindow = window;
    window->installEventFilter(this);
    connect(window, &QObject::destroyed, this, &VsManager::onSettingsWindowDestroyed);
    window->setTransientParent(m_mainWindow);
}

void VsManager::onSettingsWindowDestroyed()
{
    saveConfig();
    qDebug("Settings Window Destroyed");
    // Once all that went with it has gone.
    QTimer::singleShot(1s, this, [engine = QPointer(m_engine)] {
        if (engine)
            engine->collectGarbage();
        returnFreeMemory();
    });
}

void VsManager::openSettingsByQml() { openSettings(); }

// Never emits keyPressedOnSettingsWindow: meant so.
void VsManager::filterSettingsWindowEvent(QEvent *event)
{
    if (event->type() == QEvent::Close) {
        m_settingsWindow->deleteLater();
        m_settingsWindow = nullptr;
    } else if (event->type() == QEvent::Expose && !m_settingsFrameFits) {
        m_settingsFrameFits = true;
        fitFrameToScreen(*m_settingsWindow);
    } else if (event->type() == QEvent::MouseButtonPress) {
        const Qt::MouseButton button = static_cast<QMouseEvent *>(event)->button();
        Q_EMIT mouseButtonPressedOnSettingsWindow(static_cast<int>(button));
    }
}

void VsManager::setPopupWindow(QQuickWindow *window)
{
    if (m_popupWindow == window)
        return;
    if (m_popupWindow) {
        m_popupWindow->removeEventFilter(this);
        m_popupWindow->disconnect(this);
    }
    m_popupWindow = window;
    if (window) {
        window->installEventFilter(this);
        connect(window, &QObject::destroyed, this, [this] { setPopupWindow(nullptr); });
    }
    Q_EMIT popupWindowChanged();
}

void VsManager::filterPopupWindowEvent(QEvent *event)
{
    switch (event->type()) {
    case QEvent::KeyPress:
        Q_EMIT keyPressedOnPopupWindow(m_popupWindow, static_cast<QKeyEvent *>(event)->key());
        break;
    case QEvent::KeyRelease:
        Q_EMIT keyReleasedOnPopupWindow(m_popupWindow, static_cast<QKeyEvent *>(event)->key());
        break;
    case QEvent::FocusOut:
        Q_EMIT popupWindowLostFocus(m_popupWindow);
        break;
    default:
        break;
    }
}

void VsManager::quitApp()
{
    saveConfig();
    if (!m_settingsWindow) {
        Q_EMIT quitByQml();
        return;
    }
    connect(m_settingsWindow, &QObject::destroyed, this, &VsManager::quitByQml);
    m_settingsWindow->close();
}
