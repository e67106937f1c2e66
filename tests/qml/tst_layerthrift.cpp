// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Pictures of which only the filled part is painted or held, or pixels that are kept: less work and
// memory, the same look.

#include "qml/layerthrift.h"
#include "qml/picturepart.h"
#include "tests/pixeldifference.h"
#include "tests/qml/documents.h"

#include <QtCore/qthread.h>
#include <QtGui/qpainter.h>
#include <QtQuick/private/qquickimage_p.h>
#include <QtQuick/qquickimageprovider.h>
#include <QtTest/qsignalspy.h>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace
{

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

// Pictures that take two seconds to come.
class SlowPictures : public QQuickImageProvider
{
public:
    SlowPictures()
        : QQuickImageProvider(QQuickImageProvider::Image)
    {
    }
    QImage requestImage(const QString &, QSize *, const QSize &) override
    {
        QThread::sleep(2s);
        QImage picture(8, 8, QImage::Format_RGB32);
        picture.fill(Qt::red);
        return picture;
    }
};

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
    QList<QQuickImage *> hands() const { return layers().last(3); }
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

    // Waits until the hands' pictures are cut.
    bool isCutAtRest()
    {
        const auto isCut = [this] { return cut().last(3) == QList<bool>(3, true); };
        return QTest::qWaitFor([this] { return isLoaded(); }) && !frame().isNull()
            && QTest::qWaitFor(isCut);
    }

    // Below the hands.
    std::unique_ptr<QQuickImage> createSlowImage()
    {
        m_view.engine()->addImageProvider(u"slow"_s, new SlowPictures); // which the engine owns
        QQmlComponent component(m_view.engine());
        component.setData(
            R"(import QtQuick
            Image { z: -1; width: 8; height: 8; asynchronous: true; source: "image://slow/picture" })",
            {});
        std::unique_ptr<QQuickImage> image(qobject_cast<QQuickImage *>(component.create()));
        if (image)
            image->setParentItem(m_view.contentItem());
        return image;
    }

    void turnHands(double degrees)
    {
        for (QQuickImage *hand : hands())
            hand->setRotation(hand->rotation() + degrees);
    }
    void setSide(double side) { m_view.contentItem()->setSize({side, side}); }
    QQuickWindow *window() { return &m_view; }
    QImage frame() { return m_view.grabWindow(); }
    QImage settled() { return settledPicture(m_view); }

    Documents documents{Documents::AllObjects};

private:
    QQuickView m_view;
    LayerThrift *m_thrift = nullptr;
    QQuickItem *m_face;
};

using Change = void (*)(Face &);

} // namespace

class TestLayerThrift : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnRealWarning(); }
    void looksLikeAnImage_data();
    void looksLikeAnImage();
    void handsPaintLittle_data();
    void handsPaintLittle();
    void keepsWhatStands();
    void keepsNothingWhileResized();
    void keptPixelsLookLikeImages();
    void cutsHandsAtRest();
    void doesNotGoOnCutting();
    void cutsWhenTheLastPictureHasCome();
    void cutHandsLookLikeImages_data();
    void cutHandsLookLikeImages();
};

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
    for (QQuickImage *hand : face.hands()) {
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
    for (QQuickImage *layer : face.hands())
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
        // Nor in a second frame, of pictures that the next ones will replace.
        face.frame();
        QVERIFY(!face.isLoaded());
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
        for (QQuickImage *layer : each->hands())
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

void TestLayerThrift::cutsHandsAtRest()
{
    const QList<bool> none(6, false);
    const QList<bool> hands{false, false, false, true, true, true};
    Face face(Thrift::On);
    QTRY_VERIFY(face.isLoaded());
    face.frame();
    QVERIFY(face.isCutAtRest());
    QCOMPARE(face.cut(), hands);
    for (const QQuickImage *hand : face.hands()) {
        const QRectF held = PicturePart::held(hand->image());
        QCOMPARE_LT(held.width() * held.height(), 0.1);
    }
    face.setSide(200);
    face.frame();
    QCOMPARE(face.cut(), hands); // until the next pictures are there
    QTRY_VERIFY(face.isLoaded());
    QCOMPARE(face.cut(), none);
    QVERIFY(face.isCutAtRest());
}

void TestLayerThrift::doesNotGoOnCutting()
{
    Face face(Thrift::On);
    QVERIFY(face.isCutAtRest());
    const QImage picture = face.hands().first()->image();
    const QSignalSpy frames(face.window(), &QQuickWindow::frameSwapped);
    QTest::qWait(2500);
    QCOMPARE(face.hands().first()->image().cacheKey(), picture.cacheKey());
    QCOMPARE_LE(frames.size(), 1); // what the cut has left to paint
}

void TestLayerThrift::cutsWhenTheLastPictureHasCome()
{
    Face face(Thrift::On);
    QTRY_VERIFY(face.isLoaded());
    const auto slow = face.createSlowImage();
    QVERIFY(slow);
    face.frame();
    QTest::qWait(1200); // more than the hands have to rest
    QCOMPARE(slow->status(), QQuickImage::Loading);
    QVERIFY(!face.cut().contains(true));
    QTRY_COMPARE(slow->status(), QQuickImage::Ready);
    QTRY_COMPARE(face.cut().last(3), QList<bool>(3, true));
}

void TestLayerThrift::cutHandsLookLikeImages_data()
{
    QTest::addColumn<Change>("change");

    QTest::newRow("as they come") << +[](Face &) { };
    QTest::newRow("turned") << +[](Face &face) { face.turnHands(41); };
    QTest::newRow("other tone") << +[](Face &face) {
        face.documents.theme.changeColorTone(u"Basic"_s, u"LightRed"_s);
        face.turnHands(7);
    };
    QTest::newRow("other size") << +[](Face &face) { face.setSide(211); };
    QTest::newRow("alone, where all of their area is painted")
        << +[](Face &face) { face.setOpacityBehindHands(0); };
}

void TestLayerThrift::cutHandsLookLikeImages()
{
    QFETCH(Change, change);

    Face face(Thrift::On);
    Face plain(Thrift::Off);
    const auto looksLikePlain
        = [&] { return greatestDifference(face.settled(), plain.settled()) <= rounding; };
    QVERIFY(face.isCutAtRest());
    QTRY_VERIFY(plain.isLoaded());
    change(face);
    change(plain);
    QVERIFY(QTest::qWaitFor([&] { return face.isLoaded() && plain.isLoaded(); }));
    QVERIFY(looksLikePlain());
    QVERIFY(face.isCutAtRest());
    QVERIFY(looksLikePlain());
    face.turnHands(3);
    QVERIFY(!looksLikePlain());
}

int main(int argc, char **argv) { return runQmlTest<TestLayerThrift>(argc, argv); }
#include "tst_layerthrift.moc"
