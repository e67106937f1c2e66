// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The menu of the tray icon, and the icon in the main document.

#include "tests/qml/clockwindow.h"

#include <QtQml/qqmllist.h>
#include <QtQml/qqmlproperty.h>
#include <QtTest/qsignalspy.h>

using namespace Qt::StringLiterals;

namespace
{

QObjectList itemsOf(const QObject &menu)
{
    const QQmlListReference list(const_cast<QObject *>(&menu), "items");
    QObjectList items;
    for (qsizetype i = 0; i < list.count(); ++i)
        items += list.at(i);
    return items;
}

QString textOf(const QObject &item)
{
    if (item.property("separator").toBool())
        return u"-"_s;
    return item.property("text").toString();
}

QStringList textsOf(const QObject &menu)
{
    QStringList texts;
    const QObjectList items = itemsOf(menu);
    for (const QObject *item : items)
        texts += textOf(*item);
    return texts;
}

QObject *itemOf(const QObject &menu, const QString &text)
{
    const QObjectList items = itemsOf(menu);
    for (QObject *const item : items) {
        if (textOf(*item) == text)
            return item;
        if (QObject *const subMenu = item->property("subMenu").value<QObject *>()) {
            if (QObject *const found = itemOf(*subMenu, text))
                return found;
        }
    }
    return nullptr;
}

} // namespace

class tst_ContextMenu : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnRealWarning(); }
    void entriesStandInOrder();
    void settings_data();
    void settings();
    void commands_data();
    void commands();
    void worksWithoutManager();
    void trayIcon();
    void trayIconIsRenewed();
    void quitsAndAsksForNoMenu();
};

void tst_ContextMenu::entriesStandInOrder()
{
    Documents documents(Documents::AllObjects);
    const auto menu = documents.create(u"ContextMenu.qml"_s);
    QCOMPARE(textsOf(*menu),
        (QStringList{u"Resize"_s, u"Fixed"_s, u"Topmost"_s, u"-"_s, u"Move To"_s, u"-"_s,
            u"Settings..."_s, u"About Vesper..."_s, u"-"_s, u"Quit"_s}));
    const auto *moveMenu = itemOf(*menu, u"Move To"_s)->property("subMenu").value<QObject *>();
    QCOMPARE(textsOf(*moveMenu),
        (QStringList{u"Top-Right"_s, u"Top-Left"_s, u"Bottom-Right"_s, u"Bottom-Left"_s, u"-"_s,
            u"Center at This Monitor"_s}));
}

void tst_ContextMenu::settings_data()
{
    QTest::addColumn<QString>("id");
    QTest::addColumn<QByteArray>("setting");
    QTest::newRow("resize") << u"itemResize"_s << "resizeEnabled"_ba;
    QTest::newRow("fixed") << u"itemFixed"_s << "fixed"_ba;
    QTest::newRow("topmost") << u"itemTopmost"_s << "topmost"_ba;
}

void tst_ContextMenu::settings()
{
    QFETCH(QString, id);
    QFETCH(QByteArray, setting);
    Documents documents(Documents::AllObjects);
    const auto menu = documents.create(u"ContextMenu.qml"_s);
    QObject *const item = byId(menu.get(), id);
    const bool before = documents.config.property(setting).toBool();
    QVERIFY(item->property("checkable").toBool());
    QCOMPARE(item->property("checked").toBool(), before);

    QMetaObject::invokeMethod(item, "toggle"); // as the system's menu does
    QCOMPARE(documents.config.property(setting).toBool(), !before);
    documents.config.setProperty(setting, before); // as another menu does
    QCOMPARE(item->property("checked").toBool(), before);
    documents.config.setProperty(setting, !before);
    QCOMPARE(item->property("checked").toBool(), !before);
}

void tst_ContextMenu::commands_data()
{
    QTest::addColumn<QString>("method");
    QTest::newRow("Top-Right") << u"moveToTopRight"_s;
    QTest::newRow("Top-Left") << u"moveToTopLeft"_s;
    QTest::newRow("Bottom-Right") << u"moveToBottomRight"_s;
    QTest::newRow("Bottom-Left") << u"moveToBottomLeft"_s;
    QTest::newRow("Center at This Monitor") << u"moveToCenterAtCurrentScreen"_s;
    QTest::newRow("Settings...") << u"openSettings"_s;
    QTest::newRow("About Vesper...") << u"showAboutVesper"_s;
    QTest::newRow("Quit") << u"quitApp"_s;
}

void tst_ContextMenu::commands()
{
    QFETCH(QString, method);
    Documents documents(Documents::AllObjects);
    const auto menu = documents.create(u"ContextMenu.qml"_s);
    QObject *const item = itemOf(*menu, QString::fromLatin1(QTest::currentDataTag()));
    QMetaObject::invokeMethod(item, "triggered");
    QCOMPARE(documents.manager.calls, QStringList{method});
}

void tst_ContextMenu::worksWithoutManager()
{
    Documents documents(Documents::NoObjects);
    const auto menu = documents.create(u"ContextMenu.qml"_s);
    QVERIFY(menu);
    QVERIFY(!byId(menu.get(), u"itemTopmost"_s)->property("checked").toBool());
    for (const auto &text : {u"Top-Right"_s, u"Center at This Monitor"_s})
        QMetaObject::invokeMethod(itemOf(*menu, text), "triggered"); // and nothing happens
}

void tst_ContextMenu::trayIcon()
{
    const ClockWindow clock;
    const QObject *const icon = clock.item(u"trayIcon"_s);
    QVERIFY(icon->property("visible").toBool());
    QCOMPARE(QQmlProperty(const_cast<QObject *>(icon), u"icon.source"_s).read().toUrl(),
        QUrl(u"qrc:/images/app_icon.svg"_s));
    QVERIFY(!QQmlProperty(const_cast<QObject *>(icon), u"icon.mask"_s).read().toBool());
    QCOMPARE(icon->property("menu").value<QObject *>(), clock.item(u"trayMenu"_s));
    QVERIFY(clock.item(u"contextMenu"_s));
}

void tst_ContextMenu::trayIconIsRenewed()
{
    const ClockWindow clock;
    const QObject *const maker = clock.item(u"lateTrayIcon"_s);
    QVERIFY(!maker->property("object").value<QObject *>());
    QMetaObject::invokeMethod(clock.window(), "renewTrayIcon");
    QVERIFY(!clock.item(u"trayIcon"_s)->property("visible").toBool());
    const auto *const late = maker->property("object").value<QObject *>();
    QVERIFY(late->property("visible").toBool());
    QVERIFY(late->property("menu").value<QObject *>());
}

void tst_ContextMenu::quitsAndAsksForNoMenu()
{
    ClockWindow clock;
    QSignalSpy quits(&clock.documents.engine, &QQmlEngine::quit);
    Q_EMIT clock.documents.manager.reqOpenMenu();
    QVERIFY(quits.isEmpty());
    Q_EMIT clock.documents.manager.quitByQml();
    QCOMPARE(quits.size(), 1);
    QVERIFY(clock.documents.manager.calls.isEmpty());
}

int main(int argc, char **argv) { return runQmlTest<tst_ContextMenu>(argc, argv); }

#include "tst_contextmenu.moc"
