// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The settings window: each control with its setting.

#include "tests/qml/settingstest.h"

#include <QtTest/qsignalspy.h>

using namespace Qt::StringLiterals;

namespace
{

struct SliderRow {
    const char *label;
    const char *setting;
    const char *ends;
    const char *reset; // a default of the configuration or a colour of the theme, its alpha
};
constexpr SliderRow sliderRowTable[] = {
    {"Overall Opacity", "opacity", "0%...Complity Transparent|100%...Complity Opaque",
        "defaultOverallOpacity"},
    {"Background", "backgroundOpacity", "0%|100%", "defaultBackgroundOpacity"},
    {"Image", "backgroundImageOpacity", "0%|100%", "defaultBackgroundImageOpacity"},
    {"Face", "faceOpacity", "0%|100%", "defaultFaceOpacity"},
    {"Hands", "handsOpacity", "0%|100%", "defaultHandsOpacity"},
    {"Digital Clock Background", "digitalClockBackgroundOpacity", "0%|100%", "textBackColor"},
    {"Digital Clock Foreground", "digitalClockForegroundOpacity", "0%|100%", "textColor"},
    {"Date Background", "dateBackgroundOpacity", "0%|100%", "textBackColor"},
    {"Date Foreground", "dateForegroundOpacity", "0%|100%", "textColor"},
    {"Logo", "logoOpacity", "0%|100%", "logoColor"},
    {"Digital Clock", "digitalClockScaleFactor", "10%|300%", "defaultDigitalClockScaleFactor"},
    {"Date", "dateScaleFactor", "10%|300%", "defaultDateScaleFactor"},
    {"Logo", "logoScaleFactor", "10%|300%", "defaultLogoScaleFactor"},
};

QQuickItem *resetButtonOf(const QQuickItem *slider)
{
    return itemsWith(slider, {"down", "icon", "checkable"}).constFirst();
}

} // namespace

class tst_Settings : public SettingsTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnRealWarning();
        prepare();
        open();
    }
    void cleanup() { close(); }
    void windowIsAsItShould();
    void openingChangesNothing();
    void boxesStandInOrder();
    void boxes_data();
    void boxes();
    void boxFollowsTheSystem();
    void sliders_data();
    void sliders();
    void slidersStandInOrder();
    void slidersKeepTheirRange();
    void settingBeyondTheRangeComesBack();
    void closedWindowFollowsNoSetting();
    void valueIsShownInPerCent();
    void closedAreaResets();
    void closedAreaIsPassedByTheKeyboard();
    void areasOpenAndClose_data();
    void areasOpenAndClose();
    void scrollButtonsComeAndGo();
    void scrollButtonScrolls();
    void scrollButtonScrollsBack();
    void hiddenScrollButtonDoesNothing();
    void noticeOpensTheSite();
    void closeCloses();

private:
    QList<QQuickItem *> scrollButtonsOfALowWindow();
};

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
    close();
    prepare(); // settings that no window has seen
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
    open();
    QTest::qWait(300);
    for (const QSignalSpy *spy : std::as_const(spies))
        QVERIFY2(spy->isEmpty(), spy->signal().constData());
    qDeleteAll(spies);
    QVERIFY(toneChange.isEmpty());
    QCOMPARE(toneChooser()->property("currentIndex").toInt(), 6);
    QCOMPARE(config.colorToneName(), u"LightRed"_s);
    QCOMPARE(config.digitalClockScaleFactor(), 1.0);
    QCOMPARE(config.dateScaleFactor(), 3.5);
    QCOMPARE(labelTexts(sliderOf(u"dateScaleFactor"_s)).constLast(), u"300%"_s);
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
    QQuickItem *const box = checkBoxOf(QString::fromLatin1(setting));
    const bool before = config.property(setting).toBool();
    QCOMPARE(box->property("checked").toBool(), before);

    box->forceActiveFocus();
    QTest::keyClick(m_window, Qt::Key_Space);
    QCOMPARE(config.property(setting).toBool(), !before);
    QTest::mouseClick(m_window, Qt::LeftButton, {}, box->mapToScene({10, 12}).toPoint());
    QCOMPARE(config.property(setting).toBool(), before);
    config.setProperty(setting, !before); // it still follows
    QCOMPARE(box->property("checked").toBool(), !before);
}

// The test's home cannot be written, so the switch falls back.
void tst_Settings::boxFollowsTheSystem()
{
    QFile obstacle(qEnvironmentVariable("XDG_CONFIG_HOME") + u"/autostart"_s);
    QVERIFY(obstacle.open(QIODevice::WriteOnly));
    QQuickItem *const box = checkBoxOf(u"autoStartAtSignIn"_s);
    QSignalSpy switches(&m_documents->config, &VsConfig::autoStartAtSignInChanged);
    box->forceActiveFocus();
    for (int count = 1; count <= 2; ++count) { // not the first time only
        QTest::keyClick(m_window, Qt::Key_Space);
        QCOMPARE(switches.size(), count);
        QVERIFY(!m_documents->config.autoStartAtSignIn());
        QVERIFY(!box->property("checked").toBool());
    }
    QVERIFY(obstacle.remove());
}

void tst_Settings::sliders_data()
{
    QTest::addColumn<QString>("setting");
    QTest::addColumn<QByteArray>("reset"); // where its value comes from
    for (const SliderRow &row : sliderRowTable)
        QTest::newRow(row.setting) << QString::fromLatin1(row.setting) << QByteArray(row.reset);
}

void tst_Settings::slidersStandInOrder()
{
    QStringList shown;
    QStringList expected;
    const QList<QQuickItem *> all = sliderRows();
    for (const QQuickItem *row : all)
        shown += labelTexts(row).first(3).join(u'|') + u' ' + row->property("setting").toString();
    for (const SliderRow &row : sliderRowTable) {
        expected += QStringLiteral("%1|%2 %3")
                        .arg(QLatin1StringView(row.label), QLatin1StringView(row.ends),
                            QLatin1StringView(row.setting));
    }
    QCOMPARE(shown, expected);
}

void tst_Settings::sliders()
{
    QFETCH(QString, setting);
    QFETCH(QByteArray, reset);
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

    click(*resetButtonOf(row));
    const double expected = reset.startsWith("default")
        ? config.property(reset).toDouble()
        : double(m_documents->theme.property(reset).value<QColor>().alphaF());
    QCOMPARE(config.property(name).toDouble(), expected);
    QCOMPARE(slider->property("value").toDouble(), expected);
}

void tst_Settings::slidersKeepTheirRange()
{
    QQuickItem *const row = sliderOf(u"dateScaleFactor"_s);
    QQuickItem *const slider = itemsWith(row, {"from", "to", "visualPosition"}).constFirst();
    slider->setProperty("value", 0.0);
    QCOMPARE(m_documents->config.dateScaleFactor(), 0.1);
    QCOMPARE(labelTexts(row).constLast(), u"10%"_s);
    slider->setProperty("value", 9.0);
    QCOMPARE(m_documents->config.dateScaleFactor(), 3.0);
    QCOMPARE(labelTexts(row).constLast(), u"300%"_s);
}

void tst_Settings::settingBeyondTheRangeComesBack()
{
    auto &config = m_documents->config;
    for (const auto &[beyond, end] : {std::pair(9.0, 3.0), {3.5, 3.0}, {0.0, 0.1}, {-1.0, 0.1}}) {
        config.setDateScaleFactor(beyond);
        QCOMPARE(config.dateScaleFactor(), end);
        QCOMPARE(sliderOf(u"dateScaleFactor"_s)->property("value").toDouble(), end);
    }
}

void tst_Settings::closedWindowFollowsNoSetting()
{
    m_root.reset();
    m_documents->config.setDateScaleFactor(9.0);
    QCOMPARE(m_documents->config.dateScaleFactor(), 9.0);
}

void tst_Settings::valueIsShownInPerCent()
{
    m_documents->config.setOpacity(0.456);
    QCOMPARE(labelTexts(sliderOf(u"opacity"_s)).constLast(), u"46%"_s);
}

// Nobody sees the button then, but who calls it by its name gets what it does.
void tst_Settings::closedAreaResets()
{
    auto &config = m_documents->config;
    config.setHandsOpacity(0.3);
    QMetaObject::invokeMethod(resetButtonOf(sliderOf(u"handsOpacity"_s)), "click");
    QCOMPARE(config.handsOpacity(), config.defaultHandsOpacity());
}

void tst_Settings::closedAreaIsPassedByTheKeyboard()
{
    byId<QQuickItem>(m_window, u"buttonOpacityExpand"_s)->forceActiveFocus(Qt::TabFocusReason);
    QTest::keyClick(m_window, Qt::Key_Tab);
    QCOMPARE(m_window->activeFocusItem(), byId<QQuickItem>(m_window, u"buttonScalingExpand"_s));
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

// The one at the top and the one at the bottom, as soon as there is more to see than fits.
QList<QQuickItem *> tst_Settings::scrollButtonsOfALowWindow()
{
    m_window->resize(424, 400);
    const QList<QQuickItem *> buttons = itemsWith(content(), {"axis", "flickable"});
    const bool isLow = QTest::qWaitFor(
        [&] { return content()->height() == 400 && buttons.at(1)->opacity() == 1; });
    return isLow ? buttons : QList<QQuickItem *>();
}

void tst_Settings::scrollButtonScrolls()
{
    const QList<QQuickItem *> buttons = scrollButtonsOfALowWindow();
    QCOMPARE(buttons.size(), 2);
    auto *const view = buttons.at(1)->property("flickable").value<QQuickItem *>();
    QTest::mouseMove(m_window, buttons.at(1)->mapToScene({16, 12}).toPoint());
    QTRY_COMPARE_GE(view->property("contentY").toDouble(), 80); // it goes on by itself
}

void tst_Settings::scrollButtonScrollsBack()
{
    const QList<QQuickItem *> buttons = scrollButtonsOfALowWindow();
    QCOMPARE(buttons.size(), 2);
    const QQuickItem *const top = buttons.at(0);
    auto *const view = top->property("flickable").value<QQuickItem *>();
    view->setProperty("contentY", 100);
    QTRY_COMPARE(top->opacity(), 1);
    QTest::mouseMove(m_window, top->mapToScene({16, 12}).toPoint());
    QTest::mouseMove(m_window, {200, 200});
    QTRY_COMPARE(view->property("contentY").toDouble(), 60);
    QTest::qWait(300);
    QCOMPARE(view->property("contentY").toDouble(), 60); // one step without the pointer there
    QTest::mouseMove(m_window, top->mapToScene({16, 12}).toPoint());
    QTRY_COMPARE(view->property("contentY").toDouble(), 0);
}

void tst_Settings::hiddenScrollButtonDoesNothing()
{
    const QList<QQuickItem *> buttons = scrollButtonsOfALowWindow();
    QCOMPARE(buttons.size(), 2);
    const auto takesPointer = [](const QQuickItem *button) {
        return button->property("mouseArea").value<QQuickItem *>()->property("enabled").toBool();
    };
    QVERIFY(!takesPointer(buttons.at(0)));
    QVERIFY(takesPointer(buttons.at(1)));
    auto *const view = buttons.at(0)->property("flickable").value<QQuickItem *>();
    view->setProperty("contentY", view->property("contentHeight").toDouble() - view->height());
    QTRY_COMPARE(buttons.at(1)->opacity(), 0);
    QVERIFY(takesPointer(buttons.at(0)));
    QVERIFY(!takesPointer(buttons.at(1)));
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

int main(int argc, char **argv) { return runQmlTest<tst_Settings>(argc, argv); }

#include "tst_settings.moc"
