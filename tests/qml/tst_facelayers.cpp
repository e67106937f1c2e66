// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/qml/documents.h"

#include <QtCore/qregularexpression.h>
#include <QtGui/qscreen.h>

#include <private/qquickimagebase_p.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

constexpr int maximumBytes = 256 * 1024 * 1024; // Qt loads no larger image

bool hasPaint(const QImage &image)
{
    for (int y = 0; y < image.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(image.constScanLine(y));
        if (std::any_of(line, line + image.width(), [](QRgb pixel) { return qAlpha(pixel) != 0; }))
            return true;
    }
    return false;
}

} // namespace

/// Every layer at every size that the clock can have. The screen's pixel ratio comes from outside.
class tst_FaceLayers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void layersHaveAPicture_data();
    void layersHaveAPicture();
    void unboundedLayerHasNone();
};

void tst_FaceLayers::layersHaveAPicture_data()
{
    QTest::addColumn<QString>("layer");
    QTest::addColumn<int>("index"); // among the face's children
    QTest::addColumn<int>("side");

    constexpr std::pair<QLatin1StringView, int> layers[] = {{"base"_L1, 0}, {"background"_L1, 1},
        {"dial"_L1, 2}, {"handHour"_L1, 4}, {"handMinute"_L1, 5}, {"handSecond"_L1, 6}};
    for (const auto &[layer, index] : layers) {
        // From 2731 on all pictures are the largest that there can be: one of each kind will do.
        const bool hasTwin = layer == "background"_L1 || layer == "handMinute"_L1;
        for (const int side : {72, 320, 1080, 1820, 2730, 2731, 4320, 7680}) {
            if (side > 2731 && hasTwin)
                continue;
            QTest::addRow("%s, %d", layer.data(), side) << QString(layer) << index << side;
        }
    }
}

void tst_FaceLayers::layersHaveAPicture()
{
    failOnRealWarning();
    QFETCH(QString, layer);
    QFETCH(int, index);
    QFETCH(int, side);

    // A theme with this one layer: six of the largest would not fit into the memory.
    Documents documents(Documents::AllObjects);
    QVariantMap oneLayer;
    for (const auto *name : {"base", "background", "dial", "handHour", "handMinute", "handSecond"})
        oneLayer.insert(QString::fromLatin1(name), QString());
    for (const auto *name : {"textColor", "textBackColor", "logoColor"})
        oneLayer.insert(QString::fromLatin1(name), QColor(Qt::white));
    oneLayer.insert(layer, documents.theme.property(layer.toLatin1()));
    documents.engine.rootContext()->setContextProperty(u"theme"_s, oneLayer);

    QQuickView view;
    QQuickItem *face = documents.createFace(view, side);
    QVERIFY(face);
    auto *image = qobject_cast<QQuickImageBase *>(face->childItems().at(index));
    QVERIFY(image);
    QTRY_COMPARE_WITH_TIMEOUT(image->status(), QQuickImageBase::Ready, 30000);
    const QImage picture = image->image();
    QVERIFY(picture.sizeInBytes() <= maximumBytes);
    QCOMPARE(picture.width(), picture.height());
    QVERIFY(hasPaint(picture));
    // Held back only where it has to be.
    const bool ofHand = index >= 5;
    const qreal ratio = view.screen()->devicePixelRatio();
    const qreal wanted = side * (ofHand ? 3 : std::max(1.0, 3 / ratio)) * ratio;
    QVERIFY2(picture.width() >= std::min(wanted, 8192.0) - 2 * ratio,
        qPrintable(QString::number(picture.width())));
}

// What the bound is there for: the same picture one step larger does not load.
void tst_FaceLayers::unboundedLayerHasNone()
{
    Documents documents(Documents::AllObjects);
    QQuickView view;
    const auto layer = documents.create(u"ClockImage.qml"_s);
    auto *image = qobject_cast<QQuickImageBase *>(layer.get());
    image->setParentItem(view.contentItem());
    const int side = int(8192 / view.screen()->devicePixelRatio()) + 1;
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"Rejecting image"_s));
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"Error decoding"_s));
    image->setSourceSize({side, side});
    image->setSource(QUrl(documents.theme.base()));
    QCOMPARE(image->status(), QQuickImageBase::Error);
}

int main(int argc, char **argv) { return runQmlTest<tst_FaceLayers>(argc, argv); }

#include "tst_facelayers.moc"
