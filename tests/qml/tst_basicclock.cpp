// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/qml/documents.h"

#include <QtGui/qfontmetrics.h>
#include <QtGui/qscreen.h>

#include <private/qquickimagebase_p.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

constexpr qreal side = 320;

// The layers from the bottom up, as children of the face.
enum Layer {
    Base,
    Background,
    Dial,
    Logo,
    HourHand,
    MinuteHand,
    SecondHand,
    Time,
    AmPm,
    Date,
    LayerCount
};

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

struct TextRow {
    const char *id;
    const char *themeColour;
    const char *alpha;
    const char *scale;
    double factor;
};
constexpr TextRow textRows[] = {
    {"logoTextItem", "logoColor", "logoOpacity", "logoScaleFactor", 0.040},
    {"clockNumberTextItem", "textColor", "digitalClockForegroundOpacity", "digitalClockScaleFactor",
        0.07},
    {"dateTextItem", "textColor", "dateForegroundOpacity", "dateScaleFactor", 0.06},
};

QColor colourOf(const QObject *object) { return object->property("color").value<QColor>(); }

// Documents hold colours in floating point, so what is compared is what reaches the screen.
QRgb rgbaOf(const QObject *object) { return colourOf(object).rgba(); }

// Where an item's centre lies off the face's centre, in parts of the side.
QPointF offsetOfCentre(const QQuickItem *item)
{
    const QQuickItem *face = item->parentItem();
    const QRectF rect(item->position(), item->size());
    return (rect.center() - QPointF(face->width(), face->height()) / 2) / face->width();
}

// A rectangle of \a item's own, which draws its ground.
QQuickItem *groundOf(const QQuickItem *item) { return item->childItems().value(0); }

} // namespace

class tst_BasicClock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void cleanup();

    void layersStandInOrder();
    void hasItsOwnProperties();
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
    void textsHaveTheirFont_data();
    void textsHaveTheirFont();
    void textsHaveTheirColour_data();
    void textsHaveTheirColour();
    void opaqueLogoFromSeeThroughThemeColour();
    void groundsHaveTheirColour();
    void textsAreThoseOfTheManager();
    void logoIsPlaced();
    void digitalTimeIsPlaced();
    void digitalTimeKeepsItsBox();
    void amPmTagIsPlaced();
    void amPmTagIsTwoThirdsOfTheTime();
    void dateIsPlaced();
    void zeroWidthGivesTwelvePoints();
    void worksWithoutObjects();
    void noObjectsGiveTheFallbacks();

private:
    void load(Documents::Context context);
    QQuickItem *layer(Layer which) const { return m_face->childItems().value(which); }
    QQuickItem *item(const char *id) const
    {
        return byId<QQuickItem>(m_face, QLatin1StringView(id));
    }

    std::unique_ptr<Documents> m_documents;
    std::unique_ptr<QQuickView> m_view;
    QQuickItem *m_face = nullptr; // owned by the view
};

void tst_BasicClock::init()
{
    failOnRealWarning();
    load(Documents::AllObjects);
}

void tst_BasicClock::load(Documents::Context context)
{
    cleanup();
    m_documents = std::make_unique<Documents>(context);
    m_view = std::make_unique<QQuickView>();
    m_face = m_documents->createFace(*m_view, side);
    QVERIFY(m_face);
}

void tst_BasicClock::cleanup()
{
    m_view.reset();
    m_documents.reset();
}

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
    QCOMPARE(m_face->property("imageSourceRatio").toReal(), std::max(1.0, 3 / ratio));
    QCOMPARE(colourOf(m_face), QColor(0, 0, 0, 0));
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

void tst_BasicClock::textsHaveTheirFont_data()
{
    QTest::addColumn<int>("row");
    for (int row = 0; row < 3; ++row)
        QTest::newRow(textRows[row].id) << row;
}

void tst_BasicClock::textsHaveTheirFont()
{
    QFETCH(int, row);
    const TextRow &text = textRows[row];
    const auto font = [&] { return item(text.id)->property("font").value<QFont>(); };
    QCOMPARE(font().family(), u"Yu Gothic UI"_s);
    QCOMPARE(font().weight(), QFont::Normal);
    QCOMPARE(font().pointSizeF(), side * text.factor);

    m_documents->config.setProperty(text.scale, 2.5);
    QCOMPARE(font().pointSizeF(), side * text.factor * 2.5);
    m_documents->config.setProperty(text.scale, 0.0);
    QCOMPARE(font().pointSizeF(), 12.0);
    m_documents->config.setProperty(text.scale, -1.0);
    QCOMPARE(font().pointSizeF(), 12.0);
    m_documents->config.setProperty(text.scale, 1.0);
    m_view->contentItem()->setWidth(100);
    QCOMPARE(font().pointSizeF(), 100 * text.factor);
}

void tst_BasicClock::textsHaveTheirColour_data() { textsHaveTheirFont_data(); }

void tst_BasicClock::textsHaveTheirColour()
{
    QFETCH(int, row);
    const TextRow &text = textRows[row];
    m_documents->theme.setProperty(text.themeColour, QColor(10, 20, 30, 128));
    m_documents->config.setProperty(text.alpha, 0.4);
    QCOMPARE(rgbaOf(item(text.id)), qRgba(10, 20, 30, 102));
    // Either half follows alone.
    m_documents->config.setProperty(text.alpha, 1.0);
    QCOMPARE(rgbaOf(item(text.id)), qRgba(10, 20, 30, 255));
    m_documents->theme.setProperty(text.themeColour, QColor(200, 100, 50, 0));
    QCOMPARE(rgbaOf(item(text.id)), qRgba(200, 100, 50, 255));
}

void tst_BasicClock::opaqueLogoFromSeeThroughThemeColour()
{
    m_documents->theme.setLogoColor(QColor::fromRgbF(0.9f, 0.9f, 0.9f, 0.5f));
    m_documents->config.setLogoOpacity(1.0);
    QCOMPARE(colourOf(item("logoTextItem")).alpha(), 255);
}

void tst_BasicClock::groundsHaveTheirColour()
{
    m_documents->theme.setTextBackColor(QColor(1, 2, 3, 200));
    m_documents->config.setDigitalClockBackgroundOpacity(0.2);
    m_documents->config.setDateBackgroundOpacity(0.8);
    QCOMPARE(rgbaOf(item("clockNumberRectItem")), qRgba(1, 2, 3, 51));
    QCOMPARE(rgbaOf(groundOf(layer(AmPm))), qRgba(1, 2, 3, 51));
    QCOMPARE(rgbaOf(groundOf(layer(Date))), qRgba(1, 2, 3, 204));
    QCOMPARE(rgbaOf(item("clockNumberAmPmTextItem")), rgbaOf(item("clockNumberTextItem")));
}

void tst_BasicClock::textsAreThoseOfTheManager()
{
    QCOMPARE(item("logoTextItem")->property("text"), QVariant(u"MARROWBY"_s));
    m_documents->manager.setProperty("timeText", u"12:34:56"_s);
    m_documents->manager.setProperty("dateText", u"Sunday, 1 March"_s);
    m_documents->manager.setProperty("amPmText", u"PM"_s);
    QCOMPARE(item("clockNumberTextItem")->property("text"), QVariant(u"12:34:56"_s));
    QCOMPARE(item("dateTextItem")->property("text"), QVariant(u"Sunday, 1 March"_s));
    QCOMPARE(item("clockNumberAmPmTextItem")->property("text"), QVariant(u"PM"_s));
}

// Text boxes snap to whole pixels, so places are right within one.
#define COMPARE_PLACE(actual, x_, y_)                                                              \
    QVERIFY2(QLineF(actual, QPointF(x_, y_)).length() * side <= 1.0,                               \
        qPrintable(QDebug::toString(actual)))

void tst_BasicClock::logoIsPlaced() { COMPARE_PLACE(offsetOfCentre(layer(Logo)), 0, -0.287); }

void tst_BasicClock::digitalTimeIsPlaced()
{
    const QQuickItem *box = layer(Time);
    COMPARE_PLACE(offsetOfCentre(box), -0.01, 0.18);
    const QFontMetricsF metrics(item("clockNumberTextItem")->property("font").value<QFont>());
    QVERIFY(qAbs(box->height() - metrics.height()) <= 1.0);

    const QQuickItem *ground = item("clockNumberRectItem");
    QCOMPARE(ground->width(), 1.09 * box->width());
    QCOMPARE(ground->height(), 0.81 * box->height());
    QCOMPARE(ground->y(), 0.8 * 0.15 * box->height());
    QVERIFY(qAbs(ground->x() + ground->width() / 2 - box->width() / 2) <= 1.0);

    const QQuickItem *text = item("clockNumberTextItem");
    const QRectF textRect = text->mapRectToItem(ground, QRectF({}, text->size()));
    const QPointF centre(ground->width() / 2, ground->height() / 2 - 0.01 * text->height());
    QVERIFY(QLineF(textRect.center(), centre).length() <= 1.5);
}

// Digits of other widths must not make the box jitter.
void tst_BasicClock::digitalTimeKeepsItsBox()
{
    const QSizeF size = layer(Time)->size();
    m_documents->manager.setProperty("timeText", u"11:11:11 and much more"_s);
    QCOMPARE(layer(Time)->size(), size);
    const QFont font = item("clockNumberTextItem")->property("font").value<QFont>();
    const qreal width = QFontMetricsF(font).boundingRect(u"00:00:00"_s).width();
    QVERIFY2(qAbs(size.width() - width) <= 1.0, qPrintable(QDebug::toString(size)));
}

void tst_BasicClock::amPmTagIsPlaced()
{
    const QQuickItem *tag = layer(AmPm);
    const QQuickItem *box = layer(Time);
    const QQuickItem *ground = item("clockNumberRectItem");
    const qreal margin = (ground->width() - box->width()) * 0.8;
    QCOMPARE(tag->x(), box->x() + box->width() + margin);
    const qreal boxCentre = box->y() + box->height() / 2;
    QVERIFY(qAbs(tag->y() + tag->height() / 2 - (boxCentre - 0.22 * ground->height())) <= 1.0);

    const QQuickItem *text = item("clockNumberAmPmTextItem");
    const QFontMetricsF metrics(text->property("font").value<QFont>());
    QCOMPARE(tag->width(), 1.3 * metrics.horizontalAdvance(u"AM"_s));
    QVERIFY(qAbs(tag->height() - text->height()) <= 1.0);
    QCOMPARE(groundOf(tag)->size(), tag->size());
    const QPointF centre = QRectF(text->position(), text->size()).center();
    QVERIFY(QLineF(centre, QPointF(tag->width() / 2, tag->height() / 2 - 0.01 * text->height()))
                .length()
        <= 1.5);
}

void tst_BasicClock::amPmTagIsTwoThirdsOfTheTime()
{
    const auto pixelSize = [this](const char *id) {
        const QFont font = item(id)->property("font").value<QFont>();
        return QFontInfo(font).pixelSize();
    };
    for (const double width : {320.0, 640.0}) {
        m_view->contentItem()->setWidth(width);
        const int expected = pixelSize("clockNumberTextItem") * 2 / 3;
        QVERIFY2(qAbs(pixelSize("clockNumberAmPmTextItem") - expected) <= 1,
            qPrintable(QString::number(pixelSize("clockNumberAmPmTextItem"))));
    }
    const QFont tag = item("clockNumberAmPmTextItem")->property("font").value<QFont>();
    QCOMPARE(tag.family(), u"Yu Gothic UI"_s);
    QCOMPARE(tag.weight(), QFont::Normal);
}

void tst_BasicClock::dateIsPlaced()
{
    m_documents->manager.setProperty("dateText", u"Sunday, 1 March"_s);
    const QQuickItem *box = layer(Date);
    COMPARE_PLACE(offsetOfCentre(box), 0.015, -0.13);
    const QQuickItem *text = item("dateTextItem");
    const QFontMetricsF metrics(text->property("font").value<QFont>());
    QCOMPARE(box->width(), 1.05 * metrics.horizontalAdvance(u"Sunday, 1 March"_s));
    QVERIFY(qAbs(box->height() - text->height()) <= 1.0);
    QCOMPARE(groundOf(box)->size(), box->size());
    const QPointF centre = QRectF(text->position(), text->size()).center();
    QVERIFY(QLineF(centre, QPointF(box->width(), box->height()) / 2).length() <= 1.0);
}

void tst_BasicClock::zeroWidthGivesTwelvePoints()
{
    m_view->contentItem()->setWidth(0);
    QCOMPARE(m_face->width(), 0.0);
    for (const TextRow &text : textRows)
        QCOMPARE(item(text.id)->property("font").value<QFont>().pointSizeF(), 12.0);
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
    for (const TextRow &text : textRows)
        QCOMPARE(item(text.id)->property("font").value<QFont>().pointSizeF(), side * text.factor);
    QCOMPARE(rgbaOf(item("logoTextItem")), QColor::fromRgbF(0.9f, 0.9f, 0.9f, 0.8f).rgba());
    const QRgb textColour = QColor::fromRgbF(0.8f, 0.8f, 0.8f, 0.7f).rgba();
    QCOMPARE(rgbaOf(item("clockNumberTextItem")), textColour);
    QCOMPARE(rgbaOf(item("dateTextItem")), textColour);
    const QRgb backColour = QColor::fromRgbF(0, 0, 0, 0.3f).rgba();
    QCOMPARE(rgbaOf(item("clockNumberRectItem")), backColour);
    QCOMPARE(rgbaOf(groundOf(layer(Date))), backColour);
    QCOMPARE(item("clockNumberTextItem")->property("text"), QVariant(u"00:00:00"_s));
    QCOMPARE(item("clockNumberAmPmTextItem")->property("text"), QVariant(u"AM"_s));
    QCOMPARE(item("dateTextItem")->property("text"), QVariant(QString()));
}

int main(int argc, char **argv) { return runQmlTest<tst_BasicClock>(argc, argv); }

#include "tst_basicclock.moc"
