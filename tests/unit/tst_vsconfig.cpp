// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "confighome.h"
#include "fakeautostart.h"
#include "signallog.h"

#include "config/vsconfig.h"

#include <QtCore/qmetaobject.h>
#include <QtTest/qtest.h>

#include <limits>
#include <memory>

using namespace Qt::StringLiterals;

namespace
{

struct Property {
    const char *name;
    const char *type;
    const char *notify; ///< null: a constant
    bool isFinal;
};

constexpr Property properties[] = {
    {"resizeEnabled", "bool", "resizeEnabledChanged(bool)", false},
    {"fixed", "bool", "fixedChanged(bool)", false},
    {"topmost", "bool", "topmostChanged(bool)", false},
    {"withDigitalClock", "bool", "withDigitalClockChanged(bool)", false},
    {"displayDate", "bool", "displayDateChanged(bool)", false},
    {"displayLogo", "bool", "displayLogoChanged(bool)", false},
    {"useDefaultBackgroundImage", "bool", "useDefaultBackgroundImageChanged(bool)", false},
    {"opacity", "double", "opacityChanged(double)", false},
    {"ignoreMouseEvent", "bool", "ignoreMouseEventChanged(bool)", false},
    {"tweleveHours", "bool", "tweleveHoursChanged(bool)", false},
    {"useEra", "bool", "useEraChanged(bool)", false},
    {"autoCheckUpdate", "bool", "autoCheckUpdateChanged(bool)", false},
    {"raisePriorityOfTopmost", "bool", "raisePriorityOfTopmostChanged(bool)", false},
    {"left", "double", "leftChanged(double)", false},
    {"top", "double", "topChanged(double)", false},
    {"width", "double", "widthChanged(double)", false},
    {"height", "double", "heightChanged(double)", false},
    {"devicePixelRatio", "double", "devicePixelRatioChanged()", true},
    {"secondHand", "bool", "secondHandChanged()", true},
    {"keepPositionWhenMonitorDetatched", "bool", "keepPositionWhenMonitorDetatchedChanged()", true},
    {"autoStartAtSignIn", "bool", "autoStartAtSignInChanged(bool)", false},
    {"themeName", "QString", "themeNameChanged(QString)", false},
    {"colorToneName", "QString", "colorToneNameChanged(QString)", false},
    {"defaultOverallOpacity", "double", nullptr, false},
    {"defaultBackgroundOpacity", "double", nullptr, false},
    {"defaultBackgroundImageOpacity", "double", nullptr, false},
    {"defaultFaceOpacity", "double", nullptr, false},
    {"defaultHandsOpacity", "double", nullptr, false},
    {"defaultDigitalClockBackgroundOpacity", "double", nullptr, false},
    {"defaultDigitalClockForegroundOpacity", "double", nullptr, false},
    {"defaultDigitalClockScaleFactor", "double", nullptr, false},
    {"defaultDateScaleFactor", "double", nullptr, false},
    {"defaultLogoScaleFactor", "double", nullptr, false},
    {"backgroundOpacity", "double", "backgroundOpacityChanged()", true},
    {"backgroundImageOpacity", "double", "backgroundImageOpacityChanged()", true},
    {"faceOpacity", "double", "faceOpacityChanged()", true},
    {"handsOpacity", "double", "handsOpacityChanged()", true},
    {"digitalClockBackgroundOpacity", "double", "digitalClockBackgroundOpacityChanged()", true},
    {"digitalClockForegroundOpacity", "double", "digitalClockForegroundOpacityChanged()", true},
    {"dateBackgroundOpacity", "double", "dateBackgroundOpacityChanged()", true},
    {"dateForegroundOpacity", "double", "dateForegroundOpacityChanged()", true},
    {"logoOpacity", "double", "logoOpacityChanged()", true},
    {"digitalClockScaleFactor", "double", "digitalClockScaleFactorChanged()", true},
    {"logoScaleFactor", "double", "logoScaleFactorChanged()", true},
    {"dateScaleFactor", "double", "dateScaleFactorChanged()", true},
    {"showOnTaskbar", "bool", "showOnTaskbarChanged(bool)", true},
};

struct Signal {
    const char *signature;
    const char *parameter;
};

constexpr Signal notifications[] = {
    {"resizeEnabledChanged(bool)", "enabled"},
    {"fixedChanged(bool)", "enabled"},
    {"topmostChanged(bool)", "enabled"},
    {"withDigitalClockChanged(bool)", "enabled"},
    {"displayDateChanged(bool)", "enabled"},
    {"displayLogoChanged(bool)", "enabled"},
    {"useDefaultBackgroundImageChanged(bool)", "enabled"},
    {"opacityChanged(double)", "opacity"},
    {"ignoreMouseEventChanged(bool)", "ignore"},
    {"tweleveHoursChanged(bool)", "enabled"},
    {"useEraChanged(bool)", "enabled"},
    {"autoCheckUpdateChanged(bool)", "enabled"},
    {"raisePriorityOfTopmostChanged(bool)", "enabled"},
    {"autoStartAtSignInChanged(bool)", "enabled"},
    {"themeNameChanged(QString)", "name"},
    {"colorToneNameChanged(QString)", "name"},
    {"leftChanged(double)", "left"},
    {"topChanged(double)", "top"},
    {"widthChanged(double)", "width"},
    {"heightChanged(double)", "height"},
    {"devicePixelRatioChanged()", ""},
    {"secondHandChanged()", ""},
    {"keepPositionWhenMonitorDetatchedChanged()", ""},
    {"backgroundOpacityChanged()", ""},
    {"backgroundImageOpacityChanged()", ""},
    {"faceOpacityChanged()", ""},
    {"handsOpacityChanged()", ""},
    {"digitalClockBackgroundOpacityChanged()", ""},
    {"digitalClockForegroundOpacityChanged()", ""},
    {"dateBackgroundOpacityChanged()", ""},
    {"dateForegroundOpacityChanged()", ""},
    {"logoOpacityChanged()", ""},
    {"digitalClockScaleFactorChanged()", ""},
    {"logoScaleFactorChanged()", ""},
    {"dateScaleFactorChanged()", ""},
    {"errorOccurred(QString)", "msg"},
    {"showOnTaskbarChanged(bool)", "enabled"},
};

/// What every setting holds when nothing was ever stored, autoStartAtSignIn aside.
const QList<std::pair<const char *, QVariant>> &constructionValues()
{
    static const QList<std::pair<const char *, QVariant>> values{
        {"resizeEnabled", false},
        {"fixed", false},
        {"topmost", true},
        {"raisePriorityOfTopmost", false},
        {"withDigitalClock", true},
        {"displayDate", true},
        {"useEra", false},
        {"secondHand", true},
        {"displayLogo", true},
        {"useDefaultBackgroundImage", true},
        {"showOnTaskbar", false},
        {"opacity", 1.0},
        {"backgroundOpacity", 1.0},
        {"backgroundImageOpacity", 1.0},
        {"faceOpacity", 1.0},
        {"handsOpacity", 1.0},
        {"digitalClockBackgroundOpacity", 0.3},
        {"digitalClockForegroundOpacity", 0.7},
        {"dateBackgroundOpacity", 0.3},
        {"dateForegroundOpacity", 0.7},
        {"logoOpacity", 0.8},
        {"digitalClockScaleFactor", 1.0},
        {"dateScaleFactor", 1.0},
        {"logoScaleFactor", 1.0},
        {"ignoreMouseEvent", false},
        {"tweleveHours", false},
        {"autoCheckUpdate", true},
        {"keepPositionWhenMonitorDetatched", false},
        {"left", 0.0},
        {"top", 0.0},
        {"width", 0.0},
        {"height", 0.0},
        {"devicePixelRatio", 1.0},
        {"themeName", u"Basic"_s},
        {"colorToneName", u"DarkBlue"_s},
    };
    return values;
}

/// A value that differs from \a value.
QVariant otherThan(const QVariant &value)
{
    switch (value.typeId()) {
    case QMetaType::Bool:
        return !value.toBool();
    case QMetaType::Double:
        return value.toDouble() + 0.25;
    default:
        return value.toString() + u"?"_s;
    }
}

void changeEverySetting(VsConfig &config)
{
    for (const auto &[name, value] : constructionValues())
        config.setProperty(name, otherThan(value));
}

} // namespace

class TestVsConfig : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void propertyOrder_data();
    void propertyOrder();
    void propertyCount();
    void signalOrder_data();
    void signalOrder();
    void methodCount();

    void constructionValue_data();
    void constructionValue();
    void constant_data();
    void constant();

    void setterEmitsOnceWithTheNewValue_data();
    void setterEmitsOnceWithTheNewValue();
    void doublesCompareFuzzily_data();
    void doublesCompareFuzzily();
    void currentThemeNameEmitsNothing();
    void negativeWidthIsStored();
    void constantDoesNotFollowTheSetting();

    void isAValueForTheMetaTypes();
    void copyConstruction();
    void assignment();

    void geometry_data();
    void geometry();
    void positionAndSizeAreNotRounded();
    void instanceIsOneAndHasNoParent();

private:
    std::unique_ptr<ConfigHome> m_home;
};

void TestVsConfig::init()
{
    QTest::failOnWarning();
    m_home = std::make_unique<ConfigHome>();
    FakeAutoStart::state() = {};
}

void TestVsConfig::cleanup() { m_home.reset(); }

void TestVsConfig::propertyOrder_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < int(std::size(properties)); ++i)
        QTest::newRow(properties[i].name) << i;
}

void TestVsConfig::propertyOrder()
{
    QFETCH(const int, index);
    const Property &expected = properties[index];
    const QMetaObject &meta = VsConfig::staticMetaObject;
    const QMetaProperty property = meta.property(meta.propertyOffset() + index);
    QCOMPARE(property.name(), expected.name);
    QCOMPARE(property.typeName(), expected.type);
    QCOMPARE(property.isFinal(), expected.isFinal);
    QVERIFY(property.isReadable());
    QCOMPARE(property.isWritable(), expected.notify != nullptr);
    QCOMPARE(property.isConstant(), expected.notify == nullptr);
    QCOMPARE(property.hasNotifySignal(), expected.notify != nullptr);
    if (expected.notify)
        QCOMPARE(property.notifySignal().methodSignature(), QByteArray(expected.notify));
}

void TestVsConfig::propertyCount()
{
    const QMetaObject &meta = VsConfig::staticMetaObject;
    QCOMPARE(meta.propertyCount() - meta.propertyOffset(), 46);
    QCOMPARE(std::size(properties), std::size_t(46));
}

void TestVsConfig::signalOrder_data()
{
    QTest::addColumn<int>("index");
    for (int i = 0; i < int(std::size(notifications)); ++i)
        QTest::newRow(notifications[i].signature) << i;
}

void TestVsConfig::signalOrder()
{
    QFETCH(const int, index);
    const QMetaObject &meta = VsConfig::staticMetaObject;
    const QMetaMethod method = meta.method(meta.methodOffset() + index);
    QCOMPARE(method.methodType(), QMetaMethod::Signal);
    QCOMPARE(method.methodSignature(), QByteArray(notifications[index].signature));
    QCOMPARE(method.parameterNames().value(0), QByteArray(notifications[index].parameter));
}

void TestVsConfig::methodCount()
{
    const QMetaObject &meta = VsConfig::staticMetaObject;
    QCOMPARE(meta.methodCount() - meta.methodOffset(), 37);
    QCOMPARE(std::size(notifications), std::size_t(37));
    QCOMPARE(meta.constructorCount(), 0);
    QCOMPARE(meta.enumeratorCount(), 0);
}

void TestVsConfig::constructionValue_data()
{
    QTest::addColumn<QVariant>("expected");
    for (const auto &[name, value] : constructionValues())
        QTest::newRow(name) << value;
    QTest::newRow("autoStartAtSignIn") << QVariant(false);
}

void TestVsConfig::constructionValue()
{
    QFETCH(const QVariant, expected);
    const VsConfig config;
    QCOMPARE(config.property(QTest::currentDataTag()), expected);
}

void TestVsConfig::constant_data()
{
    QTest::addColumn<double>("expected");
    QTest::newRow("defaultOverallOpacity") << 1.0;
    QTest::newRow("defaultBackgroundOpacity") << 1.0;
    QTest::newRow("defaultBackgroundImageOpacity") << 1.0;
    QTest::newRow("defaultFaceOpacity") << 1.0;
    QTest::newRow("defaultHandsOpacity") << 1.0;
    QTest::newRow("defaultDigitalClockBackgroundOpacity") << 0.3;
    QTest::newRow("defaultDigitalClockForegroundOpacity") << 0.7;
    QTest::newRow("defaultDigitalClockScaleFactor") << 1.0;
    QTest::newRow("defaultDateScaleFactor") << 1.0;
    QTest::newRow("defaultLogoScaleFactor") << 1.0;
}

void TestVsConfig::constant()
{
    QFETCH(const double, expected);
    VsConfig config;
    QCOMPARE(config.property(QTest::currentDataTag()).toDouble(), expected);
    changeEverySetting(config);
    QCOMPARE(config.property(QTest::currentDataTag()).toDouble(), expected);
}

void TestVsConfig::setterEmitsOnceWithTheNewValue_data()
{
    QTest::addColumn<QVariant>("value");
    for (const auto &[name, value] : constructionValues())
        QTest::newRow(name) << otherThan(value);
}

void TestVsConfig::setterEmitsOnceWithTheNewValue()
{
    QFETCH(const QVariant, value);
    const QByteArray name = QTest::currentDataTag();
    VsConfig config;
    const SignalLog log(&config);

    QVERIFY(config.setProperty(name, value));
    QCOMPARE(config.property(name), value);
    QCOMPARE(log.names(), QList<QByteArray>{name + "Changed"});
    const QVariantList arguments = log.emissions().constFirst().arguments;
    if (!arguments.isEmpty())
        QCOMPARE(arguments, QVariantList{value});

    QVERIFY(config.setProperty(name, value));
    QCOMPARE(log.emissions().size(), 1);

    // Only this setting changed.
    for (const auto &[otherName, otherValue] : constructionValues()) {
        if (otherName != name)
            QCOMPARE(config.property(otherName), otherValue);
    }
    QVERIFY2(!QFile::exists(m_home->configFile()), "a setter must not write the file");
}

void TestVsConfig::doublesCompareFuzzily_data()
{
    constexpr double infinity = std::numeric_limits<double>::infinity();
    QTest::addColumn<double>("from");
    QTest::addColumn<double>("to");
    QTest::addColumn<bool>("changes");
    QTest::newRow("the last digits do not count") << 1.0 << 1.0 + 1e-13 << false;
    QTest::newRow("the tenth digit counts") << 1.0 << 1.0 + 1e-10 << true;
    QTest::newRow("from zero everything counts") << 0.0 << 1e-300 << true;
    QTest::newRow("to zero everything counts") << 1e-300 << 0.0 << true;
    QTest::newRow("zero and negative zero") << 0.0 << -0.0 << false;
    QTest::newRow("sign of a tiny number") << 1e-300 << -1e-300 << true;
    QTest::newRow("last digits of a huge number") << 1e300 << 1e300 * (1.0 + 1e-13) << false;
    QTest::newRow("sign of a huge number") << 1e300 << -1e300 << true;
    QTest::newRow("to infinity") << 1.0 << infinity << true;
}

void TestVsConfig::doublesCompareFuzzily()
{
    QFETCH(const double, from);
    QFETCH(const double, to);
    QFETCH(const bool, changes);
    VsConfig config;
    config.setOpacity(from);
    const SignalLog log(&config);
    config.setOpacity(to);
    QCOMPARE(log.names().contains("opacityChanged"), changes);
    QVERIFY(config.opacity() == (changes ? to : from));
}

void TestVsConfig::currentThemeNameEmitsNothing()
{
    VsConfig config;
    const SignalLog log(&config);
    config.setThemeName(config.themeName());
    QCOMPARE(log.names(), QList<QByteArray>());
}

void TestVsConfig::negativeWidthIsStored()
{
    VsConfig config;
    const SignalLog log(&config);
    config.setWidth(-5);
    QCOMPARE(config.width(), -5.0);
    QCOMPARE(log.names(), QList<QByteArray>{"widthChanged"});
    QCOMPARE(log.emissions().constFirst().arguments, QVariantList{-5.0});
}

void TestVsConfig::constantDoesNotFollowTheSetting()
{
    VsConfig config;
    config.setDigitalClockForegroundOpacity(0.1);
    QCOMPARE(config.defaultDigitalClockForegroundOpacity(), 0.7);
}

void TestVsConfig::isAValueForTheMetaTypes()
{
    const auto type = QMetaType::fromType<VsConfig>();
    QVERIFY(type.isDefaultConstructible());
    QVERIFY(type.isCopyConstructible());
}

void TestVsConfig::copyConstruction()
{
    QObject parent;
    VsConfig config(&parent);
    changeEverySetting(config);
    const VsConfig copy(config);
    for (const auto &[name, value] : constructionValues())
        QCOMPARE(copy.property(name), otherThan(value));
    QCOMPARE(copy.parent(), nullptr);
}

void TestVsConfig::assignment()
{
    QObject parent;
    VsConfig config;
    changeEverySetting(config);
    VsConfig other(&parent);
    const SignalLog log(&other);
    other = config;
    for (const auto &[name, value] : constructionValues())
        QCOMPARE(other.property(name), otherThan(value));
    QCOMPARE(other.parent(), &parent);
    QCOMPARE(log.names(), QList<QByteArray>());
}

void TestVsConfig::geometry_data()
{
    constexpr int max = std::numeric_limits<int>::max();
    constexpr int min = std::numeric_limits<int>::min();
    QTest::addColumn<QList<double>>("stored"); // left, top, width, height
    QTest::addColumn<QPoint>("topLeft");
    QTest::addColumn<QPoint>("bottomRight"); // inclusive
    const auto row
        = [](const char *name, const QList<double> &stored, QPoint topLeft, QPoint bottomRight) {
              QTest::newRow(name) << stored << topLeft << bottomRight;
          };
    row("nothing stored", {0, 0, 0, 0}, {0, 0}, {-1, -1});
    row("whole pixels", {10, 20, 300, 200}, {10, 20}, {309, 219});
    row("toward zero", {10.9, -20.9, 300.9, 200.9}, {10, -20}, {309, 179});
    row("negative size", {0, 0, -5, -5}, {0, 0}, {-6, -6});
    row("far position", {1e300, -1e300, 0, 320}, {max, min}, {max - 1, min + 319});
    row("far position, far edge wraps", {1e300, 1e300, 320, 1}, {max, max}, {min + 318, max});
    row("huge size", {0, 1, 1e300, 1e300}, {0, 1}, {max - 1, max});
    row("huge size, far edge wraps", {2, 0, 1e300, -1e300}, {2, 0}, {min, max});
    row("huge negative everything", {-1e300, -1e300, -1e300, -1e300}, {min, min}, {-1, -1});
    row("no numbers", {qQNaN(), qQNaN(), qQNaN(), 72}, {0, 0}, {-1, 71});
    row("infinite", {qInf(), -qInf(), 1, 1}, {max, min}, {max, min});
}

void TestVsConfig::geometry()
{
    QFETCH(const QList<double>, stored);
    QFETCH(const QPoint, topLeft);
    QFETCH(const QPoint, bottomRight);
    VsConfig config;
    config.setLeft(stored.at(0));
    config.setTop(stored.at(1));
    config.setWidth(stored.at(2));
    config.setHeight(stored.at(3));
    QCOMPARE(config.geometry().topLeft(), topLeft);
    QCOMPARE(config.geometry().bottomRight(), bottomRight);
    const double kept[] = {config.left(), config.top(), config.width(), config.height()};
    for (int i = 0; i < 4; ++i)
        QVERIFY(kept[i] == stored.at(i) || (qIsNaN(kept[i]) && qIsNaN(stored.at(i))));
}

void TestVsConfig::positionAndSizeAreNotRounded()
{
    VsConfig config;
    config.setLeft(1.5);
    config.setTop(-1e300);
    config.setWidth(2.25);
    config.setHeight(-3.5);
    QCOMPARE(config.position(), QPointF(1.5, -1e300));
    QCOMPARE(config.size(), QSizeF(2.25, -3.5));
}

void TestVsConfig::instanceIsOneAndHasNoParent()
{
    QVERIFY(VsConfig::instance());
    QCOMPARE(VsConfig::instance(), VsConfig::instance());
    QCOMPARE(VsConfig::instance()->parent(), nullptr);
    QCOMPARE(VsConfig::instance()->themeName(), u"Basic"_s);
}

QTEST_GUILESS_MAIN(TestVsConfig)
#include "tst_vsconfig.moc"
