// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "artworkfiles.h"
#include "tools/artwork/picture/clockpicture.h"

#include <QImageReader>
#include <QProcess>
#include <QStandardPaths>
#include <QTest>

#include <array>
#include <ctime>

using namespace Qt::StringLiterals;

namespace
{

constexpr int comparedPx = 512;

struct Deviation {
    std::array<double, 4> meanPercent{}; // of the full range; blue, green, red, alpha
    double offPercent = 0; // of the pixels, by more than 16 of 255 in any channel
};

/// Both images premultiplied, so that the colour under no alpha does not count.
Deviation deviation(const QImage &one, const QImage &two)
{
    Deviation result;
    const qsizetype bytes = qsizetype(one.width()) * 4;
    const double pixels = double(one.width()) * one.height();
    for (int y = 0; y < one.height(); ++y) {
        const uchar *first = one.constScanLine(y);
        const uchar *second = two.constScanLine(y);
        for (qsizetype i = 0; i < bytes; i += 4) {
            int largest = 0;
            for (qsizetype channel = 0; channel < 4; ++channel) {
                const int step = std::abs(first[i + channel] - second[i + channel]);
                result.meanPercent[size_t(channel)] += step * 100.0 / 255 / pixels;
                largest = std::max(largest, step);
            }
            result.offPercent += (largest > 16) * 100.0 / pixels;
        }
    }
    return result;
}

QImage premultiplied(const QImage &image)
{
    return image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

/// The processor time of this thread: other programs on the machine do not count.
double threadMs()
{
    timespec now{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &now);
    return double(now.tv_sec) * 1e3 + double(now.tv_nsec) / 1e6;
}

double drawMs(const QString &path, int sidePx)
{
    double best = 1e9;
    for (int i = 0; i < 12; ++i) {
        const double start = threadMs();
        QImageReader reader(path, "svg");
        reader.setScaledSize(QSize(sidePx, sidePx));
        if (reader.read().isNull())
            return 1e9;
        best = std::min(best, threadMs() - start);
    }
    return best;
}

} // namespace

class TestArtworkRenderers : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init();
    void renderersAgree_data();
    void renderersAgree();
    void layersAreCheap_data();
    void layersAreCheap();
};

void TestArtworkRenderers::init() { QTest::failOnWarning(); }

void TestArtworkRenderers::renderersAgree_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QSize>("size");
    for (const ArtworkFile &file : artworkFiles()) {
        QTest::newRow(qPrintable(file.path))
            << file.path << file.viewBox.scaled(comparedPx, comparedPx, Qt::KeepAspectRatio);
    }
}

void TestArtworkRenderers::renderersAgree()
{
    QFETCH(const QString, path);
    QFETCH(const QSize, size);
    const QString converter = QStandardPaths::findExecutable(u"rsvg-convert"_s);
    if (converter.isEmpty())
        QSKIP("rsvg-convert is not installed");
    const QString file = sourceRoot() + u'/' + path;

    QProcess process;
    process.start(converter,
        {u"-w"_s, QString::number(size.width()), u"-h"_s, QString::number(size.height()), file});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitCode(), 0);
    const QImage other = premultiplied(QImage::fromData(process.readAllStandardOutput(), "png"));
    QCOMPARE(other.size(), size);

    QImageReader reader(file, "svg");
    reader.setScaledSize(size);
    const QImage own = premultiplied(reader.read());
    QCOMPARE(own.size(), size);

    const Deviation found = deviation(own, other);
    for (double percent : found.meanPercent)
        QVERIFY2(percent <= 1, QByteArray::number(percent));
    QVERIFY2(found.offPercent <= 0.5, QByteArray::number(found.offPercent));
}

void TestArtworkRenderers::layersAreCheap_data()
{
    QTest::addColumn<QString>("folder");
    QTest::addColumn<QString>("shared");
    for (const ToneColours &tone : toneColours())
        QTest::newRow(qPrintable(tone.folder)) << tone.folder << tone.sharedFolder;
}

void TestArtworkRenderers::layersAreCheap()
{
    QFETCH(const QString, folder);
    QFETCH(const QString, shared);
    constexpr int sidePx = 960; // a clock of side 320 on a plain screen
    // The budget is 25 ms, and an idle machine takes 9 to 11; a busy one under the sanitizers 31.
    constexpr double budgetMs = 25 * 2;
    double totalMs = 0;
    for (const char *layer : {"base", "background"})
        totalMs
            += drawMs(sourceRoot() + u'/' + themeFile(folder, QLatin1StringView(layer)), sidePx);
    for (const char *layer : {"dial", "hand_hour", "hand_minute", "hand_second"})
        totalMs
            += drawMs(sourceRoot() + u'/' + themeFile(shared, QLatin1StringView(layer)), sidePx);
    qInfo("six layers: %.1f ms", totalMs);
    QVERIFY2(totalMs < budgetMs, QByteArray::number(totalMs));
}

QTEST_MAIN(TestArtworkRenderers)
#include "tst_artworkrenderers.moc"
