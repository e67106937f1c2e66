// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The context menu's items and what they do, and the switch between light and dark.

#include "confighome.h"
#include "offscreenwarnings.h"
#include "openedaddresses.h"

#include "config/maker.h"
#include "config/vsconfig.h"
#include "manager/applicationstyle.h"
#include "manager/vsmanager.h"

#include <QtCore/qelapsedtimer.h>
#include <QtGui/qaction.h>
#include <QtGui/qcursor.h>
#include <QtTest/qsignalspy.h>
#include <QtTest/qtest.h>
#include <QtWidgets/qapplication.h>
#include <QtWidgets/qmenu.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace
{

// The program's only menu that lies in no other.
QMenu *contextMenu()
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (QWidget *const widget : widgets) {
        auto *const menu = qobject_cast<QMenu *>(widget);
        if (menu && !menu->parentWidget())
            return menu;
    }
    return nullptr;
}

QStringList textsOf(const QMenu &menu)
{
    QStringList texts;
    const QList<QAction *> actions = menu.actions();
    for (const QAction *action : actions)
        texts += action->isSeparator() ? u"-"_s : action->text();
    return texts;
}

QAction *item(const QString &text)
{
    const QList<QAction *> actions = contextMenu()->actions();
    for (QAction *const action : actions) {
        if (action->text() == text)
            return action;
    }
    return nullptr;
}

QString sheet(ApplicationStyle::Mode mode) { return ApplicationStyle::styleSheet(mode); }

} // namespace

class TestVsManagerMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void itemsStandInOrder();
    void menuWindow();
    void moveMenu();
    void settings_data();
    void settings();
    void topmostOfTheMenuReachesTheWindow();
    void minimizeComesWithTheTaskbar();
    void minimizesAndRestores();
    void minimizeWithoutWindowDoesNothing();
    void minimizeKeepsTheGeometry();
    void opensAndHides();
    void opensAtTheMouse();
    void rightButtonOpensIt();
    void keysOpenIt_data();
    void keysOpenIt();
    void otherKeysDoNot();
    void startsInTheModeOfThePalette();
    void stages_data();
    void stages();
    void colourDecides();
    void sameTextColourIsNoNews();
    void newTextColourIsTold();
    void switchInsideAClearingWaits();
    void opensTheSiteOfTheMaker();

private:
    QWindow &adopt();

    ConfigHome m_home;
    std::unique_ptr<VsManager> m_manager;
    std::unique_ptr<QWindow> m_window;
};

void TestVsManagerMenu::init()
{
    failOnRealWarning();
    auto *const config = VsConfig::instance();
    config->setResizeEnabled(false);
    config->setFixed(false);
    config->setTopmost(true);
    config->setShowOnTaskbar(false);
    config->setIgnoreMouseEvent(false);
    m_manager = std::make_unique<VsManager>();
}

void TestVsManagerMenu::cleanup()
{
    m_manager.reset();
    m_window.reset();
    qApp->setStyleSheet({});
    QApplication::setPalette({});
}

QWindow &TestVsManagerMenu::adopt()
{
    m_window = std::make_unique<QWindow>();
    m_window->setGeometry(200, 150, 200, 200);
    m_manager->setMainWindow(m_window.get());
    return *m_window;
}

void TestVsManagerMenu::itemsStandInOrder()
{
    QCOMPARE(textsOf(*contextMenu()),
        (QStringList{u"Resize"_s, u"Fixed"_s, u"Topmost"_s, u"Show on Taskbar"_s, u"Minimize"_s,
            u"-"_s, u"Move To"_s, u"-"_s, u"Settings..."_s, u"About Vesper..."_s, u"Quit"_s}));
    QStringList checkable;
    const QList<QAction *> actions = contextMenu()->actions();
    for (const QAction *action : actions) {
        if (action->isCheckable())
            checkable += action->text();
    }
    QCOMPARE(checkable, (QStringList{u"Resize"_s, u"Fixed"_s, u"Topmost"_s, u"Show on Taskbar"_s}));
}

void TestVsManagerMenu::menuWindow()
{
    const QMenu *const menus[] = {contextMenu(), item(u"Move To"_s)->menu()};
    for (const QMenu *menu : menus) {
        QVERIFY(menu->windowFlags().testFlags(
            Qt::Popup | Qt::FramelessWindowHint | Qt::NoDropShadowWindowHint));
        QVERIFY(menu->testAttribute(Qt::WA_TranslucentBackground));
        QCOMPARE(menu->contentsMargins(), QMargins());
    }
    QCOMPARE(contextMenu()->minimumWidth(), 120);
}

void TestVsManagerMenu::moveMenu()
{
    QCOMPARE(textsOf(*item(u"Move To"_s)->menu()),
        (QStringList{u"Top-Right"_s, u"Top-Left"_s, u"Bottom-Right"_s, u"Bottom-Left"_s, u"-"_s,
            u"Center at This Monitor"_s}));
}

void TestVsManagerMenu::settings_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("property");
    QTest::newRow("resize") << u"Resize"_s << "resizeEnabled"_ba;
    QTest::newRow("fixed") << u"Fixed"_s << "fixed"_ba;
    QTest::newRow("topmost") << u"Topmost"_s << "topmost"_ba;
    QTest::newRow("taskbar") << u"Show on Taskbar"_s << "showOnTaskbar"_ba;
}

void TestVsManagerMenu::settings()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, property);
    auto *const config = VsConfig::instance();
    QAction *action = item(text);
    const bool before = config->property(property).toBool();
    QCOMPARE(action->isChecked(), before);

    action->trigger();
    QCOMPARE(action->isChecked(), !before);
    QCOMPARE(config->property(property).toBool(), !before);
    config->setProperty(property, before);
    QCOMPARE(action->isChecked(), before);

    config->setProperty(property, !before); // found so at the start
    m_manager = std::make_unique<VsManager>();
    QCOMPARE(item(text)->isChecked(), !before);
}

void TestVsManagerMenu::topmostOfTheMenuReachesTheWindow()
{
    adopt();
    QSignalSpy changes(VsConfig::instance(), &VsConfig::topmostChanged);
    item(u"Topmost"_s)->trigger();
    QCOMPARE(changes.size(), 1);
    QVERIFY(!VsConfig::instance()->topmost());
    QVERIFY(!item(u"Topmost"_s)->isChecked());
}

void TestVsManagerMenu::minimizeComesWithTheTaskbar()
{
    const QAction *minimize = item(u"Minimize"_s);
    QVERIFY(!minimize->isVisible());
    VsConfig::instance()->setShowOnTaskbar(true);
    QVERIFY(minimize->isVisible());
    VsConfig::instance()->setShowOnTaskbar(false);
    QVERIFY(!minimize->isVisible());
}

void TestVsManagerMenu::minimizesAndRestores()
{
    const QWindow &window = adopt();
    QAction *const minimize = item(u"Minimize"_s);
    minimize->trigger();
    QTRY_COMPARE(window.windowState(), Qt::WindowMinimized);
    QTRY_COMPARE(minimize->text(), u"Restore"_s);
    minimize->trigger();
    QCOMPARE(window.windowState(), Qt::WindowNoState);
    QTRY_COMPARE(minimize->text(), u"Minimize"_s);
}

void TestVsManagerMenu::minimizeWithoutWindowDoesNothing()
{
    item(u"Minimize"_s)->trigger();
    QCOMPARE(item(u"Minimize"_s)->text(), u"Minimize"_s);
}

void TestVsManagerMenu::minimizeKeepsTheGeometry()
{
    QWindow &window = adopt();
    const QRect before = window.geometry();
    QAction *const minimizeOrRestore = item(u"Minimize"_s);
    minimizeOrRestore->trigger();
    window.setGeometry(0, 0, 100, 100); // as a window manager may, meanwhile
    minimizeOrRestore->trigger();
    QTRY_COMPARE(window.geometry(), before);
}

void TestVsManagerMenu::opensAndHides()
{
    const QPoint place(120, 90);
    m_manager->showContextMenu(place);
    QVERIFY(contextMenu()->isVisible());
    QCOMPARE(contextMenu()->pos(), place);
    m_manager->hideContextMenu();
    QVERIFY(!contextMenu()->isVisible());
}

void TestVsManagerMenu::opensAtTheMouse()
{
    const QPoint place(140, 60);
    QCursor::setPos(place);
    m_manager->openMenu();
    QCOMPARE(contextMenu()->pos(), place);
}

void TestVsManagerMenu::rightButtonOpensIt()
{
    QWindow &window = adopt();
    QTest::mousePress(&window, Qt::LeftButton, {}, QPoint(100, 100));
    QVERIFY(!contextMenu()->isVisible());
    QTest::mousePress(&window, Qt::RightButton, {}, QPoint(100, 100)); // with the left one held
    QVERIFY(contextMenu()->isVisible());
}

void TestVsManagerMenu::keysOpenIt_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::addColumn<Qt::KeyboardModifier>("modifier");
    QTest::newRow("menu key") << Qt::Key_Menu << Qt::NoModifier;
    QTest::newRow("Shift+F10") << Qt::Key_F10 << Qt::ShiftModifier;
}

void TestVsManagerMenu::keysOpenIt()
{
    QFETCH(Qt::Key, key);
    QFETCH(Qt::KeyboardModifier, modifier);
    QWindow &window = adopt();
    QTest::keyClick(&window, key, modifier);
    QVERIFY(contextMenu()->isVisible());
    QCOMPARE(contextMenu()->activeAction(), item(u"Resize"_s));
}

void TestVsManagerMenu::otherKeysDoNot()
{
    QWindow &window = adopt();
    for (const Qt::Key key : {Qt::Key_M, Qt::Key_F10, Qt::Key_Space})
        QTest::keyClick(&window, key);
    QVERIFY(!contextMenu()->isVisible());
}

void TestVsManagerMenu::startsInTheModeOfThePalette()
{
    QTRY_COMPARE(qApp->styleSheet(), sheet(ApplicationStyle::Light));
    m_manager.reset();
    QPalette palette;
    palette.setColor(QPalette::Text, Qt::white);
    QApplication::setPalette(palette);
    m_manager = std::make_unique<VsManager>();
    QTRY_COMPARE(qApp->styleSheet(), sheet(ApplicationStyle::Dark));
}

void TestVsManagerMenu::stages_data()
{
    QTest::addColumn<bool>("dark");
    QTest::addColumn<QColor>("highlight");
    QTest::newRow("dark") << true << QColor(64, 64, 64);
    QTest::newRow("light") << false << QColor(225, 225, 225);
}

void TestVsManagerMenu::stages()
{
    QFETCH(bool, dark);
    QFETCH(QColor, highlight);
    const auto highlightNow = [] { return QApplication::palette().color(QPalette::Highlight); };
    QTRY_COMPARE(qApp->styleSheet(), sheet(ApplicationStyle::Light)); // that of the start is over
    QApplication::setPalette({});
    QVERIFY(highlightNow() != highlight);

    QElapsedTimer sinceStart;
    sinceStart.start();
    if (dark)
        m_manager->changeDarkMode();
    else
        m_manager->changeLightMode();
    QVERIFY(qApp->styleSheet().isEmpty());
    QVERIFY(highlightNow() != highlight);

    QTRY_COMPARE_WITH_TIMEOUT(highlightNow(), highlight, 1000);
    QCOMPARE_GE(sinceStart.elapsed(), 95); // of a coarse timer
    QVERIFY(qApp->styleSheet().isEmpty());

    QTRY_COMPARE_WITH_TIMEOUT(
        qApp->styleSheet(), sheet(dark ? ApplicationStyle::Dark : ApplicationStyle::Light), 1000);
    QCOMPARE_GE(sinceStart.elapsed(), 190);
}

void TestVsManagerMenu::colourDecides()
{
    Q_EMIT m_manager->paletteTextColorChanged(Qt::white);
    QTRY_COMPARE(qApp->styleSheet(), sheet(ApplicationStyle::Dark));
    Q_EMIT m_manager->paletteTextColorChanged(Qt::red);
    QTRY_COMPARE(qApp->styleSheet(), sheet(ApplicationStyle::Light));
}

void TestVsManagerMenu::sameTextColourIsNoNews()
{
    QSignalSpy news(m_manager.get(), &VsManager::paletteTextColorChanged);
    QPalette palette = contextMenu()->palette();
    palette.setColor(QPalette::Base, Qt::green);
    contextMenu()->setPalette(palette);
    QVERIFY(news.isEmpty());
}

void TestVsManagerMenu::newTextColourIsTold()
{
    QSignalSpy news(m_manager.get(), &VsManager::paletteTextColorChanged);
    QPalette palette = contextMenu()->palette();
    palette.setColor(QPalette::Text, Qt::white);
    contextMenu()->setPalette(palette);
    QCOMPARE(news.size(), 1);
    QCOMPARE(news.first().first().value<QColor>(), QColor(Qt::white));
    QTRY_COMPARE(qApp->styleSheet(), sheet(ApplicationStyle::Dark));
}

// What the palette of a whole desktop does while it changes: a switch asked for by a palette event
// that the clearing of the sheet has sent.
void TestVsManagerMenu::switchInsideAClearingWaits()
{
    QTRY_COMPARE(qApp->styleSheet(), sheet(ApplicationStyle::Light));
    struct Asker : QObject {
        VsManager *manager = nullptr;
        int asked = 0;
        bool eventFilter(QObject *watched, QEvent *event) override
        {
            if (event->type() == QEvent::StyleChange && asked < 1) {
                ++asked;
                manager->changeDarkMode();
            }
            return QObject::eventFilter(watched, event);
        }
    } asker;
    asker.manager = m_manager.get();
    contextMenu()->installEventFilter(&asker);
    m_manager->changeLightMode();
    QCOMPARE(asker.asked, 1);
    QTRY_COMPARE(qApp->styleSheet(), sheet(ApplicationStyle::Dark));
    QCOMPARE(QApplication::palette().color(QPalette::Highlight), QColor(64, 64, 64));
}

void TestVsManagerMenu::opensTheSiteOfTheMaker()
{
    const OpenedAddresses opened;
    m_manager->openDefaultWeb();
    QVERIFY(opened.addresses.isEmpty()); // a millisecond later
    QTRY_COMPARE(opened.addresses, QList<QUrl>{QUrl(Maker::webSite)});
}

QTEST_MAIN(TestVsManagerMenu)
#include "tst_vsmanager_menu.moc"
