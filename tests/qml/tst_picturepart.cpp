// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Where a picture is filled, and what is left of one that is cut to a part.

#include "qml/picturepart.h"

#include <QtGui/qpainter.h>
#include <QtTest/qtest.h>

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

} // namespace

class TestPicturePart : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void findsWhatIsFilled_data();
    void findsWhatIsFilled();
    void cutsToWholePixels();
    void cutsNothingOutOfNothing();
    void cutPictureIsNeverTakenForTheWhole();
};

void TestPicturePart::findsWhatIsFilled_data()
{
    QTest::addColumn<QImage>("picture");
    QTest::addColumn<QRectF>("part");

    const QRectF middle(0.25, 0.5, 0.25, 0.125);
    constexpr QSize size(640, 640);
    QTest::newRow("no picture") << QImage() << PicturePart::whole;
    QTest::newRow("clear") << clearPicture(size) << PicturePart::whole;
    QTest::newRow("full") << pictureWith(size, QRect({}, size)) << PicturePart::whole;
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

void TestPicturePart::findsWhatIsFilled()
{
    QFETCH(QImage, picture);
    QFETCH(QRectF, part);

    QCOMPARE(PicturePart::filled(picture), part);
}

void TestPicturePart::cutsToWholePixels()
{
    const QImage picture = pictureWith({640, 640}, QRect(160, 320, 160, 80));
    const QImage cut = PicturePart::cut(picture, QRectF(0.2501, 0.5, 0.25, 0.1249));
    QCOMPARE(cut.size(), QSize(161, 80));
    QVERIFY(PicturePart::isCut(cut));
    QVERIFY(!PicturePart::isCut(picture));
    QCOMPARE(PicturePart::held(cut), QRectF(160 / 640.0, 320 / 640.0, 161 / 640.0, 80 / 640.0));
    QCOMPARE(PicturePart::held(picture), PicturePart::whole);
    QCOMPARE(cut.pixel(0, 0), picture.pixel(160, 320));
    QCOMPARE(cut.pixel(160, 79), picture.pixel(320, 399));
}

void TestPicturePart::cutsNothingOutOfNothing()
{
    const QImage picture = pictureWith({64, 64}, QRect(1, 1, 62, 62));
    QVERIFY(PicturePart::cut(picture, QRectF()).isNull());
    QVERIFY(PicturePart::cut(picture, QRectF(1, 1, 1, 1)).isNull());
    QVERIFY(PicturePart::cut(QImage(), PicturePart::whole).isNull());
}

// Not even where a cut leaves all of it.
void TestPicturePart::cutPictureIsNeverTakenForTheWhole()
{
    const QImage picture = pictureWith({64, 64}, QRect(1, 1, 62, 62));
    const QImage cut = PicturePart::cut(picture, PicturePart::filled(picture));
    QCOMPARE(cut.size(), picture.size());
    QVERIFY(PicturePart::isCut(cut));
    QCOMPARE(PicturePart::held(cut), PicturePart::whole);
}

QTEST_APPLESS_MAIN(TestPicturePart)
#include "tst_picturepart.moc"
