// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Writes one picture of the clock, or a sheet of several, from the artwork in the tree; or prints
// what its colours measure, as the tables of docs/artwork.md.

#include "tools/artwork/picture/clockpicture.h"
#include "tools/artwork/picture/colourmath.h"
#include "tools/artwork/picture/measures.h"

#include <QCommandLineParser>
#include <QGuiApplication>
#include <QPainter>
#include <QTextStream>

#include <numeric>

using namespace Qt::StringLiterals;

namespace
{

struct Sheet {
    QStringList tones;
    QStringList sides;
    QStringList times;
    QStringList grounds;
    int columns = 0; // 0: as many as there are pictures of one tone
    int gapPx = 12;
};

const ToneColours *findTone(const QString &folder)
{
    for (const ToneColours &tone : toneColours()) {
        if (tone.folder == folder)
            return &tone;
    }
    return nullptr;
}

QList<QImage> pictures(const QString &root, const Sheet &sheet, PictureOptions options)
{
    QList<QImage> result;
    for (const QString &name : sheet.tones) {
        const ToneColours *tone = findTone(name);
        if (!tone)
            qFatal("no such tone: %ls", qUtf16Printable(name));
        for (const QString &side : sheet.sides) {
            for (const QString &time : sheet.times) {
                options.sidePx = side.toInt();
                options.time = QDateTime(QDate(2026, 11, 20), QTime::fromString(time, u"h:m:s"_s));
                result += clockPicture(root, *tone, options);
            }
        }
    }
    return result;
}

QImage arranged(const QList<QImage> &pictures, const Sheet &sheet)
{
    const qsizetype perTone = sheet.sides.size() * sheet.times.size();
    const qsizetype columns = sheet.columns > 0 ? sheet.columns : perTone;
    QList<int> x(columns + 1, sheet.gapPx);
    QList<int> y((pictures.size() + columns - 1) / columns + 1, sheet.gapPx);
    for (qsizetype i = 0; i < pictures.size(); ++i) {
        const int sidePx = pictures[i].width() + sheet.gapPx;
        int &right = x[i % columns + 1];
        int &bottom = y[i / columns + 1];
        right = std::max(right, sidePx);
        bottom = std::max(bottom, sidePx);
    }
    std::partial_sum(x.cbegin(), x.cend(), x.begin());
    std::partial_sum(y.cbegin(), y.cend(), y.begin());
    QImage image(x.last(), y.last(), QImage::Format_RGB32);
    QPainter painter(&image);
    const qsizetype grounds = sheet.grounds.size();
    for (qsizetype i = 0; i < grounds; ++i) { // one strip of ground after the other
        const int top = int(image.height() * i / grounds);
        painter.fillRect(0, top, image.width(), image.height(), QColor(sheet.grounds[i]));
    }
    for (qsizetype i = 0; i < pictures.size(); ++i)
        painter.drawImage(x[i % columns], y[i / columns], pictures[i]);
    return image;
}

void printMeasures(const QString &root)
{
    QTextStream out(stdout);
    out.setRealNumberNotation(QTextStream::FixedNotation);
    out.setRealNumberPrecision(1);
    for (bool background : {true, false}) {
        out << (background ? "With" : "Without")
            << " the face background\n\n"
               "| tone | hands | second hand | marks | logo | time | date "
               "|\n|---|---|---|---|---|---|---|\n";
        for (const ToneColours &tone : toneColours()) {
            const ToneContrasts low = toneContrasts(root, tone, background);
            out << "| " << tone.folder << " | " << low.hands << " | " << low.accent << " | "
                << low.marks << " | " << low.logo << " | " << low.time << " | " << low.date
                << " |\n";
        }
        out << "\n";
    }
    QList<QColor> means;
    PictureOptions options;
    options.sidePx = 72;
    options.texts = false;
    options.time = QDateTime(QDate(2026, 11, 20), QTime(10, 8, 42));
    for (const ToneColours &tone : toneColours())
        means += meanColour(clockPicture(root, tone, options));
    for (qsizetype i = 0; i < means.size(); ++i) {
        out << "| " << toneColours()[i].folder << " " << means[i].name();
        for (qsizetype j = 0; j < means.size(); ++j)
            out << " | " << (i == j ? 0.0 : colourDifference(means[i], means[j]));
        out << " |\n";
    }
}

} // namespace

int main(int argc, char *argv[])
{
    QGuiApplication application(argc, argv);
    QCommandLineParser parser;
    parser.addHelpOption();
    parser.addOptions({
        {u"root"_s, u"Tree that holds themes/basic."_s, u"folder"_s, u"."_s},
        {u"tones"_s, u"Folders of tones, or all."_s, u"list"_s, u"all"_s},
        {u"sides"_s, u"Sides in pixels."_s, u"list"_s, u"320"_s},
        {u"times"_s, u"Times of day."_s, u"list"_s, u"10:08:42"_s},
        {u"grounds"_s, u"Colours behind the clocks, in strips."_s, u"list"_s, u"#808080"_s},
        {u"columns"_s, u"Pictures per row; 0 for one tone per row."_s, u"count"_s, u"0"_s},
        {u"gap"_s, u"Free pixels between pictures."_s, u"pixels"_s, u"12"_s},
        {u"no-texts"_s, u"Leave the texts out."_s},
        {u"no-background"_s, u"Leave the face background out."_s},
        {u"no-second"_s, u"Leave the second hand out."_s},
        {u"am-pm"_s, u"Show the AM/PM tag."_s},
        {u"measure"_s, u"Print contrasts and differences, write no picture."_s},
    });
    parser.addPositionalArgument(u"file"_s, u"The picture to write."_s);
    parser.process(application);
    if (parser.isSet(u"measure"_s)) {
        printMeasures(parser.value(u"root"_s));
        return 0;
    }
    if (parser.positionalArguments().size() != 1)
        parser.showHelp(1);

    const auto list = [&parser](const QString &name) { return parser.value(name).split(u','); };
    Sheet sheet{list(u"tones"_s), list(u"sides"_s), list(u"times"_s), list(u"grounds"_s),
        parser.value(u"columns"_s).toInt(), parser.value(u"gap"_s).toInt()};
    if (sheet.tones == QStringList{u"all"_s}) {
        sheet.tones.clear();
        for (const ToneColours &tone : toneColours())
            sheet.tones += tone.folder;
    }
    PictureOptions options;
    options.texts = !parser.isSet(u"no-texts"_s);
    options.background = !parser.isSet(u"no-background"_s);
    options.secondHand = !parser.isSet(u"no-second"_s);
    options.amPm = parser.isSet(u"am-pm"_s);
    const QImage image = arranged(pictures(parser.value(u"root"_s), sheet, options), sheet);
    return image.save(parser.positionalArguments().constFirst()) ? 0 : 1;
}
