// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tools/artwork/picture/clockpicture.h"

#include <QFontMetricsF>
#include <QImageReader>
#include <QPainter>

using namespace Qt::StringLiterals;

namespace
{

// The face rasterises its layers at three pixels per logical pixel on a plain screen.
constexpr int sourceRatio = 3;

QFont textFont(double sidePx, double factor)
{
    QFont font(u"Yu Gothic UI"_s);
    font.setPointSizeF(sidePx * factor);
    return font;
}

QColor withAlpha(QColor colour, double alpha)
{
    colour.setAlphaF(float(alpha));
    return colour;
}

void drawLogo(QPainter &painter, const ToneColours &tone, double side)
{
    painter.setFont(textFont(side, 0.040));
    painter.setPen(withAlpha(tone.logo, 0.8));
    painter.drawText(QRectF(0, -0.287 * side, side, side), Qt::AlignCenter, u"MARROWBY"_s);
}

void drawAmPm(QPainter &painter, const ToneColours &tone, const QRectF &timeItem,
    const QRectF &panel, QTime time)
{
    painter.setFont(QFont(u"Yu Gothic UI"_s));
    const QFontMetricsF metrics(painter.font(), painter.device());
    const double left = timeItem.right() + (panel.width() - timeItem.width()) * 0.8;
    const double centre = timeItem.center().y() - 0.22 * panel.height();
    const QRectF box(left, centre - metrics.height() / 2, 1.3 * metrics.horizontalAdvance(u"AM"_s),
        metrics.height());
    painter.fillRect(box, withAlpha(tone.textBack, 0.3));
    painter.setPen(withAlpha(tone.text, 0.7));
    painter.drawText(box, Qt::AlignCenter, time.hour() < 12 ? u"AM"_s : u"PM"_s);
}

void drawTime(
    QPainter &painter, const ToneColours &tone, double side, const PictureOptions &options)
{
    painter.setFont(textFont(side, 0.07));
    const QFontMetricsF metrics(painter.font(), painter.device());
    const QSizeF size(metrics.horizontalAdvance(u"00:00:00"_s), metrics.height());
    const QPointF centre(side / 2 - 0.01 * side, side / 2 + 0.18 * side);
    const QRectF item(
        centre.x() - size.width() / 2, centre.y() - size.height() / 2, size.width(), size.height());
    QRectF panel(
        0, item.top() + 0.8 * 0.15 * size.height(), 1.09 * size.width(), 0.81 * size.height());
    panel.moveLeft(centre.x() - panel.width() / 2);
    painter.fillRect(panel, withAlpha(tone.textBack, 0.3));
    painter.setPen(withAlpha(tone.text, 0.7));
    painter.drawText(panel.translated(0, -0.01 * size.height()), Qt::AlignCenter | Qt::TextDontClip,
        options.time.toString(u"hh:mm:ss"_s));
    if (options.amPm)
        drawAmPm(painter, tone, item, panel, options.time.time());
}

void drawDate(QPainter &painter, const ToneColours &tone, double side, QDate date)
{
    painter.setFont(textFont(side, 0.06));
    const QString text = date.toString(Qt::TextDate);
    const QFontMetricsF metrics(painter.font(), painter.device());
    QRectF box(0, 0, 1.05 * metrics.horizontalAdvance(text), metrics.height());
    box.moveCenter(QPointF(side / 2 + 0.015 * side, side / 2 - 0.13 * side));
    painter.fillRect(box, withAlpha(tone.textBack, 0.3));
    painter.setPen(withAlpha(tone.text, 0.7));
    painter.drawText(box, Qt::AlignCenter, text);
}

class LayerPainter
{
public:
    LayerPainter(QPainter &painter, QString root, int sidePx)
        : m_painter(painter)
        , m_root(std::move(root))
        , m_sidePx(sidePx)
    {
    }

    void draw(const QString &folder, QLatin1StringView layer, double angleDegrees = 0.0)
    {
        const QString path
            = m_root + "/themes/basic/"_L1 + folder + "/clock_"_L1 + layer + ".svg"_L1;
        const QImage image = rasterised(path, m_sidePx);
        m_painter.save();
        m_painter.translate(m_sidePx / 2.0, m_sidePx / 2.0);
        m_painter.rotate(angleDegrees);
        m_painter.drawImage(QPointF(-m_sidePx / 2.0, -m_sidePx / 2.0), image);
        m_painter.restore();
    }

private:
    QPainter &m_painter;
    QString m_root;
    int m_sidePx;
};

QImage transparent(int sidePx)
{
    QImage image(sidePx, sidePx, QImage::Format_ARGB32_Premultiplied);
    image.setDotsPerMeterX(3780); // 96 per inch
    image.setDotsPerMeterY(3780);
    image.fill(Qt::transparent);
    return image;
}

} // namespace

const QList<ToneColours> &toneColours()
{
    const auto dark = [](const QString &folder, QColor text) {
        return ToneColours{folder, u"dark_gray"_s, text, QColor(0, 0, 0), QColor(230, 230, 230)};
    };
    const auto light = [](const QString &folder, QColor text, QColor back) {
        return ToneColours{folder, u"light_gray"_s, text, back, QColor(25, 25, 25)};
    };
    static const QList<ToneColours> table{
        dark(u"dark_blue"_s, QColor(178, 178, 255)),
        dark(u"dark_red"_s, QColor(235, 178, 178)),
        dark(u"dark_green"_s, QColor(178, 235, 178)),
        dark(u"dark_yellow"_s, QColor(198, 198, 0)),
        dark(u"dark_gray"_s, QColor(204, 204, 204)),
        light(u"light_blue"_s, QColor(0, 0, 64), QColor(148, 148, 222)),
        light(u"light_red"_s, QColor(24, 0, 0), QColor(222, 172, 172)),
        light(u"light_green"_s, QColor(0, 32, 0), QColor(148, 198, 148)),
        light(u"light_yellow"_s, QColor(32, 32, 0), QColor(198, 198, 148)),
        light(u"light_gray"_s, QColor(0, 0, 0), QColor(192, 192, 192)),
    };
    return table;
}

QImage rasterised(const QString &path, int sidePx)
{
    QImageReader reader(path, "svg");
    reader.setScaledSize(QSize(sidePx, sidePx));
    return reader.read().convertToFormat(QImage::Format_ARGB32_Premultiplied);
}

QImage clockPicture(const QString &root, const ToneColours &tone, const PictureOptions &options)
{
    const int largePx = options.sidePx * sourceRatio;
    QImage large = transparent(largePx);
    const QTime time = options.time.time();
    const double seconds = time.second();
    const double minutes = time.minute() + seconds / 60;
    const double hours = time.hour() % 12 + minutes / 60;
    {
        QPainter painter(&large);
        painter.setRenderHint(QPainter::SmoothPixmapTransform);
        LayerPainter layers(painter, root, largePx);
        layers.draw(tone.folder, "base"_L1);
        if (options.background)
            layers.draw(tone.folder, "background"_L1);
        layers.draw(tone.sharedFolder, "dial"_L1);
        if (options.texts)
            drawLogo(painter, tone, largePx);
        layers.draw(tone.sharedFolder, "hand_hour"_L1, hours * 30 - 90);
        layers.draw(tone.sharedFolder, "hand_minute"_L1, minutes * 6 - 90);
        if (options.secondHand)
            layers.draw(tone.sharedFolder, "hand_second"_L1, seconds * 6 - 90);
    }
    QImage picture = large.scaled(
        options.sidePx, options.sidePx, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    picture.setDotsPerMeterX(3780);
    picture.setDotsPerMeterY(3780);
    if (options.texts) {
        QPainter painter(&picture);
        painter.setRenderHint(QPainter::TextAntialiasing);
        drawTime(painter, tone, options.sidePx, options);
        drawDate(painter, tone, options.sidePx, options.time.date());
    }
    return picture;
}
