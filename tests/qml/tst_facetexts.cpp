// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The texts of the clock face.

#include "tests/qml/facetest.h"

#include <QtGui/qfontmetrics.h>

using namespace Qt::StringLiterals;

namespace
{

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

class tst_FaceTexts : public FaceTest
{
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        failOnRealWarning();
        load(Documents::AllObjects);
    }
    void cleanup() { unload(); }

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
    void noObjectsGiveTheFallbacks();
    void noConfigurationKeepsTheColoursOfTheTheme();
};

void tst_FaceTexts::textsHaveTheirFont_data()
{
    QTest::addColumn<int>("row");
    for (int row = 0; row < 3; ++row)
        QTest::newRow(textRows[row].id) << row;
}

void tst_FaceTexts::textsHaveTheirFont()
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

void tst_FaceTexts::textsHaveTheirColour_data() { textsHaveTheirFont_data(); }

void tst_FaceTexts::textsHaveTheirColour()
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

void tst_FaceTexts::opaqueLogoFromSeeThroughThemeColour()
{
    m_documents->theme.setLogoColor(QColor::fromRgbF(0.9f, 0.9f, 0.9f, 0.5f));
    m_documents->config.setLogoOpacity(1.0);
    QCOMPARE(qAlpha(rgbaOf(item("logoTextItem"))), 255);
}

void tst_FaceTexts::groundsHaveTheirColour()
{
    m_documents->theme.setTextBackColor(QColor(1, 2, 3, 200));
    m_documents->config.setDigitalClockBackgroundOpacity(0.2);
    m_documents->config.setDateBackgroundOpacity(0.8);
    QCOMPARE(rgbaOf(item("clockNumberRectItem")), qRgba(1, 2, 3, 51));
    QCOMPARE(rgbaOf(groundOf(layer(AmPm))), qRgba(1, 2, 3, 51));
    QCOMPARE(rgbaOf(groundOf(layer(Date))), qRgba(1, 2, 3, 204));
    QCOMPARE(rgbaOf(item("clockNumberAmPmTextItem")), rgbaOf(item("clockNumberTextItem")));
}

void tst_FaceTexts::textsAreThoseOfTheManager()
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

void tst_FaceTexts::logoIsPlaced() { COMPARE_PLACE(offsetOfCentre(layer(Logo)), 0, -0.287); }

void tst_FaceTexts::digitalTimeIsPlaced()
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
void tst_FaceTexts::digitalTimeKeepsItsBox()
{
    const QSizeF size = layer(Time)->size();
    m_documents->manager.setProperty("timeText", u"11:11:11 and much more"_s);
    QCOMPARE(layer(Time)->size(), size);
    const QFont font = item("clockNumberTextItem")->property("font").value<QFont>();
    const qreal width = QFontMetricsF(font).boundingRect(u"00:00:00"_s).width();
    QVERIFY2(qAbs(size.width() - width) <= 1.0, qPrintable(QDebug::toString(size)));
}

void tst_FaceTexts::amPmTagIsPlaced()
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

void tst_FaceTexts::amPmTagIsTwoThirdsOfTheTime()
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

void tst_FaceTexts::dateIsPlaced()
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

void tst_FaceTexts::zeroWidthGivesTwelvePoints()
{
    m_view->contentItem()->setWidth(0);
    QCOMPARE(m_face->width(), 0.0);
    for (const TextRow &text : textRows)
        QCOMPARE(item(text.id)->property("font").value<QFont>().pointSizeF(), 12.0);
}

void tst_FaceTexts::noObjectsGiveTheFallbacks()
{
    load(Documents::NoObjects);
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

// With their own alpha, which no setting replaces.
void tst_FaceTexts::noConfigurationKeepsTheColoursOfTheTheme()
{
    m_documents->theme.setLogoColor(QColor(10, 20, 30, 128));
    m_documents->theme.setTextColor(QColor(40, 50, 60, 64));
    m_documents->theme.setTextBackColor(QColor(70, 80, 90, 32));
    m_face->setProperty("cfg", QVariant::fromValue<QObject *>(nullptr));
    QCOMPARE(rgbaOf(item("logoTextItem")), qRgba(10, 20, 30, 128));
    QCOMPARE(rgbaOf(item("clockNumberTextItem")), qRgba(40, 50, 60, 64));
    QCOMPARE(rgbaOf(item("dateTextItem")), qRgba(40, 50, 60, 64));
    QCOMPARE(rgbaOf(item("clockNumberRectItem")), qRgba(70, 80, 90, 32));
    QCOMPARE(rgbaOf(groundOf(layer(Date))), qRgba(70, 80, 90, 32));
    for (const TextRow &text : textRows)
        QCOMPARE(item(text.id)->property("font").value<QFont>().pointSizeF(), side * text.factor);
}

int main(int argc, char **argv) { return runQmlTest<tst_FaceTexts>(argc, argv); }

#include "tst_facetexts.moc"
