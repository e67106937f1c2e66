// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The context menu and the light and dark style.

#include "manager/vsmanager.h"

#include "config/vsconfig.h"
#include "manager/applicationstyle.h"

#include <QtCore/qscopedvaluerollback.h>
#include <QtGui/qaction.h>
#include <QtGui/qcursor.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qstylehints.h>
#include <QtGui/qwindow.h>
#include <QtWidgets/qapplication.h>
#include <QtWidgets/qmenu.h>

#include <chrono>

using namespace std::chrono_literals;

namespace
{

// Round corners need a window without a frame or a shadow, and see-through.
void setUpMenuWindow(QMenu &menu)
{
    menu.setWindowFlag(Qt::FramelessWindowHint);
    menu.setWindowFlag(Qt::NoDropShadowWindowHint);
    menu.setAttribute(Qt::WA_TranslucentBackground);
    menu.setContentsMargins(0, 0, 0, 0);
}

// Those of the tray icon as well, where they are widgets.
void setUpAllMenuWindows()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *const widget : widgets) {
        auto *const menu = qobject_cast<QMenu *>(widget);
        if (menu && !menu->isVisible() && !menu->testAttribute(Qt::WA_TranslucentBackground))
            setUpMenuWindow(*menu);
    }
}

} // namespace

void VsManager::buildMenu()
{
    m_menu = std::make_unique<QMenu>();
    setUpMenuWindow(*m_menu);
    m_menu->setMinimumWidth(120);
    m_paletteTextColor = m_menu->palette().color(QPalette::Text);

    addSetting(tr("Resize"), m_config->resizeEnabled(), &VsConfig::setResizeEnabled,
        &VsConfig::resizeEnabledChanged);
    addSetting(tr("Fixed"), m_config->fixed(), &VsConfig::setFixed, &VsConfig::fixedChanged);
    addSetting(
        tr("Topmost"), m_config->topmost(), &VsConfig::setTopmost, &VsConfig::topmostChanged);
    addSetting(tr("Show on Taskbar"), m_config->showOnTaskbar(), &VsConfig::setShowOnTaskbar,
        &VsConfig::showOnTaskbarChanged);
    addMinimizeAction();
    m_menu->addSeparator();
    addMoveMenu();
    m_menu->addSeparator();
    m_menu->addAction(tr("Settings..."), this, &VsManager::openSettings);
    m_menu->addAction(tr("About Vesper..."), this, &VsManager::showAboutVesper);
    m_menu->addAction(tr("Quit"), this, &VsManager::quitApp);
    m_menu->installEventFilter(this);
    // It takes the release of a button that went down before it opened, and that would have put the
    // mask back.
    connect(m_menu.get(), &QMenu::aboutToHide, this, &VsManager::updateMask);
}

// An item that shows one setting and changes it.
template <typename Set, typename Changed>
void VsManager::addSetting(const QString &text, bool initial, Set set, Changed changed)
{
    QAction *const action = m_menu->addAction(text);
    action->setCheckable(true);
    action->setChecked(initial);
    connect(action, &QAction::triggered, m_config, set);
    connect(m_config, changed, action, &QAction::setChecked);
}

void VsManager::addMinimizeAction()
{
    QAction *const action = m_menu->addAction(tr("Minimize"), this, &VsManager::minimizeOrRestore);
    action->setVisible(
        m_config->showOnTaskbar()); // without an entry there, nothing would bring it back
    connect(m_config, &VsConfig::showOnTaskbarChanged, action, &QAction::setVisible);
    connect(this, &VsManager::mainWindowStateChanged, action, [action](Qt::WindowStates states) {
        action->setText(states.testFlag(Qt::WindowMinimized) ? tr("Restore") : tr("Minimize"));
    });
}

void VsManager::addMoveMenu()
{
    QMenu *const menu = m_menu->addMenu(tr("Move To"));
    setUpMenuWindow(*menu);
    // The right before the left: meant so.
    menu->addAction(tr("Top-Right"), this, &VsManager::moveToTopRight);
    menu->addAction(tr("Top-Left"), this, &VsManager::moveToTopLeft);
    menu->addAction(tr("Bottom-Right"), this, &VsManager::moveToBottomRight);
    menu->addAction(tr("Bottom-Left"), this, &VsManager::moveToBottomLeft);
    menu->addSeparator();
    menu->addAction(tr("Center at This Monitor"), this, &VsManager::moveToCenterAtCurrentScreen);
}

void VsManager::minimizeOrRestore()
{
    if (!m_mainWindow)
        return;
    if (m_mainWindow->windowState() == Qt::WindowMinimized) {
        m_mainWindow->setWindowState(Qt::WindowNoState);
    } else {
        onAboutToMinimize(); // no minimise message of the system passes on this way
        m_mainWindow->setWindowState(Qt::WindowMinimized);
    }
}

void VsManager::showContextMenu(QPoint pos)
{
    if (m_menu)
        m_menu->popup(pos);
}

void VsManager::hideContextMenu()
{
    if (m_menu)
        m_menu->hide();
}

void VsManager::openMenu() { showContextMenu(QCursor::pos()); }

// In the middle of the clock, since the mouse may be anywhere, and ready for the arrow keys.
void VsManager::openMenuByKeyboard()
{
    showContextMenu(m_mainWindow->geometry().center());
    m_menu->setActiveAction(m_menu->actions().constFirst());
}

void VsManager::filterMenuEvent(QEvent *event)
{
    if (event->type() != QEvent::PaletteChange)
        return;
    const QColor color = m_menu->palette().color(QPalette::Text);
    if (color == m_paletteTextColor)
        return;
    m_paletteTextColor = color;
    Q_EMIT paletteTextColorChanged(color);
}

void VsManager::connectStyle()
{
    connect(this, &VsManager::paletteTextColorChanged, this, &VsManager::onPaletteTextColorChanged);
    onPaletteTextColorChanged(QGuiApplication::palette().color(QPalette::Text));

    const QStyleHints *const hints = QGuiApplication::styleHints();
    if (hints->colorScheme() == Qt::ColorScheme::Dark)
        changeDarkMode(); // once more
    connect(hints, &QStyleHints::colorSchemeChanged, this, [this](Qt::ColorScheme scheme) {
        if (scheme == Qt::ColorScheme::Dark)
            changeDarkMode();
        else
            changeLightMode();
    });
}

void VsManager::changeDarkMode() { changeStyle(ApplicationStyle::Dark); }

void VsManager::changeLightMode() { changeStyle(ApplicationStyle::Light); }

// A second switch within these 200 ms mixes its steps with those of the first, and the last step of
// all wins: meant so.
void VsManager::changeStyle(ApplicationStyle::Mode mode)
{
    if (m_inStyleStep) {
        // A step tells every widget of new colours, which may ask for another switch. A sheet that
        // is cleared inside its own clearing or setting is deleted under its user's feet.
        QMetaObject::invokeMethod(this, [this, mode] { changeStyle(mode); }, Qt::QueuedConnection);
        return;
    }
    styleStep([] { qApp->setStyleSheet(QString()); });
    QTimer::singleShot(100ms, this, [this, mode] {
        styleStep([mode] { QApplication::setPalette(ApplicationStyle::palette(mode)); });
        QTimer::singleShot(100ms, this, [this, mode] {
            styleStep([mode] { qApp->setStyleSheet(ApplicationStyle::styleSheet(mode)); });
            setUpAllMenuWindows();
        });
    });
}

template <typename Step> void VsManager::styleStep(Step step)
{
    const QScopedValueRollback inside(m_inStyleStep, true);
    step();
}

void VsManager::onPaletteTextColorChanged(QColor color)
{
    changeStyle(ApplicationStyle::modeOfText(color));
}
