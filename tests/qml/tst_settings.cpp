// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The settings window: each control with its setting, and the list of tones.

#include "tests/qml/documents.h"

#include <QtGui/qscreen.h>
#include <QtQuick/qquickitem.h>
#include <QtTest/qsignalspy.h>

#include <memory>

using namespace Qt::StringLiterals;

namespace
{

// All that is an item with a property of these names.
QList<QQuickItem *> itemsWith(const QQuickItem *item, const QByteArrayList &properties)
{
    QList<QQuickItem *> found;
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *const child : children) {
        if (std::all_of(properties.begin(), properties.end(), [child](const QByteArray &name) {
                return child->metaObject()->indexOfProperty(name) >= 0;
            }))
            found += child;
        found += itemsWith(child, properties);
    }
    return found;
}

void click(QQuickItem &item)
{
    const QPointF centre(item.width() / 2, item.height() / 2);
    QTest::mouseClick(item.window(), Qt::LeftButton, {}, item.mapToScene(centre).toPoint());
}

} // namespace

class tst_Settings : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();
    void windowIsAsItShould();
    void openingChangesNothing();
    void boxesStandInOrder();
    void boxes_data();
    void boxes();
    void boxFollowsTheSystem();
    void sliders_data();
    void sliders();
    void slidersKeepTheirRange();
    void valueIsShownInPerCent();
    void areasOpenAndClose_data();
    void areasOpenAndClose();
    void scrollButtonsComeAndGo();
    void scrollButtonScrolls();
    void noticeOpensTheSite();
    void closeCloses();
    void listIsPlacedOverTheBox();
    void listIsCutAtTheScreen();
    void toneIsChosenWithTheMouse();
    void toneIsChosenWithTheKeyboard_data();
    void toneIsChosenWithTheKeyboard();
    void escapeChoosesNothing();
    void listClosesWithoutTheFocus();
    void hoveredRowIsCurrent();

private:
    QQuickItem *content() const { return m_window->contentItem(); }
    QList<QQuickItem *> checkBoxes() const { return itemsWith(content(), {"setting", "checked"}); }
    QQuickItem *sliderOf(const QString &setting) const;
    QQuickItem *toneChooser() const { return byId<QQuickItem>(m_window, u"toneChooser"_s); }
    QQuickWindow *openList();
    QString tone() const { return m_documents->config.colorToneName(); }

    std::unique_ptr<Documents> m_documents;
    std::unique_ptr<QObject> m_root;
    QQuickWindow *m_window = nullptr; // the root
};

void tst_Settings::init()
{
    failOnRealWarning();
    m_documents = std::make_unique<Documents>(Documents::AllObjects);
    m_root = m_documents->create(u"Settings.qml"_s);
    m_window = qobject_cast<QQuickWindow *>(m_root.get());
    QVERIFY(m_window);
    m_window->setPosition(100, 40);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
}

void tst_Settings::cleanup()
{
    m_root.reset();
    m_documents.reset();
}

QQuickItem *tst_Settings::sliderOf(const QString &setting) const
{
    const QList<QQuickItem *> rows = itemsWith(content(), {"setting", "slider"});
    for (QQuickItem *const row : rows) {
        if (row->property("setting").toString() == setting)
            return row->property("slider").value<QQuickItem *>();
    }
    return nullptr;
}

void tst_Settings::windowIsAsItShould()
{
    QCOMPARE(m_window->objectName(), u"settingsWindow"_s);
    QCOMPARE(m_window->title(), u"Vesper Settings"_s);
    QCOMPARE(m_window->size(), QSize(424, 728));
    QCOMPARE(m_window->minimumSize(), QSize(400, 380));
    QVERIFY(m_window->flags().testFlags(Qt::Dialog));
    QCOMPARE(m_window->color(), QGuiApplication::palette().color(QPalette::Window));
}

// Not even for a moment: nothing is told, nothing is other afterwards.
void tst_Settings::openingChangesNothing()
{
    cleanup();
    m_documents = std::make_unique<Documents>(Documents::AllObjects); // that no window has seen
    auto &config = m_documents->config;
    config.setDateScaleFactor(3.5); // beyond the end of its slider
    config.setColorToneName(u"LightRed"_s);
    m_documents->theme.changeColorTone(u"Basic"_s, u"LightRed"_s);
    const QMetaObject &type = VsConfig::staticMetaObject;
    QList<QSignalSpy *> spies;
    for (int i = type.propertyOffset(); i < type.propertyCount(); ++i) {
        if (type.property(i).hasNotifySignal())
            spies += new QSignalSpy(&config, type.property(i).notifySignal());
    }
    QSignalSpy toneChange(&m_documents->theme, &VsTheme::textColorChanged);
    m_root = m_documents->create(u"Settings.qml"_s);
    m_window = qobject_cast<QQuickWindow *>(m_root.get());
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
    QTest::qWait(300);
    for (const QSignalSpy *spy : std::as_const(spies))
        QVERIFY2(spy->isEmpty(), spy->signal().constData());
    qDeleteAll(spies);
    QVERIFY(toneChange.isEmpty());
    QCOMPARE(toneChooser()->property("currentIndex").toInt(), 6);
    QCOMPARE(tone(), u"LightRed"_s);
    QCOMPARE(config.digitalClockScaleFactor(), 1.0);
    QCOMPARE(config.dateScaleFactor(), 3.5);
}

void tst_Settings::boxesStandInOrder()
{
    QStringList texts;
    const QList<QQuickItem *> all = checkBoxes();
    for (const QQuickItem *box : all)
        texts += box->property("text").toString();
    QCOMPARE(texts,
        (QStringList{u"Digital Clock"_s, u"12-Hour Format"_s, u"Date Display"_s,
            u"Use Japanese Era"_s, u"Second Hand"_s, u"Topmost with Highest Priority"_s,
            u"Use Default Background Image"_s, u"Ignore Mouse Events"_s,
            u"Automatic Update Check"_s,
            u"Maintain Position even when the Monitor is Disconnected"_s, u"Logo Display"_s,
            u"Automatically Start at Sign-In"_s}));
}

void tst_Settings::boxes_data()
{
    QTest::addColumn<QByteArray>("setting");
    for (const char *setting :
        {"withDigitalClock", "tweleveHours", "displayDate", "useEra", "secondHand",
            "raisePriorityOfTopmost", "useDefaultBackgroundImage", "ignoreMouseEvent",
            "autoCheckUpdate", "keepPositionWhenMonitorDetatched", "displayLogo"})
        QTest::newRow(setting) << QByteArray(setting);
}

void tst_Settings::boxes()
{
    QFETCH(QByteArray, setting);
    auto &config = m_documents->config;
    const QList<QQuickItem *> all = checkBoxes();
    QQuickItem *const box = *std::find_if(all.begin(), all.end(),
        [&](const QQuickItem *item) { return item->property("setting").toByteArray() == setting; });
    const bool before = config.property(setting).toBool();
    QCOMPARE(box->property("checked").toBool(), before);

    box->forceActiveFocus();
    QTest::keyClick(m_window, Qt::Key_Space);
    QCOMPARE(config.property(setting).toBool(), !before);
    QTest::mouseClick(m_window, Qt::LeftButton, {}, box->mapToScene({10, 12}).toPoint());
    QCOMPARE(config.property(setting).toBool(), before);
}

// The test's home cannot be written, so the switch falls back.
void tst_Settings::boxFollowsTheSystem()
{
    QFile obstacle(qEnvironmentVariable("XDG_CONFIG_HOME") + u"/autostart"_s);
    QVERIFY(obstacle.open(QIODevice::WriteOnly));
    QQuickItem *const box = checkBoxes().constLast();
    box->forceActiveFocus();
    QTest::keyClick(m_window, Qt::Key_Space);
    QTRY_VERIFY(!box->property("checked").toBool());
    QVERIFY(!m_documents->config.autoStartAtSignIn());
    QVERIFY(obstacle.remove());
}

void tst_Settings::sliders_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QByteArray>("themeColour");
    for (const char *setting :
        {"opacity", "backgroundOpacity", "backgroundImageOpacity", "faceOpacity", "handsOpacity",
            "digitalClockScaleFactor", "dateScaleFactor", "logoScaleFactor"})
        QTest::newRow(setting) << QString::fromLatin1(setting) << QByteArray();
    QTest::newRow("digital background") << u"digitalClockBackgroundOpacity"_s << "textBackColor"_ba;
    QTest::newRow("digital foreground") << u"digitalClockForegroundOpacity"_s << "textColor"_ba;
    QTest::newRow("date background") << u"dateBackgroundOpacity"_s << "textBackColor"_ba;
    QTest::newRow("date foreground") << u"dateForegroundOpacity"_s << "textColor"_ba;
    QTest::newRow("logo") << u"logoOpacity"_s << "logoColor"_ba;
}

void tst_Settings::sliders()
{
    QFETCH(QString, setting);
    QFETCH(QByteArray, themeColour);
    auto &config = m_documents->config;
    const QByteArray name = setting.toLatin1();
    QQuickItem *const row = sliderOf(setting);
    QVERIFY(row);
    QCOMPARE(row->property("value").toDouble(), config.property(name).toDouble());

    m_window->resize(424, 2000); // everything is in sight
    for (const auto &opener : {u"buttonOpacityExpand"_s, u"buttonScalingExpand"_s})
        QMetaObject::invokeMethod(byId(m_window, opener), "click");
    QTest::qWait(300); // the areas have opened

    QQuickItem *const slider = itemsWith(row, {"from", "to", "visualPosition"}).constFirst();
    const double from = slider->property("from").toDouble();
    const double to = slider->property("to").toDouble();
    click(*slider);
    QCOMPARE_GE(config.property(name).toDouble(), from + 0.48 * (to - from));
    QCOMPARE_LE(config.property(name).toDouble(), from + 0.52 * (to - from));
    const double before = config.property(name).toDouble();
    slider->forceActiveFocus();
    QTest::keyClick(m_window, Qt::Key_Left);
    QCOMPARE(config.property(name).toDouble(), before - 0.1);

    click(*itemsWith(row, {"down", "icon", "checkable"}).constFirst()); // the reset button
    const double expected = themeColour.isEmpty()
        ? 1.0
        : double(m_documents->theme.property(themeColour).value<QColor>().alphaF());
    QCOMPARE(config.property(name).toDouble(), expected);
    QCOMPARE(slider->property("value").toDouble(), expected);
}

void tst_Settings::slidersKeepTheirRange()
{
    QQuickItem *const row = sliderOf(u"dateScaleFactor"_s);
    QQuickItem *const slider = itemsWith(row, {"from", "to", "visualPosition"}).constFirst();
    slider->setProperty("value", 0.0);
    QCOMPARE(m_documents->config.dateScaleFactor(), 0.1);
    slider->setProperty("value", 9.0);
    QCOMPARE(m_documents->config.dateScaleFactor(), 3.0);
    QCOMPARE(row->property("minimumLabel").toString(), u"10%"_s);
    QCOMPARE(row->property("maximumLabel").toString(), u"300%"_s);
}

void tst_Settings::valueIsShownInPerCent()
{
    m_documents->config.setProperty("opacity", 0.456);
    const QList<QQuickItem *> labels = itemsWith(sliderOf(u"opacity"_s), {"elide", "text"});
    QVERIFY(std::any_of(labels.begin(), labels.end(),
        [](const QQuickItem *label) { return label->property("text") == u"46%"_s; }));
}

void tst_Settings::areasOpenAndClose_data()
{
    QTest::addColumn<QString>("button");
    QTest::newRow("opacity") << u"buttonOpacityExpand"_s;
    QTest::newRow("scaling") << u"buttonScalingExpand"_s;
}

void tst_Settings::areasOpenAndClose()
{
    QFETCH(QString, button);
    auto *const opener = byId<QQuickItem>(m_window, button);
    const QList<QQuickItem *> areas = itemsWith(content(), {"expandedHeight", "button"});
    QQuickItem *const area = *std::find_if(areas.begin(), areas.end(), [&](const QQuickItem *item) {
        return item->property("button").value<QQuickItem *>() == opener;
    });
    QCOMPARE(area->height(), 0);
    QMetaObject::invokeMethod(opener, "click");
    QTRY_COMPARE(area->height(), area->property("expandedHeight").toDouble());
    QCOMPARE_GT(area->height(), 100);

    QQuickItem *const collapse = itemsWith(area, {"opener"}).constFirst();
    QMetaObject::invokeMethod(collapse, "click");
    QVERIFY(!opener->property("expanded").toBool());
    QVERIFY(collapse->property("expanded").toBool());
    QTRY_COMPARE(area->height(), 0);
}

void tst_Settings::scrollButtonsComeAndGo()
{
    const QList<QQuickItem *> buttons = itemsWith(content(), {"axis", "flickable"});
    QCOMPARE(buttons.size(), 2);
    for (const QQuickItem *button : buttons)
        QTRY_COMPARE(button->opacity(), 0);
    m_window->resize(424, 400);
    QTRY_COMPARE(buttons.at(1)->opacity(), 1); // there is more below
    QCOMPARE(buttons.at(0)->opacity(), 0);
}

void tst_Settings::scrollButtonScrolls()
{
    m_window->resize(424, 400);
    const QList<QQuickItem *> buttons = itemsWith(content(), {"axis", "flickable"});
    QTRY_COMPARE(buttons.at(1)->opacity(), 1);
    QTRY_COMPARE_LT(buttons.at(1)->mapToScene({0, 0}).y(), 400);
    auto *const view = buttons.at(1)->property("flickable").value<QQuickItem *>();
    QTest::mouseMove(m_window, buttons.at(1)->mapToScene({16, 12}).toPoint());
    QTRY_COMPARE_GE(view->property("contentY").toDouble(), 80); // it goes on by itself
}

void tst_Settings::noticeOpensTheSite()
{
    auto *const notice = byId<QQuickItem>(m_window, u"notice"_s);
    QVERIFY(
        notice->property("text").toString().contains(QString::number(QDate::currentDate().year())));
    click(*notice);
    QCOMPARE(m_documents->manager.takeCalls(u"openDefaultWeb"_s), 1);
    notice->forceActiveFocus();
    QTest::keyClick(m_window, Qt::Key_Return);
    QCOMPARE(m_documents->manager.takeCalls(u"openDefaultWeb"_s), 1);
}

void tst_Settings::closeCloses()
{
    const QList<QQuickItem *> buttons = itemsWith(content(), {"down", "icon", "checkable"});
    click(*buttons.constLast());
    QTRY_VERIFY(!m_window->isVisible());
}

QQuickWindow *tst_Settings::openList()
{
    click(*toneChooser());
    if (!QTest::qWaitFor([this] { return m_documents->manager.popupWindow != nullptr; }))
        return nullptr;
    QTest::qWait(200); // it unfolds for 100 ms
    return m_documents->manager.popupWindow;
}

void tst_Settings::listIsPlacedOverTheBox()
{
    m_documents->config.setColorToneName(u"DarkGreen"_s); // the third row
    QTRY_COMPARE(toneChooser()->property("currentIndex").toInt(), 2);
    m_window->setPosition(100, 300);
    const QQuickWindow *const list = openList();
    QVERIFY(list);
    const QPoint box = toneChooser()->mapToGlobal(QPointF(0, 0)).toPoint();
    QCOMPARE(list->position(), box - QPoint(4, 8 + 2 * 32));
    QCOMPARE(list->width(), int(toneChooser()->width()) + 16);
    QCOMPARE(list->height(), std::min(10 * 32 + 16, list->screen()->size().height() - list->y()));
    QVERIFY(list->flags().testFlag(Qt::FramelessWindowHint));
    QCOMPARE(list->transientParent(), m_window);
}

void tst_Settings::listIsCutAtTheScreen()
{
    m_documents->config.setColorToneName(u"LightGray"_s); // the last row
    QTRY_COMPARE(toneChooser()->property("currentIndex").toInt(), 9);
    m_window->setPosition(100, 0);
    const QQuickWindow *const list = openList();
    QVERIFY(list);
    const int boxY = toneChooser()->mapToGlobal(QPointF(0, 0)).toPoint().y();
    const int cut = 8 + 9 * 32 - boxY;
    QCOMPARE_GT(cut, 0);
    QCOMPARE(list->y(), 0);
    QCOMPARE(list->height(), 10 * 32 + 16 - cut);
    const QQuickItem *view
        = itemsWith(list->contentItem(), {"keyPressed", "contentY"}).constFirst();
    QCOMPARE(view->property("contentY").toInt(), cut);
}

void tst_Settings::toneIsChosenWithTheMouse()
{
    QQuickWindow *const list = openList();
    QVERIFY(list);
    QTest::mouseClick(list, Qt::LeftButton, {}, QPoint(60, 8 + 4 * 32 + 16));
    QCOMPARE(tone(), u"DarkGray"_s);
    QCOMPARE(
        m_documents->theme.property("textColor").value<QColor>(), m_documents->theme.textColor());
    QCOMPARE(m_documents->config.themeName(), u"Basic"_s);
    QTRY_VERIFY(!list->isVisible());
    QCOMPARE(m_documents->manager.popupWindow, nullptr);
}

void tst_Settings::toneIsChosenWithTheKeyboard_data()
{
    QTest::addColumn<Qt::Key>("key");
    QTest::newRow("Space") << Qt::Key_Space;
    QTest::newRow("Return") << Qt::Key_Return;
    QTest::newRow("Enter") << Qt::Key_Enter;
}

void tst_Settings::toneIsChosenWithTheKeyboard()
{
    QFETCH(Qt::Key, key);
    QQuickWindow *const list = openList();
    QVERIFY(list);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyPress(list, key);
    QCOMPARE(tone(), u"DarkBlue"_s);
    QTest::keyRelease(list, key);
    QCOMPARE(tone(), u"DarkGreen"_s);
    QTRY_VERIFY(!list->isVisible());
}

void tst_Settings::escapeChoosesNothing()
{
    QQuickWindow *const list = openList();
    QVERIFY(list);
    QTest::keyClick(list, Qt::Key_Down);
    QTest::keyClick(list, Qt::Key_Escape);
    QTRY_VERIFY(!list->isVisible());
    QCOMPARE(tone(), u"DarkBlue"_s);
}

void tst_Settings::listClosesWithoutTheFocus()
{
    QQuickWindow *const list = openList();
    QVERIFY(list);
    Q_EMIT m_documents->manager.popupWindowLostFocus(m_window); // another window's
    QTest::qWait(200);
    QVERIFY(list->isVisible());
    Q_EMIT m_documents->manager.popupWindowLostFocus(list);
    QTRY_VERIFY(!list->isVisible());
}

void tst_Settings::hoveredRowIsCurrent()
{
    QQuickWindow *const list = openList();
    QVERIFY(list);
    const QQuickItem *view
        = itemsWith(list->contentItem(), {"keyPressed", "contentY"}).constFirst();
    QCOMPARE(view->property("currentIndex").toInt(), 0);
    QTest::mouseMove(list, QPoint(60, 8 + 3 * 32 + 16));
    QTRY_COMPARE(view->property("currentIndex").toInt(), 3);
    QCOMPARE(tone(), u"DarkBlue"_s);
}

int main(int argc, char **argv) { return runQmlTest<tst_Settings>(argc, argv); }

#include "tst_settings.moc"
