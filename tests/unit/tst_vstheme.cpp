// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "signallog.h"

#include "theme/vstheme.h"

#include <QtCore/qcoreapplication.h>
#include <QtCore/qmetaobject.h>
#include <QtCore/qtranslator.h>
#include <QtTest/qtest.h>

#include <limits>
#include <memory>

using namespace Qt::StringLiterals;

namespace
{

struct Tone {
    QString name;
    QString displayName;
    QString ownFolder;
    QString sharedFolder;
    QColor textColor;
    QColor textBackColor;
    QColor logoColor;
};

QList<Tone> expectedTones()
{
    // clang-format off
    return {
        {u"DarkBlue"_s, u"Dark Blue"_s, u"dark_blue"_s, u"dark_gray"_s,
         QColor(178, 178, 255, 178), QColor(0, 0, 0, 76), QColor(230, 230, 230, 204)},
        {u"DarkRed"_s, u"Dark Red"_s, u"dark_red"_s, u"dark_gray"_s,
         QColor(235, 178, 178, 178), QColor(0, 0, 0, 76), QColor(230, 230, 230, 204)},
        {u"DarkGreen"_s, u"Dark Green"_s, u"dark_green"_s, u"dark_gray"_s,
         QColor(178, 235, 178, 178), QColor(0, 0, 0, 76), QColor(230, 230, 230, 204)},
        {u"DarkYellow"_s, u"Dark Yellow"_s, u"dark_yellow"_s, u"dark_gray"_s,
         QColor(198, 198, 0, 178), QColor(0, 0, 0, 76), QColor(230, 230, 230, 204)},
        {u"DarkGray"_s, u"Dark Gray"_s, u"dark_gray"_s, u"dark_gray"_s,
         QColor(204, 204, 204, 178), QColor(0, 0, 0, 76), QColor(230, 230, 230, 204)},
        {u"LightBlue"_s, u"Light Blue"_s, u"light_blue"_s, u"light_gray"_s,
         QColor(0, 0, 64, 178), QColor(148, 148, 222, 128), QColor(25, 25, 25, 204)},
        {u"LightRed"_s, u"Light Red"_s, u"light_red"_s, u"light_gray"_s,
         QColor(24, 0, 0, 178), QColor(222, 172, 172, 128), QColor(25, 25, 25, 204)},
        {u"LightGreen"_s, u"Light Green"_s, u"light_green"_s, u"light_gray"_s,
         QColor(0, 32, 0, 178), QColor(148, 198, 148, 128), QColor(25, 25, 25, 204)},
        {u"LightYellow"_s, u"Light Yellow"_s, u"light_yellow"_s, u"light_gray"_s,
         QColor(32, 32, 0, 178), QColor(198, 198, 148, 128), QColor(25, 25, 25, 204)},
        {u"LightGray"_s, u"Light Gray"_s, u"light_gray"_s, u"light_gray"_s,
         QColor(0, 0, 0, 178), QColor(192, 192, 192, 128), QColor(25, 25, 25, 204)},
    };
    // clang-format on
}

struct Property {
    const char *name;
    const char *type;
    const char *notify;
    const char *parameter; ///< of the signal; null: any name
};

constexpr Property properties[] = {
    {"name", "QString", "nameChanged(QString)", "name"},
    {"base", "QString", "baseChanged(QString)", "base"},
    {"background", "QString", "backgroundChanged(QString)", "background"},
    {"dial", "QString", "dialChanged(QString)", "dial"},
    {"handHour", "QString", "handHourChanged(QString)", "hand"},
    {"handMinute", "QString", "handMinuteChanged(QString)", "hand"},
    {"handSecond", "QString", "handSecondChanged(QString)", "hand"},
    {"resizeGrip", "QString", "resizeGripChanged(QString)", "grip"},
    {"displayName", "QString", "displayNameChanged(QString)", nullptr},
    {"currentTheme", "QString", "currentThemeChanged(QString)", nullptr},
    {"parentName", "QString", "parentNameChanged(QString)", nullptr},
    {"currentColorTone", "QString", "currentColorToneChanged(QString)", nullptr},
    {"textColor", "QColor", "textColorChanged(QColor)", "color"},
    {"textBackColor", "QColor", "textBackColorChanged(QColor)", "color"},
    {"logoColor", "QColor", "logoColorChanged(QColor)", "color"},
};

/// Every property of \a theme in order.
QVariantList values(const VsTheme &theme)
{
    QVariantList values;
    for (const Property &property : properties)
        values.append(theme.property(property.name));
    return values;
}

std::unique_ptr<VsTheme> makeRoot()
{
    auto root = std::make_unique<VsTheme>();
    root->buildThemeTable();
    return root;
}

/// Translates what is in the theme's context, and nothing else.
class MarkingTranslator : public QTranslator
{ // clazy:exclude=missing-qobject-macro
public:
    QString translate(const char *context, const char *sourceText, const char *, int) const override
    {
        return QLatin1StringView(context) == "VsTheme"_L1
            ? u'<' + QString::fromLatin1(sourceText) + u'>'
            : QString();
    }
    bool isEmpty() const override { return false; }
};

} // namespace

class TestVsTheme : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }

    void propertyOrder_data();
    void propertyOrder();
    void methodOrder();
    void defaultConstruction();
    void setterEmitsOnceWithTheNewValue_data();
    void setterEmitsOnceWithTheNewValue();
    void coloursDifferInAlphaToo();

    void themeEntry();
    void toneEntry_data();
    void toneEntry();
    void catalogueLeavesTheRootsPropertiesAlone();
    void secondCatalogueIsAppended();
    void displayNamesAreTranslated();

    void changeToLightGreen();
    void changeToTheSameToneEmitsNothing();
    void changeFromDarkBlueToDarkRed();
    void firstChangeEmitsInOrder();
    void unknownNamesChangeNothing_data();
    void unknownNamesChangeNothing();
    void themeOrToneCannotChangeItsTone();
    void changeKeepsTheRootsOwnNames();

    void lookups();
    void lookupsOutOfRange_data();
    void lookupsOutOfRange();
    void lookupsOnTheWrongKind();
    void copyIsDeepAndHasNoParent();
    void assignmentKeepsTheParentAndEmitsNothing();
};

void TestVsTheme::propertyOrder_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < int(std::size(properties)); ++i)
        QTest::newRow(properties[i].name) << i;
}

void TestVsTheme::propertyOrder()
{
    QFETCH(const int, index);
    const Property &expected = properties[index];
    const QMetaObject &meta = VsTheme::staticMetaObject;
    QCOMPARE(meta.propertyCount() - meta.propertyOffset(), 15);
    const QMetaProperty property = meta.property(meta.propertyOffset() + index);
    QCOMPARE(property.name(), expected.name);
    QCOMPARE(property.typeName(), expected.type);
    QVERIFY(property.isReadable());
    QVERIFY(property.isWritable());

    // The signals stand in the order of the properties.
    const QMetaMethod notify = meta.method(meta.methodOffset() + index);
    QCOMPARE(property.notifySignal(), notify);
    QCOMPARE(notify.methodSignature(), QByteArray(expected.notify));
    if (expected.parameter)
        QCOMPARE(notify.parameterNames(), QList<QByteArray>{expected.parameter});
}

void TestVsTheme::methodOrder()
{
    const QMetaObject &meta = VsTheme::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 16);
    const QMetaMethod slot = meta.method(meta.methodOffset() + 15);
    QCOMPARE(slot.methodType(), QMetaMethod::Slot);
    QCOMPARE(slot.methodSignature(), QByteArray("changeColorTone(QString,QString)"));
    QCOMPARE(slot.parameterNames(), (QList<QByteArray>{"themeName", "colorToneName"}));
    QCOMPARE(slot.typeName(), "bool");
    QCOMPARE(slot.access(), QMetaMethod::Public);
}

void TestVsTheme::defaultConstruction()
{
    const VsTheme theme;
    for (const Property &property : properties) {
        const QVariant value = theme.property(property.name);
        if (value.typeId() == QMetaType::QColor)
            QVERIFY(!value.value<QColor>().isValid());
        else
            QCOMPARE(value.toString(), QString());
    }
    QCOMPARE(theme.itemKind(), 0);
    QCOMPARE(theme.themeCount(), 0);
    QCOMPARE(theme.colorToneCount(), 0);
}

void TestVsTheme::setterEmitsOnceWithTheNewValue_data()
{
    QTest::addColumn<QVariant>("value");
    for (const Property &property : properties) {
        QTest::newRow(property.name)
            << (QLatin1StringView(property.type) == "QColor"_L1 ? QVariant(QColor(1, 2, 3, 4))
                                                                : QVariant(u"text"_s));
    }
}

void TestVsTheme::setterEmitsOnceWithTheNewValue()
{
    QFETCH(const QVariant, value);
    const QByteArray name = QTest::currentDataTag();
    VsTheme theme;
    const SignalLog log(&theme);
    QVERIFY(theme.setProperty(name, value));
    QVERIFY(theme.setProperty(name, value));
    QCOMPARE(theme.property(name), value);
    QCOMPARE(log.names(), QList<QByteArray>{name + "Changed"});
    QCOMPARE(log.emissions().constFirst().arguments, QVariantList{value});
}

void TestVsTheme::coloursDifferInAlphaToo()
{
    VsTheme theme;
    theme.setTextColor(QColor(1, 2, 3, 4));
    const SignalLog log(&theme);
    theme.setTextColor(QColor(1, 2, 3, 5));
    QCOMPARE(log.names(), QList<QByteArray>{"textColorChanged"});
}

void TestVsTheme::themeEntry()
{
    const auto root = makeRoot();
    QCOMPARE(root->themeCount(), 1);
    const VsTheme basic = root->themeAt(0);
    QCOMPARE(basic.itemKind(), 1);
    QCOMPARE(basic.name(), u"Basic"_s);
    QCOMPARE(basic.displayName(), u"Basic"_s);
    QCOMPARE(basic.colorToneCount(), 10);
    QCOMPARE(basic.themeCount(), 0);
    VsTheme bare;
    bare.setName(u"Basic"_s);
    bare.setDisplayName(u"Basic"_s);
    QCOMPARE(values(basic), values(bare));
}

void TestVsTheme::toneEntry_data()
{
    QTest::addColumn<int>("index");
    const QList<Tone> tones = expectedTones();
    for (int i = 0; i < tones.size(); ++i)
        QTest::newRow(qPrintable(tones.at(i).name)) << i;
}

void TestVsTheme::toneEntry()
{
    QFETCH(const int, index);
    const Tone expected = expectedTones().at(index);
    const auto root = makeRoot();
    const VsTheme tone = root->themeAt(0).colorToneAt(index);
    QCOMPARE(tone.itemKind(), 2);
    QCOMPARE(tone.name(), expected.name);
    QCOMPARE(tone.displayName(), expected.displayName);
    QCOMPARE(tone.parentName(), u"Basic"_s);
    const QString own = u"qrc:/themes/basic/"_s + expected.ownFolder;
    const QString shared = u"qrc:/themes/basic/"_s + expected.sharedFolder;
    QCOMPARE(tone.base(), own + u"/clock_base.svg"_s);
    QCOMPARE(tone.background(), own + u"/clock_background.svg"_s);
    QCOMPARE(tone.resizeGrip(), own + u"/clock_resize_grip.svg"_s);
    QCOMPARE(tone.dial(), shared + u"/clock_dial.svg"_s);
    QCOMPARE(tone.handHour(), shared + u"/clock_hand_hour.svg"_s);
    QCOMPARE(tone.handMinute(), shared + u"/clock_hand_minute.svg"_s);
    QCOMPARE(tone.handSecond(), shared + u"/clock_hand_second.svg"_s);
    QCOMPARE(tone.textColor(), expected.textColor);
    QCOMPARE(tone.textBackColor(), expected.textBackColor);
    QCOMPARE(tone.logoColor(), expected.logoColor);
    QCOMPARE(tone.currentTheme(), QString());
    QCOMPARE(tone.currentColorTone(), QString());
    QCOMPARE(tone.colorToneCount(), 0);
}

void TestVsTheme::catalogueLeavesTheRootsPropertiesAlone()
{
    VsTheme root;
    const SignalLog log(&root);
    root.buildThemeTable();
    QCOMPARE(log.names(), QList<QByteArray>());
    QCOMPARE(values(root), values(VsTheme()));
    QCOMPARE(root.itemKind(), 0);
    QCOMPARE(root.colorToneCount(), 0);
}

void TestVsTheme::secondCatalogueIsAppended()
{
    const auto root = makeRoot();
    root->buildThemeTable();
    QCOMPARE(root->themeCount(), 2);
    QCOMPARE(root->themeAt(1).name(), u"Basic"_s);
    QCOMPARE(root->themeIndexOf(u"Basic"_s), 0);
}

void TestVsTheme::displayNamesAreTranslated()
{
    MarkingTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    const auto root = makeRoot();
    QVERIFY(QCoreApplication::removeTranslator(&translator));
    const VsTheme basic = root->themeAt(0);
    QCOMPARE(basic.displayName(), u"<Basic>"_s);
    QCOMPARE(basic.name(), u"Basic"_s);
    QCOMPARE(basic.colorToneAt(3).displayName(), u"<Dark Yellow>"_s);
    QCOMPARE(basic.colorToneAt(3).name(), u"DarkYellow"_s);
}

void TestVsTheme::changeToLightGreen()
{
    const auto root = makeRoot();
    QCOMPARE(root->changeColorTone(u"Basic"_s, u"LightGreen"_s), false);
    QCOMPARE(root->currentTheme(), u"Basic"_s);
    QCOMPARE(root->currentColorTone(), u"LightGreen"_s);
    QCOMPARE(root->base(), u"qrc:/themes/basic/light_green/clock_base.svg"_s);
    QCOMPARE(root->background(), u"qrc:/themes/basic/light_green/clock_background.svg"_s);
    QCOMPARE(root->resizeGrip(), u"qrc:/themes/basic/light_green/clock_resize_grip.svg"_s);
    QCOMPARE(root->dial(), u"qrc:/themes/basic/light_gray/clock_dial.svg"_s);
    QCOMPARE(root->handHour(), u"qrc:/themes/basic/light_gray/clock_hand_hour.svg"_s);
    QCOMPARE(root->handMinute(), u"qrc:/themes/basic/light_gray/clock_hand_minute.svg"_s);
    QCOMPARE(root->handSecond(), u"qrc:/themes/basic/light_gray/clock_hand_second.svg"_s);
    QCOMPARE(root->textColor(), QColor(0, 32, 0, 178));
    QCOMPARE(root->textBackColor(), QColor(148, 198, 148, 128));
    QCOMPARE(root->logoColor(), QColor(25, 25, 25, 204));
}

void TestVsTheme::changeToTheSameToneEmitsNothing()
{
    const auto root = makeRoot();
    root->changeColorTone(u"Basic"_s, u"LightGreen"_s);
    const SignalLog log(root.get());
    QCOMPARE(root->changeColorTone(u"Basic"_s, u"LightGreen"_s), false);
    QCOMPARE(log.names(), QList<QByteArray>());
}

void TestVsTheme::changeFromDarkBlueToDarkRed()
{
    const auto root = makeRoot();
    root->changeColorTone(u"Basic"_s, u"DarkBlue"_s);
    const SignalLog log(root.get());
    root->changeColorTone(u"Basic"_s, u"DarkRed"_s);
    QCOMPARE(log.names(),
        (QList<QByteArray>{"currentColorToneChanged", "baseChanged", "backgroundChanged",
            "resizeGripChanged", "textColorChanged"}));
}

void TestVsTheme::firstChangeEmitsInOrder()
{
    const auto root = makeRoot();
    const SignalLog log(root.get());
    root->changeColorTone(u"Basic"_s, u"DarkBlue"_s);
    QCOMPARE(log.names(),
        (QList<QByteArray>{"currentThemeChanged", "currentColorToneChanged", "baseChanged",
            "backgroundChanged", "dialChanged", "handHourChanged", "handMinuteChanged",
            "handSecondChanged", "resizeGripChanged", "textColorChanged", "textBackColorChanged",
            "logoColorChanged"}));
}

void TestVsTheme::unknownNamesChangeNothing_data()
{
    QTest::addColumn<QString>("theme");
    QTest::addColumn<QString>("tone");
    QTest::newRow("theme in lower case") << u"basic"_s << u"DarkBlue"_s;
    QTest::newRow("tone in lower case") << u"Basic"_s << u"darkblue"_s;
    QTest::newRow("no such theme") << u"Other"_s << u"DarkBlue"_s;
    QTest::newRow("no such tone") << u"Basic"_s << u"DarkPurple"_s;
    QTest::newRow("display name instead of the name") << u"Basic"_s << u"Dark Blue"_s;
    QTest::newRow("empty theme") << QString() << u"DarkBlue"_s;
    QTest::newRow("empty tone") << u"Basic"_s << QString();
}

void TestVsTheme::unknownNamesChangeNothing()
{
    QFETCH(const QString, theme);
    QFETCH(const QString, tone);
    const auto root = makeRoot();
    QCOMPARE(root->changeColorTone(theme, tone), false);
    QCOMPARE(values(*root), values(VsTheme()));

    root->changeColorTone(u"Basic"_s, u"LightRed"_s);
    const QVariantList before = values(*root);
    const SignalLog log(root.get());
    QCOMPARE(root->changeColorTone(theme, tone), false);
    QCOMPARE(values(*root), before);
    QCOMPARE(log.names(), QList<QByteArray>());
}

void TestVsTheme::themeOrToneCannotChangeItsTone()
{
    const auto root = makeRoot();
    VsTheme basic = root->themeAt(0);
    VsTheme tone = basic.colorToneAt(0);
    for (VsTheme *entry : {&basic, &tone}) {
        const QVariantList before = values(*entry);
        QCOMPARE(entry->changeColorTone(u"Basic"_s, u"LightRed"_s), false);
        QCOMPARE(values(*entry), before);
    }
}

void TestVsTheme::changeKeepsTheRootsOwnNames()
{
    const auto root = makeRoot();
    root->setName(u"own name"_s);
    root->changeColorTone(u"Basic"_s, u"LightRed"_s);
    QCOMPARE(root->name(), u"own name"_s);
    QCOMPARE(root->displayName(), QString());
    QCOMPARE(root->parentName(), QString());
}

void TestVsTheme::lookups()
{
    const auto root = makeRoot();
    QCOMPARE(root->themeIndexOf(u"Basic"_s), 0);
    QCOMPARE(root->themeIndexOf(u"basic"_s), -1);
    bool found = false;
    const VsTheme basic = root->findTheme(u"Basic"_s, &found);
    QVERIFY(found);
    QCOMPARE(basic.name(), u"Basic"_s);
    QCOMPARE(basic.colorToneIndexOf(u"DarkBlue"_s), 0);
    QCOMPARE(basic.colorToneIndexOf(u"LightGray"_s), 9);
    QCOMPARE(basic.colorToneIndexOf(u"lightgray"_s), -1);
    QCOMPARE(root->findTheme(u"basic"_s, &found).itemKind(), 0);
    QVERIFY(!found);
    QCOMPARE(root->findTheme(u"Basic"_s).itemKind(), 1);
}

void TestVsTheme::lookupsOutOfRange_data()
{
    QTest::addColumn<qsizetype>("index");
    QTest::newRow("before the first") << qsizetype(-1);
    QTest::newRow("after the last") << qsizetype(10);
    QTest::newRow("far away") << std::numeric_limits<qsizetype>::max();
}

void TestVsTheme::lookupsOutOfRange()
{
    QFETCH(const qsizetype, index);
    const auto root = makeRoot();
    for (const VsTheme &entry : {root->themeAt(index), root->themeAt(0).colorToneAt(index)}) {
        QCOMPARE(entry.itemKind(), 0);
        QCOMPARE(values(entry), values(VsTheme()));
    }
}

void TestVsTheme::lookupsOnTheWrongKind()
{
    const auto root = makeRoot();
    QCOMPARE(root->colorToneIndexOf(u"LightGray"_s), -1);
    QCOMPARE(root->colorToneAt(0).itemKind(), 0);
    const VsTheme basic = root->themeAt(0);
    QCOMPARE(basic.themeIndexOf(u"Basic"_s), -1);
    QCOMPARE(basic.themeAt(0).itemKind(), 0);
    bool found = true;
    QCOMPARE(basic.findTheme(u"Basic"_s, &found).itemKind(), 0);
    QVERIFY(!found);
    const VsTheme empty;
    QCOMPARE(empty.themeIndexOf(u"Basic"_s), -1);
}

void TestVsTheme::copyIsDeepAndHasNoParent()
{
    QObject parent;
    auto root = std::make_unique<VsTheme>(&parent);
    root->buildThemeTable();
    root->changeColorTone(u"Basic"_s, u"LightRed"_s);
    root->setName(u"root"_s);
    root->setDisplayName(u"shown"_s);
    root->setParentName(u"above"_s);
    const QVariantList before = values(*root);
    VsTheme copy(*root);
    QCOMPARE(copy.parent(), nullptr);
    QCOMPARE(values(copy), before);
    QCOMPARE(copy.itemKind(), 0);

    // Neither follows the other.
    root->buildThemeTable();
    root->changeColorTone(u"Basic"_s, u"DarkRed"_s);
    QCOMPARE(copy.themeCount(), 1);
    QCOMPARE(values(copy), before);
    root.reset();
    copy.changeColorTone(u"Basic"_s, u"DarkGreen"_s);
    QCOMPARE(copy.currentColorTone(), u"DarkGreen"_s);
    QCOMPARE(copy.themeAt(0).colorToneCount(), 10);
}

void TestVsTheme::assignmentKeepsTheParentAndEmitsNothing()
{
    const auto root = makeRoot();
    root->changeColorTone(u"Basic"_s, u"LightRed"_s);
    QObject parent;
    auto *const other = new VsTheme(&parent);
    const SignalLog log(other);
    *other = *root;
    QCOMPARE(other->parent(), &parent);
    QCOMPARE(values(*other), values(*root));
    QCOMPARE(other->themeCount(), 1);
    QCOMPARE(log.names(), QList<QByteArray>());

    *other = root->themeAt(0);
    QCOMPARE(other->itemKind(), 1);
    QCOMPARE(other->colorToneCount(), 10);
    const VsTheme &same = *other;
    *other = same;
    QCOMPARE(other->colorToneCount(), 10);
}

QTEST_GUILESS_MAIN(TestVsTheme)
#include "tst_vstheme.moc"
