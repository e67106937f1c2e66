// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "manager/handangles.h"
#include "qml/layerpictures.h"
#include "tests/qml/documents.h"
#include "tests/qml/picturedifference.h"

#include <QtCore/qdir.h>

#include <private/qquickimagebase_p.h>

#include <functional>

using namespace Qt::StringLiterals;

namespace
{

constexpr int side = 320;
constexpr int turnDegrees = 6; // a second of the second hand
const QColor ground(0x2f, 0x6f, 0x8f); // occurs in no tone: shows where the clock is see-through

struct Tone {
    const char *name;
    const char *file;
};
constexpr Tone tones[] = {
    {"DarkBlue", "dark_blue"},
    {"DarkRed", "dark_red"},
    {"DarkGreen", "dark_green"},
    {"DarkYellow", "dark_yellow"},
    {"DarkGray", "dark_gray"},
    {"LightBlue", "light_blue"},
    {"LightRed", "light_red"},
    {"LightGreen", "light_green"},
    {"LightYellow", "light_yellow"},
    {"LightGray", "light_gray"},
};

struct Item {
    const char *name;
    int index; // among the children of the face
};
constexpr Item images[] = {{"base", 0}, {"background", 1}, {"dial", 2}, {"hour hand", 4},
    {"minute hand", 5}, {"second hand", 6}};
constexpr Item texts[] = {{"logo", 3}, {"digital time", 7}, {"date", 9}};

// The text and its ground, wherever it reaches.
QRect placeOf(const QQuickItem *item)
{
    QRectF place = item->mapRectToScene(item->boundingRect());
    for (const QQuickItem *child : item->childItems())
        place |= child->mapRectToScene(child->boundingRect());
    return place.toAlignedRect();
}

QQuickItem *textOf(QQuickItem *item)
{
    return item->childItems().isEmpty() ? item : item->childItems().last();
}

using FontChange = std::function<void(QFont &)>;

} // namespace

Q_DECLARE_METATYPE(FontChange)

/// The whole face in every tone against a picture that somebody has looked at and accepted.
/// With VESPER_ACCEPT_PICTURES=1 in the environment, the pictures of this run become the accepted.
class tst_Pictures : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();

    void looksAsAccepted_data();
    void looksAsAccepted();
    void missingItemIsSeen_data();
    void missingItemIsSeen();
    void turnedLayerIsSeen_data();
    void turnedLayerIsSeen();
    void otherFontPasses_data();
    void otherFontPasses();

private:
    void load(const Tone &tone);
    QQuickItem *item(int index) const { return m_face->childItems().at(index); }
    FacePicture picture();
    static FacePicture accepted(const Tone &tone);

    const Tone *m_tone = nullptr; // the one that is loaded
    std::unique_ptr<LayerPictures> m_layerPictures; // outlives the engine, which calls it
    std::unique_ptr<Documents> m_documents;
    std::unique_ptr<QQuickView> m_view;
    QQuickItem *m_face = nullptr; // owned by the view
};

void tst_Pictures::init() { failOnRealWarning(); }

// The face stays as it is from row to row while the tone does: drawing the layers takes longest.
void tst_Pictures::load(const Tone &tone)
{
    if (m_tone == &tone)
        return;
    m_view.reset();
    m_documents.reset();
    m_layerPictures = std::make_unique<LayerPictures>();
    m_documents = std::make_unique<Documents>(Documents::AllObjects);
    m_layerPictures->addTo(&m_documents->engine);
    m_documents->theme.changeColorTone(u"Basic"_s, QLatin1StringView(tone.name));
    auto &manager = m_documents->manager;
    manager.setProperty("timeText", u"10:08:42"_s);
    manager.setProperty("dateText", u"Wed Mar 4 2026"_s);
    m_view = std::make_unique<QQuickView>();
    m_view->setColor(ground);
    m_view->resize(side, side);
    m_layerPictures->setWindow(m_view.get());
    m_face = m_documents->createFace(*m_view, side);
    QVERIFY(m_face);
    const HandAngles angles = handAngles(QTime(10, 8, 42));
    Q_EMIT manager.hourHandAngleChanged(angles.hour);
    Q_EMIT manager.minuteHandAngleChanged(angles.minute);
    Q_EMIT manager.secondHandAngleChanged(angles.second);
    m_view->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_view.get()));
    for (const Item &image : images)
        QTRY_COMPARE(
            qobject_cast<QQuickImageBase *>(item(image.index))->status(), QQuickImageBase::Ready);
    m_tone = &tone;
}

FacePicture tst_Pictures::picture()
{
    FacePicture picture{m_view->grabWindow().convertToFormat(QImage::Format_RGB32), {}};
    for (const Item &text : texts)
        picture.texts += placeOf(item(text.index));
    return picture;
}

FacePicture tst_Pictures::accepted(const Tone &tone)
{
    return FacePicture::load(
        u"%1/%2.png"_s.arg(QStringLiteral(VESPER_ACCEPTED_PICTURES), QLatin1StringView(tone.file)));
}

void tst_Pictures::looksAsAccepted_data()
{
    QTest::addColumn<int>("tone");
    for (int tone = 0; tone < int(std::size(tones)); ++tone)
        QTest::newRow(tones[tone].name) << tone;
}

void tst_Pictures::looksAsAccepted()
{
    QFETCH(int, tone);
    load(tones[tone]);
    const FacePicture actual = picture();
    QCOMPARE(actual.image.size(), QSize(side, side));
    const QString name = QLatin1StringView(tones[tone].file);
    if (qEnvironmentVariableIntValue("VESPER_ACCEPT_PICTURES") == 1)
        QVERIFY(actual.save(u"%1/%2.png"_s.arg(QStringLiteral(VESPER_ACCEPTED_PICTURES), name)));

    const FacePicture expected = accepted(tones[tone]);
    QCOMPARE(expected.image.size(), actual.image.size());
    QCOMPARE(expected.texts.size(), actual.texts.size());
    const PictureDifference difference = differenceOf(expected, actual);
    if (difference.isSmall())
        return;
    const QString folder = QStringLiteral(VESPER_FAILED_PICTURES);
    const QString actualFile = u"%1/%2.png"_s.arg(folder, name);
    const QString differenceFile = u"%1/%2-difference.png"_s.arg(folder, name);
    QVERIFY(QDir().mkpath(folder) && actual.save(actualFile)
        && differenceImage(expected.image, actual.image).save(differenceFile));
    QFAIL(
        qPrintable(u"%1; see %2 and %3"_s.arg(difference.toString(), actualFile, differenceFile)));
}

void tst_Pictures::missingItemIsSeen_data()
{
    QTest::addColumn<int>("tone");
    QTest::addColumn<int>("index");
    for (int tone = 0; tone < int(std::size(tones)); ++tone) {
        for (const Item &image : images)
            QTest::addRow("%s, %s", tones[tone].name, image.name) << tone << image.index;
        for (const Item &text : texts)
            QTest::addRow("%s, %s", tones[tone].name, text.name) << tone << text.index;
    }
}

void tst_Pictures::missingItemIsSeen()
{
    QFETCH(int, tone);
    QFETCH(int, index);
    load(tones[tone]);
    item(index)->setOpacity(0);
    const PictureDifference difference = differenceOf(accepted(tones[tone]), picture());
    item(index)->setOpacity(1);
    QVERIFY2(!difference.isSmall(), qPrintable(difference.toString()));
}

void tst_Pictures::turnedLayerIsSeen_data()
{
    QTest::addColumn<int>("tone");
    QTest::addColumn<int>("index");
    for (int tone = 0; tone < int(std::size(tones)); ++tone) {
        for (const Item &image : images)
            QTest::addRow("%s, %s", tones[tone].name, image.name) << tone << image.index;
    }
}

void tst_Pictures::turnedLayerIsSeen()
{
    QFETCH(int, tone);
    QFETCH(int, index);
    load(tones[tone]);
    const double angle = item(index)->property("angleValue").toDouble();
    for (const int turn : {turnDegrees, -turnDegrees}) {
        item(index)->setProperty("angleValue", angle + turn);
        const PictureDifference difference = differenceOf(accepted(tones[tone]), picture());
        item(index)->setProperty("angleValue", angle);
        QVERIFY2(!difference.isSmall(), qPrintable(difference.toString()));
    }
}

void tst_Pictures::otherFontPasses_data()
{
    QTest::addColumn<int>("tone");
    QTest::addColumn<FontChange>("change");
    const std::pair<const char *, FontChange> changes[] = {
        {"bold", [](QFont &font) { font.setBold(true); }},
        {"wider", [](QFont &font) { font.setLetterSpacing(QFont::PercentageSpacing, 110); }},
        {"narrower", [](QFont &font) { font.setLetterSpacing(QFont::PercentageSpacing, 90); }},
        {"smaller", [](QFont &font) { font.setPointSizeF(font.pointSizeF() * 0.9); }},
    };
    for (int tone = 0; tone < int(std::size(tones)); ++tone) {
        for (const auto &[name, change] : changes)
            QTest::addRow("%s, %s", tones[tone].name, name) << tone << change;
    }
}

void tst_Pictures::otherFontPasses()
{
    QFETCH(int, tone);
    QFETCH(FontChange, change);
    load(tones[tone]);
    QList<QFont> fonts;
    for (const Item &text : texts) {
        fonts += textOf(item(text.index))->property("font").value<QFont>();
        QFont font = fonts.last();
        change(font);
        textOf(item(text.index))->setProperty("font", font);
    }
    const PictureDifference difference = differenceOf(accepted(tones[tone]), picture());
    for (const Item &text : texts)
        textOf(item(text.index))->setProperty("font", fonts.takeFirst());
    QVERIFY2(difference.isSmall(), qPrintable(difference.toString()));
}

int main(int argc, char **argv) { return runQmlTest<tst_Pictures>(argc, argv); }

#include "tst_pictures.moc"
