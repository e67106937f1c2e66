// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Pictures of which only the filled part is painted: fewer pixels, the same look.

#include "qml/layertrimmer.h"
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

// The greatest difference of a channel of any pixel; 255 for pictures of two sizes.
int greatestDifference(const QImage &one, const QImage &other)
{
    if (one.size() != other.size())
        return 255;
    int greatest = 0;
    for (int y = 0; y < one.height(); ++y) {
        for (int x = 0; x < one.width(); ++x) {
            const QRgb a = one.pixel(x, y);
            const QRgb b = other.pixel(x, y);
            greatest = std::max({greatest, std::abs(qRed(a) - qRed(b)),
                std::abs(qGreen(a) - qGreen(b)), std::abs(qBlue(a) - qBlue(b))});
        }
    }
    return greatest;
}

enum class Trimming { Off, On };

// A layer of a tone, turned.
QImage painted(const QString &layer, double angleDegrees, Trimming trimming)
{
    QQuickView view;
    if (trimming == Trimming::On)
        new LayerTrimmer(&view);
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
    return QTest::qWaitForWindowExposed(&view) ? view.grabWindow() : QImage();
}

} // namespace

class TestLayerTrimmer : public QObject
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
};

void TestLayerTrimmer::findsWhatIsFilled_data()
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

void TestLayerTrimmer::findsWhatIsFilled()
{
    QFETCH(QImage, picture);
    QFETCH(QRectF, part);

    QCOMPARE(LayerTrimmer::filledPart(picture), part);
}

void TestLayerTrimmer::looksLikeAnImage_data()
{
    QTest::addColumn<QString>("layer");
    QTest::addColumn<double>("angleDegrees");

    for (const char *layer : {"dial", "hand_hour", "hand_minute", "hand_second"}) {
        for (const double angle : {0.0, 6.0, 41.0, 90.0, 222.0})
            QTest::addRow("%s at %.0f", layer, angle) << QString::fromLatin1(layer) << angle;
    }
}

void TestLayerTrimmer::looksLikeAnImage()
{
    QFETCH(QString, layer);
    QFETCH(double, angleDegrees);

    const QImage trimmed = painted(layer, angleDegrees, Trimming::On);
    QVERIFY(!trimmed.isNull());
    QCOMPARE_LE(greatestDifference(trimmed, painted(layer, angleDegrees, Trimming::Off)), rounding);
    QCOMPARE_GT(
        greatestDifference(trimmed, painted(layer, angleDegrees + 3, Trimming::Off)), rounding);
}

void TestLayerTrimmer::handsPaintLittle_data()
{
    QTest::addColumn<double>("opacity"); // of what lies behind them
    QTest::addColumn<bool>("isLittle");

    QTest::newRow("on the plate") << 0.7 << true;
    QTest::newRow("alone") << 0.0 << false;
}

void TestLayerTrimmer::handsPaintLittle()
{
    QFETCH(double, opacity);
    QFETCH(bool, isLittle);

    Documents documents(Documents::AllObjects);
    documents.config.setBackgroundOpacity(opacity);
    documents.config.setBackgroundImageOpacity(opacity);
    documents.config.setFaceOpacity(opacity);
    QQuickView view;
    view.resize(320, 320);
    const LayerTrimmer &trimmer = *new LayerTrimmer(&view);
    QQuickItem *face = documents.createFace(view, 320);
    QVERIFY(face);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    const QList<QQuickItem *> layers = face->childItems();
    for (QQuickItem *layer : layers) {
        if (const auto *image = qobject_cast<QQuickImage *>(layer))
            QTRY_COMPARE(image->status(), QQuickImage::Ready);
    }
    QVERIFY(!view.grabWindow().isNull());
    for (const char *hand : {"handHour", "handMinute", "handSecond"}) {
        const auto *item = byId<QQuickImage>(face, QString::fromLatin1(hand));
        QVERIFY(item);
        const QRectF painted = trimmer.paintedPart(item);
        qInfo("%s paints %.0f x %.0f of 320 x 320", hand, painted.width(), painted.height());
        if (isLittle)
            QCOMPARE_LT(painted.width() * painted.height(), 0.1 * 320 * 320);
        else
            QCOMPARE(painted, QRectF(0, 0, 320, 320));
        QCOMPARE_GT(painted.width() * painted.height(), 0.0);
    }
}

int main(int argc, char **argv) { return runQmlTest<TestLayerTrimmer>(argc, argv); }
#include "tst_layertrimmer.moc"
