// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "confighome.h"
#include "signallog.h"

#include "config/vsconfig.h"

#include <QtCore/qcoreapplication.h>
#include <QtCore/qjsonarray.h>
#include <QtCore/qjsondocument.h>
#include <QtCore/qjsonobject.h>
#include <QtCore/qregularexpression.h>
#include <QtTest/qsignalspy.h>
#include <QtTest/qtest.h>

#include <limits>
#include <memory>

using namespace Qt::StringLiterals;

namespace
{

struct Key {
    QLatin1StringView group; ///< empty: top level
    QLatin1StringView key;
    const char *property;
    QJsonValue defaultValue;
};

QList<Key> fileKeys()
{
    return {
        {""_L1, "AutoCheckUpdate"_L1, "autoCheckUpdate", true},
        {""_L1, "DisplayDate"_L1, "displayDate", true},
        {""_L1, "DisplayLogo"_L1, "displayLogo", true},
        {""_L1, "Fixed"_L1, "fixed", false},
        {""_L1, "IgnoreMouseEvent"_L1, "ignoreMouseEvent", false},
        {""_L1, "Topmost"_L1, "topmost", true},
        {""_L1, "RaisePriorityOfTopmost"_L1, "raisePriorityOfTopmost", false},
        {""_L1, "TweleveHours"_L1, "tweleveHours", false},
        {""_L1, "UseDefaultBackgroundImage"_L1, "useDefaultBackgroundImage", true},
        {""_L1, "UseEra"_L1, "useEra", false},
        {""_L1, "WithDigitalClock"_L1, "withDigitalClock", true},
        {""_L1, "Opacity"_L1, "opacity", 1.0},
        {""_L1, "ResizeEnabled"_L1, "resizeEnabled", false},
        {""_L1, "SecondHand"_L1, "secondHand", true},
        {""_L1, "KeepPositionWhenMonitorDetatched"_L1, "keepPositionWhenMonitorDetatched", false},
        {"Geometry"_L1, "Left"_L1, "left", 0.0},
        {"Geometry"_L1, "Top"_L1, "top", 0.0},
        {"Geometry"_L1, "Width"_L1, "width", 0.0},
        {"Geometry"_L1, "Height"_L1, "height", 0.0},
        {"Geometry"_L1, "DevicePixelRatio"_L1, "devicePixelRatio", 1.0},
        {"Theme"_L1, "ThemeName"_L1, "themeName", u"Basic"_s},
        {"Theme"_L1, "ColorToneName"_L1, "colorToneName", u"DarkBlue"_s},
        {"OpacityGroup"_L1, "BackgroundOpacity"_L1, "backgroundOpacity", 1.0},
        {"OpacityGroup"_L1, "BackgroundImageOpacity"_L1, "backgroundImageOpacity", 1.0},
        {"OpacityGroup"_L1, "FacOpacity"_L1, "faceOpacity", 1.0},
        {"OpacityGroup"_L1, "HandsOpacity"_L1, "handsOpacity", 1.0},
        {"OpacityGroup"_L1, "DigitalClockBackgroundOpacity"_L1, "digitalClockBackgroundOpacity",
            0.3},
        {"OpacityGroup"_L1, "DigitalClockForegroundOpacity"_L1, "digitalClockForegroundOpacity",
            0.7},
        {"OpacityGroup"_L1, "DateBackgroundOpacity"_L1, "dateBackgroundOpacity", 0.3},
        {"OpacityGroup"_L1, "DateForegroundOpacity"_L1, "dateForegroundOpacity", 0.7},
        {"OpacityGroup"_L1, "LogoOpacity"_L1, "logoOpacity", 0.8},
        {"ScaleFactorGroup"_L1, "DigitalClockScaleFactor"_L1, "digitalClockScaleFactor", 1.0},
        {"ScaleFactorGroup"_L1, "DateScaleFactor"_L1, "dateScaleFactor", 1.0},
        {"ScaleFactorGroup"_L1, "LogoScaleFactor"_L1, "logoScaleFactor", 1.0},
    };
}

QByteArray rowName(const Key &key)
{
    return QByteArray(key.group.data(), key.group.size()) + '/'
        + QByteArray(key.key.data(), key.key.size());
}

/// A file that holds one value only.
QByteArray fileWith(const Key &key, const QJsonValue &value)
{
    QJsonObject object{{key.key, value}};
    if (!key.group.isEmpty())
        object = {{key.group, object}};
    return QJsonDocument(object).toJson();
}

QJsonValue valueIn(const QJsonObject &file, const Key &key)
{
    return key.group.isEmpty() ? file.value(key.key)
                               : file.value(key.group).toObject().value(key.key);
}

QJsonValue otherThan(const QJsonValue &value)
{
    if (value.isBool())
        return !value.toBool();
    if (value.isDouble())
        return value.toDouble() + 0.25;
    return value.toString() + u"?"_s;
}

/// The keys of \a file at a depth of indentation, in the order of the text.
QStringList keysInText(const QByteArray &file, int indentation)
{
    static const QRegularExpression line(
        u"^( *)\"(\\w+)\":"_s, QRegularExpression::MultilineOption);
    QStringList keys;
    auto matches = line.globalMatch(QString::fromUtf8(file));
    while (matches.hasNext()) {
        const QRegularExpressionMatch match = matches.next();
        if (match.capturedLength(1) == indentation)
            keys.append(match.captured(2));
    }
    return keys;
}

} // namespace

class TestConfigFile : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void keyIsLoaded_data() { addKeys(); }
    void keyIsLoaded();
    void wrongTypeGivesTheDefault_data();
    void wrongTypeGivesTheDefault();
    void keyIsSaved_data() { addKeys(); }
    void keyIsSaved();
    void thirtyFourKeysAreSaved();
    void keysAreInAlphabeticalOrder();
    void fileIsIndentedByFour();
    void unknownKeysAreDropped();

    void badInputGivesDefaults_data();
    void badInputGivesDefaults();
    void folderInPlaceOfTheFile();
    void fileInPlaceOfTheFolder();
    void emptyNamesBecomeDefaults();
    void groupOfAnotherTypeGivesDefaults();
    void largeFile();
    void numbersComeBack_data();
    void numbersComeBack();
    void namesComeBack_data();
    void namesComeBack();
    void showOnTaskbarIsLost();
    void loadEmitsNothing();
    void loadOfNoFileKeepsTheValues();
    void loadOfNoJsonKeepsTheValues();
    void shorterFileReplacesALongerOne();

    void pathInAFreshHome();
    void pathIgnoresTheApplicationsDomain();
    void pathCreatesTheFolderAgain();

private:
    static void addKeys();

    std::unique_ptr<ConfigHome> m_home;
};

void TestConfigFile::init()
{
    QTest::failOnWarning();
    m_home = std::make_unique<ConfigHome>();
}

void TestConfigFile::cleanup() { m_home.reset(); }

void TestConfigFile::addKeys()
{
    QTest::addColumn<Key>("key");
    const QList<Key> keys = fileKeys();
    for (const Key &key : keys)
        QTest::newRow(rowName(key)) << key;
}

void TestConfigFile::keyIsLoaded()
{
    QFETCH(const Key, key);
    QVERIFY(m_home->writeFile(fileWith(key, otherThan(key.defaultValue))));
    const VsConfig config;
    const QList<Key> keys = fileKeys();
    for (const Key &other : keys) {
        const bool stored = other.key == key.key;
        QCOMPARE(config.property(other.property),
            (stored ? otherThan(other.defaultValue) : other.defaultValue).toVariant());
    }
}

void TestConfigFile::wrongTypeGivesTheDefault_data()
{
    QTest::addColumn<Key>("key");
    QTest::addColumn<QJsonValue>("value");
    const std::pair<const char *, QJsonValue> values[] = {
        {"null", QJsonValue()},
        {"boolean", true},
        {"number", 0.5},
        {"string", u"0.5"_s},
        {"array", QJsonArray{1}},
        {"object", QJsonObject{{u"a"_s, 1}}},
    };
    const QList<Key> keys = fileKeys();
    for (const Key &key : keys) {
        for (const auto &[type, value] : values) {
            if (value.type() != key.defaultValue.type())
                QTest::newRow(rowName(key) + " holds " + type) << key << value;
        }
    }
}

void TestConfigFile::wrongTypeGivesTheDefault()
{
    QFETCH(const Key, key);
    QFETCH(const QJsonValue, value);
    QVERIFY(m_home->writeFile(fileWith(key, value)));
    const VsConfig config;
    QCOMPARE(config.property(key.property), key.defaultValue.toVariant());
}

void TestConfigFile::keyIsSaved()
{
    QFETCH(const Key, key);
    VsConfig config;
    config.setProperty(key.property, otherThan(key.defaultValue).toVariant());
    config.save();
    const QJsonObject file = QJsonDocument::fromJson(m_home->readFile()).object();
    const QList<Key> keys = fileKeys();
    for (const Key &other : keys) {
        const bool changed = other.key == key.key;
        QCOMPARE(
            valueIn(file, other), changed ? otherThan(other.defaultValue) : other.defaultValue);
    }
}

void TestConfigFile::thirtyFourKeysAreSaved()
{
    QCOMPARE(fileKeys().size(), 34);
    const VsConfig config;
    config.save();
    const QJsonObject file = QJsonDocument::fromJson(m_home->readFile()).object();
    qsizetype values = 0;
    for (const auto &value : file)
        values += value.isObject() ? value.toObject().size() : 1;
    QCOMPARE(values, 34);
}

void TestConfigFile::keysAreInAlphabeticalOrder()
{
    const VsConfig config;
    config.save();
    const QByteArray file = m_home->readFile();
    QCOMPARE(keysInText(file, 4),
        QStringList({u"AutoCheckUpdate"_s, u"DisplayDate"_s, u"DisplayLogo"_s, u"Fixed"_s,
            u"Geometry"_s, u"IgnoreMouseEvent"_s, u"KeepPositionWhenMonitorDetatched"_s,
            u"Opacity"_s, u"OpacityGroup"_s, u"RaisePriorityOfTopmost"_s, u"ResizeEnabled"_s,
            u"ScaleFactorGroup"_s, u"SecondHand"_s, u"Theme"_s, u"Topmost"_s, u"TweleveHours"_s,
            u"UseDefaultBackgroundImage"_s, u"UseEra"_s, u"WithDigitalClock"_s}));
    QCOMPARE(keysInText(file, 8),
        QStringList({u"DevicePixelRatio"_s, u"Height"_s, u"Left"_s, u"Top"_s, u"Width"_s,
            u"BackgroundImageOpacity"_s, u"BackgroundOpacity"_s, u"DateBackgroundOpacity"_s,
            u"DateForegroundOpacity"_s, u"DigitalClockBackgroundOpacity"_s,
            u"DigitalClockForegroundOpacity"_s, u"FacOpacity"_s, u"HandsOpacity"_s,
            u"LogoOpacity"_s, u"DateScaleFactor"_s, u"DigitalClockScaleFactor"_s,
            u"LogoScaleFactor"_s, u"ColorToneName"_s, u"ThemeName"_s}));
}

void TestConfigFile::fileIsIndentedByFour()
{
    const VsConfig config;
    config.save();
    const QByteArray file = m_home->readFile();
    QVERIFY(file.startsWith("{\n    \"AutoCheckUpdate\": true,\n"));
    QVERIFY(file.contains("    \"Theme\": {\n        \"ColorToneName\": \"DarkBlue\",\n"));
    QVERIFY(file.endsWith("    \"WithDigitalClock\": true\n}\n"));
}

void TestConfigFile::unknownKeysAreDropped()
{
    QVERIFY(m_home->writeFile(R"({"Fixed": true, "Unknown": 1, "Theme": {"Unknown": 2}})"));
    const VsConfig config;
    QVERIFY(config.fixed());
    config.save();
    QVERIFY(m_home->readFile().contains("\"Fixed\": true"));
    QVERIFY(!m_home->readFile().contains("Unknown"));
}

void TestConfigFile::badInputGivesDefaults_data()
{
    QTest::addColumn<QByteArray>("text");
    QByteArray binary;
    for (int i = 0; i < 4096; ++i)
        binary.append(char(i * 7));
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("blank") << QByteArray(" \n\t");
    QTest::newRow("truncated") << QByteArray(R"({"Fixed": true, "Opacity": 0.5, "Theme": {)");
    QTest::newRow("truncated inside a text")
        << QByteArray(R"({"Fixed": true, "Theme": {"ThemeName": "Ba)");
    QTest::newRow("binary") << binary;
    QTest::newRow("zeros") << QByteArray(4096, '\0');
    QTest::newRow("zeros after the object")
        << QByteArray(R"({"Fixed": true})") + QByteArray(16, '\0');
    QTest::newRow("broken UTF-8") << QByteArray("{\"Fixed\": true, \"\xff\xfe\": 1}");
    QTest::newRow("no JSON") << QByteArray("Fixed=true\n");
    QTest::newRow("a number") << QByteArray("1");
    QTest::newRow("empty array") << QByteArray("[]");
    QTest::newRow("array of objects") << QByteArray(R"([{"Fixed": true}])");
    QTest::newRow("too deep") << R"({"Fixed": true, "Deep": )" + QByteArray(2000, '[')
            + QByteArray(2000, ']') + '}';
    QTest::newRow("comment") << QByteArray("// mine\n{\"Fixed\": true}");
}

void TestConfigFile::badInputGivesDefaults()
{
    QFETCH(const QByteArray, text);
    QVERIFY(m_home->writeFile(text));
    const VsConfig config;
    const QList<Key> keys = fileKeys();
    for (const Key &key : keys)
        QCOMPARE(config.property(key.property), key.defaultValue.toVariant());
    QCOMPARE(m_home->readFile(), text);

    config.save();
    QVERIFY(QJsonDocument::fromJson(m_home->readFile()).isObject());
}

void TestConfigFile::folderInPlaceOfTheFile()
{
    const QString inside = m_home->configFile() + u"/kept"_s;
    QVERIFY(QDir().mkpath(inside));
    const VsConfig config;
    QSignalSpy errors(&config, &VsConfig::errorOccurred);
    QCOMPARE(config.themeName(), u"Basic"_s);
    config.save();
    QVERIFY(QDir(inside).exists());
    QVERIFY(errors.isEmpty());
}

void TestConfigFile::fileInPlaceOfTheFolder()
{
    QVERIFY(QDir().mkpath(m_home->makerFolder()));
    QFile file(m_home->configFolder());
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write("kept"), 4);
    file.close();
    const VsConfig config;
    QSignalSpy errors(&config, &VsConfig::errorOccurred);
    QCOMPARE(config.themeName(), u"Basic"_s);
    config.save();
    QCOMPARE(file.size(), 4);
    QVERIFY(errors.isEmpty());
}

void TestConfigFile::emptyNamesBecomeDefaults()
{
    QVERIFY(m_home->writeFile(R"({"Theme": {"ThemeName": ""}})"));
    const VsConfig config;
    QCOMPARE(config.themeName(), u"Basic"_s);
    QCOMPARE(config.colorToneName(), u"DarkBlue"_s);
}

void TestConfigFile::groupOfAnotherTypeGivesDefaults()
{
    QVERIFY(m_home->writeFile(R"({"Geometry": [1, 2], "Theme": "Basic", "Fixed": true})"));
    const VsConfig config;
    QCOMPARE(config.left(), 0.0);
    QCOMPARE(config.devicePixelRatio(), 1.0);
    QCOMPARE(config.colorToneName(), u"DarkBlue"_s);
    QVERIFY(config.fixed());
}

void TestConfigFile::largeFile()
{
    constexpr qsizetype padding = 50'000'000;
    QVERIFY(m_home->writeFile("{\"Padding\": \"" + QByteArray(padding, 'x')
        + "\", \"Opacity\": 0.5, \"Theme\": {\"ColorToneName\": \"LightRed\"}}"));
    const VsConfig config;
    QCOMPARE(config.opacity(), 0.5);
    QCOMPARE(config.colorToneName(), u"LightRed"_s);
}

void TestConfigFile::numbersComeBack_data()
{
    using Double = std::numeric_limits<double>;
    QTest::addColumn<double>("value");
    QTest::newRow("negative width") << -320.0;
    QTest::newRow("negative fraction") << -0.1;
    QTest::newRow("1e300") << 1e300;
    QTest::newRow("-1e300") << -1e300;
    QTest::newRow("largest") << Double::max();
    QTest::newRow("smallest") << Double::lowest();
    QTest::newRow("nearest to zero") << Double::denorm_min();
    QTest::newRow("all digits") << 0.1 + 0.2;
    QTest::newRow("beyond what an int holds") << 4294967296.5;
    QTest::newRow("whole, near the limit of exactness") << 9007199254740991.0;
    QTest::newRow("whole, beyond 64 bits") << 18446744073709551616.0;
    QTest::newRow("whole, smallest of 64 bits") << -9223372036854775808.0;
}

void TestConfigFile::numbersComeBack()
{
    QFETCH(const double, value);
    const QByteArray number = QByteArray::number(value, 'g', 17);
    QVERIFY(m_home->writeFile("{\"Opacity\": " + number + ", \"Geometry\": {\"Width\": " + number
        + "}, \"ScaleFactorGroup\": {\"LogoScaleFactor\": " + number + "}}"));
    {
        const VsConfig config;
        QVERIFY(config.width() == value);
        config.save();
    }
    const QJsonObject written = QJsonDocument::fromJson(m_home->readFile()).object();
    QVERIFY(written["Geometry"_L1]["Width"_L1].toDouble() == value);
    const VsConfig config;
    QVERIFY(config.opacity() == value);
    QVERIFY(config.width() == value);
    QVERIFY(config.logoScaleFactor() == value);
}

void TestConfigFile::namesComeBack_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("not in the catalogue") << u"No such tone"_s;
    QTest::newRow("not Latin") << u"濃紺"_s;
    QTest::newRow("beyond 16 bits") << u"🕰"_s;
    QTest::newRow("what JSON escapes") << u"a\"b\\c\n\u0001"_s;
    QTest::newRow("blank") << u" "_s;
}

void TestConfigFile::namesComeBack()
{
    QFETCH(const QString, name);
    {
        VsConfig config;
        config.setColorToneName(name);
        config.save();
    }
    const VsConfig config;
    QCOMPARE(config.colorToneName(), name);
}

void TestConfigFile::showOnTaskbarIsLost()
{
    {
        VsConfig config;
        config.setShowOnTaskbar(true);
        config.setFixed(true);
        config.save();
    }
    QVERIFY(!m_home->readFile().toLower().contains("taskbar"));
    QVERIFY(!m_home->readFile().toLower().contains("autostart"));
    const VsConfig config;
    QVERIFY(config.fixed());
    QVERIFY(!config.showOnTaskbar());
}

void TestConfigFile::loadEmitsNothing()
{
    VsConfig config;
    QVERIFY(m_home->writeFile(R"({"Fixed": true, "Theme": {"ColorToneName": "LightRed"}})"));
    const SignalLog log(&config);
    config.load();
    QVERIFY(config.fixed());
    QCOMPARE(config.colorToneName(), u"LightRed"_s);
    QCOMPARE(log.names(), QList<QByteArray>());
}

void TestConfigFile::loadOfNoFileKeepsTheValues()
{
    VsConfig config;
    config.setFixed(true);
    config.load();
    QVERIFY(config.fixed());
}

void TestConfigFile::loadOfNoJsonKeepsTheValues()
{
    VsConfig config;
    config.setFixed(true);
    QVERIFY(m_home->writeFile("{"));
    config.load();
    QVERIFY(config.fixed());
    QVERIFY(m_home->writeFile("[]"));
    config.load();
    QVERIFY2(!config.fixed(), "an array is JSON in which every key is missing");
}

void TestConfigFile::shorterFileReplacesALongerOne()
{
    VsConfig config;
    config.save();
    const QByteArray shorter = m_home->readFile();
    config.setThemeName(QString(5000, u'x'));
    config.save();
    QVERIFY(m_home->readFile().size() > 5000);
    config.setThemeName(u"Basic"_s);
    config.save();
    QCOMPARE(m_home->readFile(), shorter);
}

void TestConfigFile::pathInAFreshHome()
{
    QVERIFY2(!QDir(m_home->makerFolder()).exists(), "the home must be fresh");
    const QString first = VsConfig::configFilePath();
    QCOMPARE(first, m_home->configFile());
    QVERIFY(QDir(m_home->configFolder()).exists());
    QVERIFY(!QFile::exists(first));
    QCOMPARE(VsConfig::configFilePath(), first);

    // The application's own data folder may come to life later; that must not move the file.
    const QString own = QStandardPaths::writableLocation(QStandardPaths::AppDataLocation);
    QVERIFY(QDir().mkpath(own));
    QCOMPARE(VsConfig::configFilePath(), first);
    QVERIFY(QDir().rmdir(own));
}

void TestConfigFile::pathIgnoresTheApplicationsDomain()
{
    const QString before = VsConfig::configFilePath();
    QCoreApplication::setOrganizationDomain(u"somewhere.example"_s);
    QCOMPARE(VsConfig::configFilePath(), before);
    QCoreApplication::setOrganizationDomain({});
}

void TestConfigFile::pathCreatesTheFolderAgain()
{
    const VsConfig config;
    QVERIFY(QDir(m_home->makerFolder()).removeRecursively());
    config.save();
    QVERIFY(QFile::exists(m_home->configFile()));
}

QTEST_GUILESS_MAIN(TestConfigFile)
#include "tst_configfile.moc"
