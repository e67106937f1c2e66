// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The edges of turned hands, as smooth as the renderer makes them: beside the same hand drawn four
// times as large, turned and made small by taking averages.

#include "qml/layerthrift.h"
#include "tests/qml/documents.h"

#include <QtGui/qimagereader.h>
#include <QtGui/qpainter.h>
#include <QtQuick/private/qquickimage_p.h>

#include <cmath>

using namespace Qt::StringLiterals;

namespace
{

constexpr int side = 320;
constexpr double mostDifference = 8; // of 255, on the mean of the edge's pixels
constexpr QColor ground(128, 128, 128);

constexpr double angles[] = {7, 22, 41}; // degrees, clockwise

// By hand and not by QImage's smooth scaling, which is part of what is looked at.
QImage meanOf(const QImage &large, int factor)
{
    QImage small(large.size() / factor, QImage::Format_RGB32);
    for (int y = 0; y < small.height(); ++y) {
        for (int x = 0; x < small.width(); ++x) {
            int red = 0, green = 0, blue = 0;
            for (int i = 0; i < factor * factor; ++i) {
                const QRgb pixel = large.pixel(x * factor + i % factor, y * factor + i / factor);
                red += qRed(pixel);
                green += qGreen(pixel);
                blue += qBlue(pixel);
            }
            const int count = factor * factor;
            small.setPixel(x, y, qRgb(red / count, green / count, blue / count));
        }
    }
    return small;
}

QImage reference(const QString &file, double angleDegrees, int pixels)
{
    constexpr int factor = 4;
    QImageReader reader(file);
    reader.setScaledSize(QSize(pixels, pixels) * factor);
    const QImage hand = reader.read();
    QImage large(hand.size(), QImage::Format_RGB32);
    large.fill(ground);
    QPainter painter(&large);
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    const double middle = large.width() / 2.0;
    const double aside = pixels == side ? factor / 6.0 : 0; // as every layer stands at ratio 1
    painter.translate(middle + aside, middle + aside);
    painter.rotate(angleDegrees);
    painter.drawImage(QPointF(-middle, -middle), hand);
    painter.end();
    return meanOf(large, factor);
}

// The mean difference of a channel, over the pixels that the edge of the hand crosses in either.
double edgeDifference(const QImage &seen, const QImage &expected)
{
    const auto steepness = [](const QImage &image, int x, int y) {
        const QRgb here = image.pixel(x, y);
        const QRgb right = image.pixel(x + 1, y);
        const QRgb below = image.pixel(x, y + 1);
        return std::max(std::abs(qGray(here) - qGray(right)), std::abs(qGray(here) - qGray(below)));
    };
    constexpr int edge = 12;
    double sum = 0;
    qint64 count = 0;
    for (int y = 0; y + 1 < seen.height(); ++y) {
        for (int x = 0; x + 1 < seen.width(); ++x) {
            if (std::max(steepness(seen, x, y), steepness(expected, x, y)) < edge)
                continue;
            const QRgb a = seen.pixel(x, y);
            const QRgb b = expected.pixel(x, y);
            sum += std::abs(qRed(a) - qRed(b)) + std::abs(qGreen(a) - qGreen(b))
                + std::abs(qBlue(a) - qBlue(b));
            count += 3;
        }
    }
    return count > 0 ? sum / double(count) : 255;
}

} // namespace

class TestHandEdges : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { failOnRealWarning(); }
    void areSmooth_data();
    void areSmooth();
};

void TestHandEdges::areSmooth_data()
{
    QTest::addColumn<QByteArray>("hand"); // its id, and its picture's name in the theme
    QTest::addColumn<bool>("isCut");

    for (const char *hand : {"handHour", "handMinute", "handSecond"}) {
        QTest::addRow("%s", hand) << QByteArray(hand) << false;
        QTest::addRow("%s, cut", hand) << QByteArray(hand) << true;
    }
}

void TestHandEdges::areSmooth()
{
    QFETCH(QByteArray, hand);
    QFETCH(bool, isCut);

    Documents documents(Documents::AllObjects);
    QQuickView view;
    const auto *thrift = isCut ? new LayerThrift(&view) : nullptr;
    view.setColor(ground);
    view.resize(side, side);
    QQuickItem *face = documents.createFace(view, side);
    QVERIFY(face);
    const QList<QQuickItem *> layers = face->childItems();
    for (QQuickItem *layer : layers)
        layer->setVisible(false);
    auto *item = byId<QQuickImage>(face, QString::fromLatin1(hand));
    QVERIFY(item);
    item->setVisible(true);
    view.show();
    QVERIFY(QTest::qWaitForWindowExposed(&view));
    if (thrift)
        QTRY_VERIFY(thrift->isCut(item));

    const QString file = documents.theme.property(hand.constData()).toUrl().toString().mid(3);
    double sum = 0;
    for (const double angle : angles) {
        QVERIFY(QMetaObject::invokeMethod(item, "setAngle", QVariant(angle)));
        const QImage seen = view.grabWindow().convertToFormat(QImage::Format_RGB32);
        const double difference = edgeDifference(seen, reference(file, angle, seen.width()));
        qInfo("at %.0f degrees the edge differs by %.1f of 255", angle, difference);
        sum += difference;
    }
    QCOMPARE_LE(sum / double(std::size(angles)), mostDifference);
}

int main(int argc, char **argv) { return runQmlTest<TestHandEdges>(argc, argv); }
#include "tst_handedges.moc"
