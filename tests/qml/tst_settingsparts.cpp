// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The small components of the settings window, each by itself.

#include "tests/qml/settingstest.h"

#include <QtQml/qqmlcomponent.h>
#include <QtQml/qqmlproperty.h>

using namespace Qt::StringLiterals;

class tst_SettingsParts : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void propertiesHaveTheirDefaults_data();
    void propertiesHaveTheirDefaults();
    void partsHaveTheirSize();
    void toolTips_data();
    void toolTips();
    void expandButtonTellsWhatAClickWouldDo();
    void expandButtonTurnsItsArrow();
    void expandAreaOpensToItsContent();
    void sliderBringsBackWhatIsBeyondItsEnds();
    void comboBoxHasPlaceholders();
    void scrollButtonKnowsItsEdge_data();
    void scrollButtonKnowsItsEdge();

private:
    QQuickItem *create(const QByteArray &object);

    std::unique_ptr<Documents> m_documents;
    std::unique_ptr<QQuickView> m_view;
    std::unique_ptr<QObject> m_root;
};

namespace
{

constexpr auto required = "palette: Palette {}"; // of those who draw with it
constexpr auto scrollButton = "VsScrollButton { view: Flickable {} palette: Palette {} %1 }";

} // namespace

void tst_SettingsParts::init()
{
    failOnRealWarning();
    m_documents = std::make_unique<Documents>(Documents::AllObjects);
    m_view = std::make_unique<QQuickView>();
}

void tst_SettingsParts::cleanup()
{
    m_root.reset();
    m_view.reset();
    m_documents.reset();
}

// In a window, which is not shown.
QQuickItem *tst_SettingsParts::create(const QByteArray &object)
{
    QQmlComponent component(&m_documents->engine);
    component.setData("import QtQuick\nimport QtQuick.Controls\nimport vesper 254.0\n" + object,
        QUrl(u"qrc:/part.qml"_s));
    m_root.reset(component.create());
    auto *item = qobject_cast<QQuickItem *>(m_root.get());
    if (item)
        item->setParentItem(m_view->contentItem());
    else
        qWarning().noquote() << component.errorString();
    return item;
}

void tst_SettingsParts::propertiesHaveTheirDefaults_data()
{
    QTest::addColumn<QByteArray>("object");
    QTest::addColumn<QByteArray>("property");
    QTest::addColumn<QVariant>("value");

    const auto add = [](const QByteArray &object, const QByteArray &name, const QVariant &value) {
        const QByteArray type = object.left(object.indexOf(' '));
        QTest::addRow("%s.%s", type.constData(), name.constData()) << object << name << value;
    };
    const QByteArray slider("OpacitySlider {}");
    add(slider, "value", 0.0);
    add(slider, "defaultValue", 1.0);
    add(slider, "minimumLabel", u"0%...Complity Transparent"_s);
    add(slider, "maximumLabel", u"100%...Complity Opaque"_s);
    add(slider, "currentValuePrefix", QString());
    add(slider, "currentValueSuffix", u"%"_s);
    add(slider, "minimumValue", 0.0);
    add(slider, "maximumValue", 1.0);
    const QByteArray button("ExpandButton {}");
    add(button, "label", u"Expand"_s);
    add(button, "expanded", false);
    add(button, "expansionToolTipText", u"Expand"_s);
    add(button, "collapseToolTipText", u"Collapse"_s);
    add(button, "directionDownward", true);
    add(button, "spacerWidth", 6.0);
    add(button, "imageWidth", 16.0);
    const QByteArray area("ExpandArea {}");
    add(area, "expanded", false);
    add(area, "expandedHeight", 0.0);
    add(area, "clip", true);
    add(area, "color", QColor(Qt::transparent));
    const QByteArray scroll = QByteArray(scrollButton).replace("%1", "");
    add(scroll, "axis", 32.0);
    add(scroll, "speed", 150);
    add(scroll, "type", u"top"_s);
    add(scroll, "iconSize", QSizeF(16, 8));
    add(scroll, "radius", 3.0);
    const QByteArray comboBox = "VsComboBox { "_ba + required + " }";
    add(comboBox, "textRole", u"displayName"_s);
    add(comboBox, "valueRole", u"name"_s);
    add(comboBox, "currentIndex", 0);
    add(comboBox, "currentValue", u"0"_s);
}

void tst_SettingsParts::propertiesHaveTheirDefaults()
{
    QFETCH(QByteArray, object);
    QFETCH(QByteArray, property);
    QFETCH(QVariant, value);
    const QQuickItem *part = create(object);
    QVERIFY(part);
    QCOMPARE(part->property(property), value);
}

void tst_SettingsParts::partsHaveTheirSize()
{
    QQuickItem *slider = create("OpacitySlider {}");
    QCOMPARE(slider->size(), QSizeF(240, slider->childrenRect().height()));
    const QQuickItem *area = create("ExpandArea { Item { height: 50 } }");
    QCOMPARE(area->size(), QSizeF(240, 0));
    const QQuickItem *button = create(QByteArray(scrollButton).replace("%1", ""));
    QCOMPARE(button->size(), QSizeF(32, 12));
}

void tst_SettingsParts::toolTips_data()
{
    QTest::addColumn<QByteArray>("object");
    QTest::addColumn<QString>("text");
    QTest::newRow("reset") << "OpacitySlider {}"_ba << u"Reset to Defualt Value"_s;
    QTest::newRow("expand")
        << "ExpandButton { expansionToolTipText: \"more\"; collapseToolTipText: \"less\" }"_ba
        << u"more"_s;
    QTest::newRow("collapse")
        << "ExpandButton { expanded: true; expansionToolTipText: \"more\"; collapseToolTipText: \"less\" }"_ba
        << u"less"_s;
}

void tst_SettingsParts::toolTips()
{
    QFETCH(QByteArray, object);
    QFETCH(QString, text);
    QQuickItem *part = create(object);
    QVERIFY(part);
    // Part or child, the one that can be pressed.
    QObject *button = part;
    if (part->metaObject()->indexOfProperty("down") < 0)
        button = itemsWith(part, {"down", "icon", "checkable"}).constFirst();
    const auto toolTip = [button](const QString &property) {
        return QQmlProperty::read(button, u"ToolTip."_s + property, qmlContext(button));
    };
    QCOMPARE(toolTip(u"text"_s), QVariant(text));
    QCOMPARE(toolTip(u"delay"_s), QVariant(1000));
    QCOMPARE(toolTip(u"timeout"_s), QVariant(5000));
    QCOMPARE(toolTip(u"visible"_s), QVariant(false));
}

void tst_SettingsParts::expandButtonTellsWhatAClickWouldDo()
{
    QQuickItem *button = create("ExpandButton {}");
    for (const bool expanded : {true, false}) {
        QMetaObject::invokeMethod(button, "click");
        QCOMPARE(button->property("expanded"), QVariant(expanded));
        QCOMPARE(QQmlProperty::read(button, u"ToolTip.text"_s, qmlContext(button)),
            QVariant(expanded ? u"Collapse"_s : u"Expand"_s));
    }
}

void tst_SettingsParts::expandButtonTurnsItsArrow()
{
    for (const auto &[direction, angle] : {std::pair("true", 90.0), {"false", -90.0}}) {
        QQuickItem *button
            = create(QByteArray("ExpandButton { directionDownward: ") + direction + " }");
        const QQuickItem *arrow = itemsWith(button, {"source", "fillMode"}).constFirst();
        QCOMPARE(arrow->rotation(), 0.0);
        QCOMPARE(arrow->property("source").toUrl(), QUrl(u"qrc:/images/toright_black.svg"_s));
        button->setProperty("expanded", true);
        QTRY_COMPARE(arrow->rotation(), angle);
    }
}

void tst_SettingsParts::expandAreaOpensToItsContent()
{
    QQuickItem *area = create("ExpandArea { Item { height: 50; width: 10 } }");
    QCOMPARE(area->property("expandedHeight"), QVariant(50.0));
    QCOMPARE(area->implicitHeight(), 0.0);
    area->setProperty("expanded", true);
    QTRY_COMPARE(area->implicitHeight(), 50.0);
    area->setProperty("expanded", false);
    QTRY_COMPARE(area->implicitHeight(), 0.0);
}

void tst_SettingsParts::sliderBringsBackWhatIsBeyondItsEnds()
{
    QQuickItem *slider = create("OpacitySlider { minimumValue: 0.5; maximumValue: 2 }");
    for (const auto &[set, value, shown] : {std::tuple(5.0, 2.0, u"200%"_s), {2.5, 2.0, u"200%"_s},
             {0.456, 0.5, u"50%"_s}, {-1.0, 0.5, u"50%"_s}, {0.754, 0.754, u"75%"_s}}) {
        slider->setProperty("value", set);
        QCOMPARE(slider->property("value").toDouble(), value);
        QCOMPARE(labelTexts(slider).constLast(), shown);
    }
}

void tst_SettingsParts::comboBoxHasPlaceholders()
{
    QQuickItem *comboBox = create("VsComboBox { "_ba + required + " }");
    QObject *model = comboBox->property("model").value<QObject *>();
    QCOMPARE(model->property("count"), QVariant(20));
    const QQuickItem *inner = itemsWith(comboBox, {"currentText", "count"}).constFirst();
    QCOMPARE(comboBox->size(), QSizeF(inner->implicitWidth(), inner->implicitHeight()));
    for (int row = 0; row < 20; ++row) {
        comboBox->setProperty("currentIndex", row);
        QCOMPARE(inner->property("currentText").toString(), QStringLiteral("%1 item").arg(row));
        QCOMPARE(comboBox->property("currentValue").toString(), QString::number(row));
    }
}

void tst_SettingsParts::scrollButtonKnowsItsEdge_data()
{
    QTest::addColumn<QByteArray>("type");
    QTest::addColumn<QString>("arrow");
    QTest::newRow("unset") << ""_ba << u"toupper"_s;
    QTest::newRow("any case") << "type: \"TOP\""_ba << u"toupper"_s;
    QTest::newRow("bottom") << "type: \"bottom\""_ba << u"tolower"_s;
    QTest::newRow("any other") << "type: \"else\""_ba << u"tolower"_s;
}

void tst_SettingsParts::scrollButtonKnowsItsEdge()
{
    QFETCH(QByteArray, type);
    QFETCH(QString, arrow);
    const QQuickItem *button = create(QByteArray(scrollButton).replace("%1", type));
    QVERIFY(button);
    QCOMPARE(button->opacity(), 0.0); // nothing to scroll
    const QQuickItem *image = itemsWith(button, {"source", "fillMode"}).constFirst();
    QCOMPARE(image->property("source").toString(),
        QStringLiteral("qrc:/images/%1_black.svg").arg(arrow));
    QCOMPARE(image->opacity(), 0.7);
    QCOMPARE(image->size(), QSizeF(16, 8));
}

int main(int argc, char **argv) { return runQmlTest<tst_SettingsParts>(argc, argv); }

#include "tst_settingsparts.moc"
