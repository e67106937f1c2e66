// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The layers of the clock face, and the images and hands among them.

#include "tests/qml/facetest.h"

#include <QtGui/qscreen.h>

#include <private/qquickimagebase_p.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

struct ImageRow {
    Layer layer;
    const char *source; // property of the theme
    const char *opacity; // property of the configuration
};
constexpr ImageRow imageRows[] = {
    {Base, "base", "backgroundOpacity"},
    {Background, "background", "backgroundImageOpacity"},
    {Dial, "dial", "faceOpacity"},
    {HourHand, "handHour", "handsOpacity"},
    {MinuteHand, "handMinute", "handsOpacity"},
    {SecondHand, "handSecond", "handsOpacity"},
};

struct HandRow {
    const char *id;
    void (StandInManager::*signal)(double);
};
constexpr HandRow handRows[] = {
    {"handHour", &StandInManager::hourHandAngleChanged},
    {"handMinute", &StandInManager::minuteHandAngleChanged},
    {"handSecond", &StandInManager::secondHandAngleChanged},
};

} // namespace

class tst_BasicClock : public FaceTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnRealWarning();
        load(Documents::AllObjects);
    }
    void cleanup() { unload(); }

    void layersStandInOrder();
    void hasItsOwnProperties();
    void imageSourceRatioFollowsThePixelRatio_data();
    void imageSourceRatioFollowsThePixelRatio();
    void isSquareAndFollowsItsParent();
    void imagesHaveTheirSource_data();
    void imagesHaveTheirSource();
    void imagesFollowTheTone();
    void firstPictureIsThereAtOnce();
    void laterPicturesComeAside_data();
    void laterPicturesComeAside();
    void imagesRasteriseAtTheirSize_data();
    void imagesRasteriseAtTheirSize();
    void imagesKeepTheirOpacity_data();
    void imagesKeepTheirOpacity();
    void layersFollowTheirSettings_data();
    void layersFollowTheirSettings();
    void onlyImagesShowWithoutTexts();
    void handsTurnOnTheirSignal_data();
    void handsTurnOnTheirSignal();
    void clockImageTurnsAboutItsCentre();
    void worksWithoutObjects();
    void noObjectsGiveTheFallbacks();
    void noConfigurationGivesItsFallbacks();
};

void tst_BasicClock::layersStandInOrder()
{
    QCOMPARE(m_face->childItems().size(), LayerCount);
    constexpr std::pair<Layer, const char *> ids[] = {
        {Logo, "logoTextItem"},
        {HourHand, "handHour"},
        {MinuteHand, "handMinute"},
        {SecondHand, "handSecond"},
        {Time, "clockNumberItem"},
        {AmPm, "clockNumberAmPmItem"},
        {Date, "dateItem"},
    };
    for (const auto &[which, id] : ids)
        QCOMPARE(item(id), layer(which));
    for (const QQuickItem *child : m_face->childItems())
        QCOMPARE(child->z(), 0.0);
}

void tst_BasicClock::hasItsOwnProperties()
{
    QCOMPARE(m_face->property("cfg").value<QObject *>(), &m_documents->config);
    QCOMPARE(m_face->property("mgr").value<QObject *>(), &m_documents->manager);
    QCOMPARE(m_face->property("tme").value<QObject *>(), &m_documents->theme);
    QCOMPARE(m_face->property("imageCache"), QVariant(false));
    QCOMPARE(m_face->property("imageMipmap"), QVariant(true));
    const qreal ratio = qGuiApp->primaryScreen()->devicePixelRatio();
    QCOMPARE(m_face->property("pixelRatio").toReal(), ratio);
    QCOMPARE(rgbaOf(m_face), qRgba(0, 0, 0, 0));
}

void tst_BasicClock::imageSourceRatioFollowsThePixelRatio_data()
{
    QTest::addColumn<qreal>("pixelRatio");
    QTest::addColumn<qreal>("sourceRatio");
    QTest::newRow("1") << 1.0 << 3.0;
    QTest::newRow("1.5") << 1.5 << 2.0;
    QTest::newRow("2") << 2.0 << 1.5;
    QTest::newRow("3") << 3.0 << 1.0;
    QTest::newRow("above") << 4.0 << 1.0;
}

void tst_BasicClock::imageSourceRatioFollowsThePixelRatio()
{
    QFETCH(qreal, pixelRatio);
    QFETCH(qreal, sourceRatio);
    m_face->setProperty("pixelRatio", pixelRatio);
    QCOMPARE(m_face->property("imageSourceRatio").toReal(), sourceRatio);
    const auto sourceSide
        = [this](Layer which) { return layer(which)->property("sourceSize").toSize().width(); };
    QCOMPARE(sourceSide(HourHand), int(side * sourceRatio));
    QCOMPARE(sourceSide(SecondHand), int(side * 3)); // at every pixel ratio
}

void tst_BasicClock::isSquareAndFollowsItsParent()
{
    QCOMPARE(m_face->size(), QSizeF(side, side));
    m_view->contentItem()->setSize({500, 200});
    QCOMPARE(m_face->size(), QSizeF(500, 500));
    for (const ImageRow &row : imageRows)
        QCOMPARE(layer(row.layer)->size(), QSizeF(500, 500));
}

void tst_BasicClock::imagesHaveTheirSource_data()
{
    QTest::addColumn<Layer>("which");
    QTest::addColumn<QByteArray>("property");
    for (const ImageRow &row : imageRows)
        QTest::newRow(row.source) << row.layer << QByteArray(row.source);
}

void tst_BasicClock::imagesHaveTheirSource()
{
    QFETCH(Layer, which);
    QFETCH(QByteArray, property);
    const QObject *image = layer(which);
    const QUrl source = image->property("source").toUrl();
    QCOMPARE(source.toString(), m_documents->theme.property(property).toString());
    QVERIFY(source.toString().startsWith("qrc:/themes/basic/dark_"_L1));
    QCOMPARE(image->property("cache"), QVariant(false));
    QCOMPARE(image->property("mipmap"), QVariant(true));
    constexpr int ready = 1;
    QTRY_COMPARE(image->property("status").toInt(), ready);
}

void tst_BasicClock::imagesFollowTheTone()
{
    m_documents->theme.changeColorTone(u"Basic"_s, u"LightRed"_s);
    for (const ImageRow &row : imageRows) {
        const QString source = layer(row.layer)->property("source").toUrl().toString();
        QVERIFY2(source.startsWith("qrc:/themes/basic/light_"_L1), qPrintable(source));
    }
}

// No event loop has run since the face was made.
void tst_BasicClock::firstPictureIsThereAtOnce()
{
    for (const ImageRow &row : imageRows) {
        const auto *image = qobject_cast<QQuickImageBase *>(layer(row.layer));
        QVERIFY(!image->image().isNull());
    }
}

void tst_BasicClock::laterPicturesComeAside_data()
{
    QTest::addColumn<qreal>("width");
    QTest::addColumn<QString>("tone");
    QTest::newRow("other size") << 100.0 << u"DarkBlue"_s;
    QTest::newRow("other tone") << side << u"LightGreen"_s;
}

void tst_BasicClock::laterPicturesComeAside()
{
    QFETCH(qreal, width);
    QFETCH(QString, tone);
    m_view->contentItem()->setWidth(width);
    m_documents->theme.changeColorTone(u"Basic"_s, tone);
    for (const ImageRow &row : imageRows) {
        const auto *image = qobject_cast<QQuickImageBase *>(layer(row.layer));
        QCOMPARE(image->status(), QQuickImageBase::Loading);
        QVERIFY(!image->image().isNull());
    }
    for (const ImageRow &row : imageRows) {
        const auto *image = qobject_cast<QQuickImageBase *>(layer(row.layer));
        QTRY_COMPARE(image->status(), QQuickImageBase::Ready);
        const qreal ratio = m_view->devicePixelRatio();
        QCOMPARE(image->image().width(), int(image->sourceSize().width() * ratio));
    }
}

void tst_BasicClock::imagesRasteriseAtTheirSize_data()
{
    QTest::addColumn<Layer>("which");
    QTest::addColumn<int>("atOne");
    QTest::addColumn<int>("atTwo");
    for (const Layer which : {Base, Background, Dial, HourHand})
        QTest::addRow("layer %d", which) << which << 960 << 480;
    // The two longer hands keep three times the side.
    for (const Layer which : {MinuteHand, SecondHand})
        QTest::addRow("layer %d", which) << which << 960 << 960;
}

void tst_BasicClock::imagesRasteriseAtTheirSize()
{
    QFETCH(Layer, which);
    QFETCH(int, atOne);
    QFETCH(int, atTwo);
    const qreal ratio = qGuiApp->primaryScreen()->devicePixelRatio();
    QVERIFY2(ratio == 1 || ratio == 2, "this test knows the figures for two pixel ratios");
    const int expected = ratio == 1 ? atOne : atTwo;
    QCOMPARE(layer(which)->property("sourceSize").toSize(), QSize(expected, expected));

    m_view->contentItem()->setWidth(100); // it goes with the size of the face
    const int smaller = expected * 100 / int(side);
    QCOMPARE(layer(which)->property("sourceSize").toSize(), QSize(smaller, smaller));
}

void tst_BasicClock::imagesKeepTheirOpacity_data()
{
    QTest::addColumn<Layer>("which");
    QTest::addColumn<QByteArray>("property");
    for (const ImageRow &row : imageRows)
        QTest::newRow(row.source) << row.layer << QByteArray(row.opacity);
}

void tst_BasicClock::imagesKeepTheirOpacity()
{
    QFETCH(Layer, which);
    QFETCH(QByteArray, property);
    QCOMPARE(layer(which)->opacity(), 1.0);
    for (const double opacity : {0.25, 0.0, 1.0}) {
        m_documents->config.setProperty(property, opacity);
        QCOMPARE(layer(which)->opacity(), opacity);
    }
}

void tst_BasicClock::layersFollowTheirSettings_data()
{
    QTest::addColumn<Layer>("which");
    QTest::addColumn<QByteArrayList>("settings"); // all of them have to be on
    QTest::newRow("base") << Base << QByteArrayList{};
    QTest::newRow("background") << Background << QByteArrayList{"useDefaultBackgroundImage"};
    QTest::newRow("dial") << Dial << QByteArrayList{};
    QTest::newRow("logo") << Logo << QByteArrayList{"displayLogo"};
    QTest::newRow("hour hand") << HourHand << QByteArrayList{};
    QTest::newRow("minute hand") << MinuteHand << QByteArrayList{};
    QTest::newRow("second hand") << SecondHand << QByteArrayList{"secondHand"};
    QTest::newRow("digital time") << Time << QByteArrayList{"withDigitalClock"};
    QTest::newRow("tag") << AmPm << QByteArrayList{"tweleveHours", "withDigitalClock"};
    QTest::newRow("date") << Date << QByteArrayList{"displayDate"};
}

void tst_BasicClock::layersFollowTheirSettings()
{
    QFETCH(Layer, which);
    QFETCH(QByteArrayList, settings);
    const QByteArrayList all{"useDefaultBackgroundImage", "displayLogo", "secondHand",
        "withDigitalClock", "displayDate", "tweleveHours"};
    for (int combination = 0; combination < 1 << all.size(); ++combination) {
        for (qsizetype i = 0; i < all.size(); ++i)
            m_documents->config.setProperty(all.at(i), bool(combination >> i & 1));
        const bool expected = std::ranges::all_of(settings,
            [this](const auto &name) { return m_documents->config.property(name).toBool(); });
        QCOMPARE(layer(which)->isVisible(), expected);
    }
}

void tst_BasicClock::onlyImagesShowWithoutTexts()
{
    m_documents->config.setDisplayLogo(false);
    m_documents->config.setWithDigitalClock(false);
    m_documents->config.setTweleveHours(true);
    m_documents->config.setDisplayDate(false);
    for (int i = 0; i < LayerCount; ++i) {
        const bool isImage
            = std::ranges::any_of(imageRows, [i](auto row) { return row.layer == i; });
        QCOMPARE(layer(Layer(i))->isVisible(), isImage);
    }
}

void tst_BasicClock::handsTurnOnTheirSignal_data()
{
    QTest::addColumn<int>("row");
    for (int row = 0; row < 3; ++row)
        QTest::newRow(handRows[row].id) << row;
}

void tst_BasicClock::handsTurnOnTheirSignal()
{
    QFETCH(int, row);
    for (const HandRow &hand : handRows)
        QCOMPARE(item(hand.id)->property("angleValue").toReal(), 0.0); // three o'clock
    Q_EMIT(m_documents->manager.*handRows[row].signal)(-37.5);
    for (const HandRow &hand : handRows) {
        const qreal expected = &hand == &handRows[row] ? -37.5 : 0.0;
        QCOMPARE(item(hand.id)->property("angleValue").toReal(), expected);
    }
}

void tst_BasicClock::clockImageTurnsAboutItsCentre()
{
    const auto image = m_documents->create(u"ClockImage.qml"_s);
    auto *imageItem = qobject_cast<QQuickItem *>(image.get());
    QVERIFY(imageItem);
    QCOMPARE(image->property("mipmap"), QVariant(true));
    QCOMPARE(image->property("source").toUrl(), QUrl());
    QCOMPARE(image->property("angleValue").toReal(), 0.0);
    imageItem->setSize({200, 200});
    QVERIFY(QMetaObject::invokeMethod(imageItem, "setAngle", QVariant(90.0)));
    // Clockwise: three o'clock goes to six.
    QCOMPARE(imageItem->mapToItem(nullptr, QPointF(200, 100)), QPointF(100, 200));
    QCOMPARE(imageItem->mapToItem(nullptr, QPointF(100, 100)), QPointF(100, 100));
    QVERIFY(QMetaObject::invokeMethod(imageItem, "setVisible", QVariant(false)));
    QVERIFY(!imageItem->isVisible());
}

void tst_BasicClock::worksWithoutObjects()
{
    for (const bool hasConfig : {false, true}) {
        for (const bool hasTheme : {false, true}) {
            load(Documents::AllObjects);
            m_face->setProperty("mgr", QVariant::fromValue<QObject *>(nullptr));
            if (!hasConfig)
                m_face->setProperty("cfg", QVariant::fromValue<QObject *>(nullptr));
            if (!hasTheme)
                m_face->setProperty("tme", QVariant::fromValue<QObject *>(nullptr));
            QCOMPARE(layer(SecondHand)->isVisible(), true);
        }
    }
}

void tst_BasicClock::noObjectsGiveTheFallbacks()
{
    load(Documents::NoObjects);
    for (const ImageRow &row : imageRows) {
        QCOMPARE(layer(row.layer)->property("source").toUrl(), QUrl());
        QCOMPARE(layer(row.layer)->opacity(), 1.0);
        QVERIFY(layer(row.layer)->isVisible());
    }
    for (const Layer which : {Logo, Time, AmPm, Date})
        QVERIFY(!layer(which)->isVisible());
}

void tst_BasicClock::noConfigurationGivesItsFallbacks()
{
    m_documents->config.setUseDefaultBackgroundImage(false);
    m_documents->config.setSecondHand(false);
    m_documents->config.setDisplayLogo(true);
    m_documents->config.setHandsOpacity(0.5);
    m_face->setProperty("cfg", QVariant::fromValue<QObject *>(nullptr));
    for (const ImageRow &row : imageRows) {
        QVERIFY(layer(row.layer)->isVisible());
        QCOMPARE(layer(row.layer)->opacity(), 1.0);
        QCOMPARE(layer(row.layer)->property("source").toUrl().toString(),
            m_documents->theme.property(row.source).toString());
    }
    for (const Layer which : {Logo, Time, AmPm, Date})
        QVERIFY(!layer(which)->isVisible());
}

int main(int argc, char **argv) { return runQmlTest<tst_BasicClock>(argc, argv); }

#include "tst_basicclock.moc"
