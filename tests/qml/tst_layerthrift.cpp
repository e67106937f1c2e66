// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Pictures of which only the filled part is painted, or pixels that are kept: less work, the same
// look.

#include "qml/layerthrift.h"
#include "tests/pixeldifference.h"
#include "tests/qml/documents.h"

#include <QtGui/qpainter.h>
#include <QtQuick/private/qquickimage_p.h>

using namespace Qt::StringLiterals;

namespace
{

constexpr double room = 1.0 / 64; // about the filled part, where the picture goes that far

QImage clearPicture(QSize size)
{
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    return picture;
}

QImage pictureWith(QSize size, QRect filled)
{
    QImage picture = clearPicture(size);
    QPainter(&picture).fillRect(filled, QColor(200, 100, 50, 1));
    return picture;
}

// Qt's painter goes through a turned picture in steps that it rounds, from the corner of what is
// painted. Of 255, at the steepest edges.
constexpr int rounding = 16;

// Pixels that are kept are those that Qt would have painted.
constexpr int rest = 1;

enum class Thrift { Off, On };

// The picture after as many frames as it takes to keep pixels.
QImage settledPicture(QQuickWindow &window)
{
    window.grabWindow();
    window.grabWindow();
    return window.grabWindow();
}

// A layer of a tone, turned.
QImage painted(const QString &layer, double angleDegrees, Thrift thrift)
{
    QQuickView view;
    if (thrift == Thrift::On)
        new LayerThrift(&view);
    view.setColor(Qt::gray);
    view.resize(320, 320);
    QQmlComponent component(view.engine());
    component.setData(R"(import QtQuick
        Item {
            property alias source: layer.source
            property alias angle: layer.rotation
            component Layer: Image { x: 1 / 6; y: x; width: 320; height: 320; sourceSize: Qt.size(960, 960) }
            Layer { source: "qrc:/themes/basic/dark_gray/clock_base.svg" }
            Layer { id: layer }
        })",
        {});
    std::unique_ptr<QObject> made(component.createWithInitialProperties(
        {{u"source"_s, QVariant(u"qrc:/themes/basic/dark_gray/clock_%1.svg"_s.arg(layer))},
            {u"angle"_s, angleDegrees}}));
    auto *item = qobject_cast<QQuickItem *>(made.get());
    if (!item)
        return {};
    item->setParentItem(view.contentItem());
    view.show();
    return QTest::qWaitForWindowExposed(&view) ? settledPicture(view) : QImage();
}

// The clock face in a window of 320 pixels.
class Face
{
public:
    explicit Face(Thrift thrift)
    {
        if (thrift == Thrift::On)
            m_thrift = new LayerThrift(&m_view);
        m_view.setColor(Qt::gray);
        m_view.resize(320, 320);
        m_face = documents.createFace(m_view, 320);
        if (!m_face)
            qFatal("the clock face does not load");
        m_view.show();
        if (!QTest::qWaitForWindowExposed(&m_view))
            qFatal("the window does not appear");
    }

    QList<QQuickImage *> layers() const
    {
        QList<QQuickImage *> result;
        for (QQuickItem *item : m_face->childItems()) {
            if (auto *image = qobject_cast<QQuickImage *>(item))
                result << image;
        }
        return result;
    }
    QList<bool> kept() const
    {
        QList<bool> result;
        for (const QQuickImage *layer : layers())
            result << m_thrift->isKept(layer);
        return result;
    }
    QList<bool> cut() const
    {
        QList<bool> result;
        for (const QQuickImage *layer : layers())
            result << m_thrift->isCut(layer);
        return result;
    }
    double paintedShare(QQuickImage *layer) const
    {
        const QSizeF painted = m_thrift->paintedPart(layer).size();
        return painted.width() * painted.height() / (layer->width() * layer->height());
    }
    void setOpacityBehindHands(double opacity)
    {
        documents.config.setBackgroundOpacity(opacity);
        documents.config.setBackgroundImageOpacity(opacity);
        documents.config.setFaceOpacity(opacity);
    }
    bool isLoaded() const
    {
        const auto isReady
            = [](const QQuickImage *layer) { return layer->status() == QQuickImage::Ready; };
        return std::ranges::all_of(layers(), isReady);
    }

    void setSide(double side) { m_view.contentItem()->setSize({side, side}); }
    QImage frame() { return m_view.grabWindow(); }
    QImage settled() { return settledPicture(m_view); }

    Documents documents{Documents::AllObjects};

private:
    QQuickView m_view;
    LayerThrift *m_thrift = nullptr;
    QQuickItem *m_face;
};

} // namespace

class TestLayerThrift : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnRealWarning(); }
    void findsWhatIsFilled_data();
    void findsWhatIsFilled();
    void looksLikeAnImage_data();
    void looksLikeAnImage();
    void handsPaintLittle_data();
    void handsPaintLittle();
    void keepsWhatStands();
    void keepsNothingWhileResized();
    void keptPixelsLookLikeImages();
    void cutsPicturesAtRest();
    void cutPicturesLookLikeImages();
};

void TestLayerThrift::findsWhatIsFilled_data()
{
    QTest::addColumn<QImage>("picture");
    QTest::addColumn<QRectF>("part");

    const QRectF whole(0, 0, 1, 1);
    const QRectF middle(0.25, 0.5, 0.25, 0.125);
    constexpr QSize size(640, 640);
    QTest::newRow("no picture") << QImage() << whole;
    QTest::newRow("clear") << clearPicture(size) << whole;
    QTest::newRow("full") << pictureWith(size, QRect({}, size)) << whole;
    QTest::newRow("a part, the faintest")
        << pictureWith(size, QRect(160, 320, 160, 80)) << middle.adjusted(-room, -room, room, room);
    QTest::newRow("one pixel in a corner") << pictureWith(size,
        QRect(639, 0, 1, 1)) << QRectF(639.0 / 640 - room, 0, 1.0 / 640 + room, 1.0 / 640 + room);
    QTest::newRow("not square") << pictureWith({640, 80}, QRect(160, 40, 160, 10))
                                << middle.adjusted(-room, -room, room, room);
    QTest::newRow("large, on lines that are passed over")
        << pictureWith({4096, 4096}, QRect(1024, 2043, 1024, 517))
        << QRectF(0.25, 2048.0 / 4096, 0.25, 505.0 / 4096).adjusted(-room, -room, room, room);
    QTest::newRow("other format")
        << pictureWith(size, QRect(160, 320, 160, 80)).convertToFormat(QImage::Format_RGBA8888)
        << middle.adjusted(-room, -room, room, room);
}

void TestLayerThrift::findsWhatIsFilled()
{
    QFETCH(QImage, picture);
    QFETCH(QRectF, part);

    QCOMPARE(LayerThrift::filledPart(picture), part);
}

void TestLayerThrift::looksLikeAnImage_data()
{
    QTest::addColumn<QString>("layer");
    QTest::addColumn<double>("angleDegrees");

    for (const char *layer : {"dial", "hand_hour", "hand_minute", "hand_second"}) {
        for (const double angle : {0.0, 6.0, 41.0, 90.0, 222.0})
            QTest::addRow("%s at %.0f", layer, angle) << QString::fromLatin1(layer) << angle;
    }
}

void TestLayerThrift::looksLikeAnImage()
{
    QFETCH(QString, layer);
    QFETCH(double, angleDegrees);

    const QImage cut = painted(layer, angleDegrees, Thrift::On);
    QVERIFY(!cut.isNull());
    QCOMPARE_LE(greatestDifference(cut, painted(layer, angleDegrees, Thrift::Off)), rounding);
    QCOMPARE_GT(greatestDifference(cut, painted(layer, angleDegrees + 3, Thrift::Off)), rounding);
}

void TestLayerThrift::handsPaintLittle_data()
{
    QTest::addColumn<double>("opacity"); // of what lies behind them
    QTest::addColumn<bool>("isLittle");

    QTest::newRow("on the plate") << 0.7 << true;
    QTest::newRow("alone") << 0.0 << false;
}

void TestLayerThrift::handsPaintLittle()
{
    QFETCH(double, opacity);
    QFETCH(bool, isLittle);

    Face face(Thrift::On);
    face.setOpacityBehindHands(opacity);
    QTRY_VERIFY(face.isLoaded());
    face.frame();
    for (QQuickImage *hand : face.layers().last(3)) {
        const double share = face.paintedShare(hand);
        qInfo("a hand paints %.3f of its area", share);
        QCOMPARE_GT(share, 0);
        if (isLittle)
            QCOMPARE_LT(share, 0.1);
        else
            QCOMPARE(share, 1);
    }
}

void TestLayerThrift::keepsWhatStands()
{
    Face face(Thrift::On);
    QTRY_VERIFY(face.isLoaded());
    face.settled();
    // Base, background and dial; the hands in the test's standstill would be, too.
    for (QQuickImage *layer : face.layers().last(3))
        layer->setRotation(6);
    face.frame();
    QCOMPARE(face.kept(), QList<bool>({true, true, true, false, false, false}));
}

void TestLayerThrift::keepsNothingWhileResized()
{
    Face face(Thrift::On);
    QTRY_VERIFY(face.isLoaded());
    face.settled();
    for (const double side : {300.0, 280.0}) {
        face.setSide(side);
        face.frame();
        QVERIFY(!face.kept().contains(true));
    }
    QTRY_VERIFY(face.isLoaded());
    face.settled();
    QVERIFY(face.kept().first(3) == QList<bool>(3, true));
}

void TestLayerThrift::keptPixelsLookLikeImages()
{
    Face face(Thrift::On);
    Face plain(Thrift::Off);
    const auto looksLikePlain
        = [&] { return greatestDifference(face.settled(), plain.settled()) <= rest; };
    const auto isLoaded = [&] { return face.isLoaded() && plain.isLoaded(); };
    // The hands would be turned, and differ by more.
    for (Face *each : {&face, &plain}) {
        for (QQuickImage *layer : each->layers().last(3))
            layer->setVisible(false);
    }
    QTRY_VERIFY(isLoaded());
    QVERIFY(looksLikePlain());
    face.documents.theme.changeColorTone(u"Basic"_s, u"LightRed"_s);
    QTRY_VERIFY(isLoaded());
    QVERIFY(!looksLikePlain());
    plain.documents.theme.changeColorTone(u"Basic"_s, u"LightRed"_s);
    QTRY_VERIFY(isLoaded());
    QVERIFY(looksLikePlain());
    for (Face *each : {&face, &plain})
        each->setSide(211);
    QTRY_VERIFY(isLoaded());
    QVERIFY(looksLikePlain());
    for (Face *each : {&face, &plain})
        each->documents.config.setFaceOpacity(0.4);
    QVERIFY(looksLikePlain());
    for (Face *each : {&face, &plain})
        each->layers().first()->setX(20.5);
    QVERIFY(looksLikePlain());
    for (Face *each : {&face, &plain})
        each->layers().first()->setRotation(20);
    QVERIFY(greatestDifference(face.settled(), plain.settled()) <= rounding);
}

void TestLayerThrift::cutsPicturesAtRest()
{
    const QList<bool> none(6, false);
    const QList<bool> cut{false, true, true, true, true, true}; // the base fills its own
    Face face(Thrift::On);
    QTRY_VERIFY(face.isLoaded());
    face.frame();
    QCOMPARE(face.cut(), none);
    QTRY_COMPARE(face.cut(), cut);
    for (const QQuickImage *hand : face.layers().last(3)) {
        const QImage picture = hand->image();
        QCOMPARE_LT(picture.width() * picture.height(), 0.1 * 960 * 960);
        QCOMPARE(hand->sourceSize(), QSize(960, 960));
    }
    face.setSide(200);
    face.frame();
    QCOMPARE(face.cut(), cut); // until the next pictures are there
    QTRY_VERIFY(face.isLoaded());
    QCOMPARE(face.cut(), none);
    face.frame();
    QTRY_COMPARE(face.cut(), cut);
}

void TestLayerThrift::cutPicturesLookLikeImages()
{
    Face face(Thrift::On);
    Face plain(Thrift::Off);
    const auto isAtRest = [&] {
        return QTest::qWaitFor([&] { return face.isLoaded() && plain.isLoaded(); })
            && !face.frame().isNull()
            && QTest::qWaitFor([&] { return face.cut().count(true) == 5; });
    };
    const auto looksLikePlain
        = [&] { return greatestDifference(face.settled(), plain.settled()) <= rounding; };
    const auto turnHands = [&](double degrees) {
        for (Face *each : {&face, &plain}) {
            for (QQuickImage *hand : each->layers().last(3))
                hand->setRotation(hand->rotation() + degrees);
        }
    };
    for (const double degrees : {0.0, 7.0, 41.0}) {
        QVERIFY(isAtRest());
        turnHands(degrees);
        QVERIFY(looksLikePlain());
    }
    for (QQuickImage *hand : face.layers().last(3))
        hand->setRotation(hand->rotation() + 3);
    QVERIFY(!looksLikePlain());
    for (QQuickImage *hand : plain.layers().last(3))
        hand->setRotation(hand->rotation() + 3);
    for (Face *each : {&face, &plain})
        each->documents.theme.changeColorTone(u"Basic"_s, u"LightRed"_s);
    QVERIFY(isAtRest());
    QVERIFY(looksLikePlain());
    for (Face *each : {&face, &plain})
        each->setSide(211);
    QVERIFY(looksLikePlain()); // while the next pictures are loading
    QVERIFY(isAtRest());
    QVERIFY(looksLikePlain());
    for (Face *each : {&face, &plain})
        each->setOpacityBehindHands(0);
    QVERIFY(looksLikePlain()); // where all of a hand's area is painted
}

int main(int argc, char **argv) { return runQmlTest<TestLayerThrift>(argc, argv); }
#include "tst_layerthrift.moc"
