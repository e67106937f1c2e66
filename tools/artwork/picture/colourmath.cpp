// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tools/artwork/picture/colourmath.h"

#include <QImage>

#include <cmath>
#include <numbers>

namespace
{

constexpr double radiansPerDegree = std::numbers::pi / 180;

double linear(double channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

double luminance(QColor colour)
{
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF())
        + 0.0722 * linear(colour.blueF());
}

double labCurve(double t)
{
    constexpr double delta = 6.0 / 29.0;
    return t > delta * delta * delta ? std::cbrt(t) : t / (3 * delta * delta) + 4.0 / 29.0;
}

Lab toLab(QColor colour)
{
    const double r = linear(colour.redF());
    const double g = linear(colour.greenF());
    const double b = linear(colour.blueF());
    const double x = labCurve((0.4124564 * r + 0.3575761 * g + 0.1804375 * b) / 0.95047);
    const double y = labCurve(0.2126729 * r + 0.7151522 * g + 0.0721750 * b);
    const double z = labCurve((0.0193339 * r + 0.1191920 * g + 0.9503041 * b) / 1.08883);
    return {116 * y - 16, 500 * (x - y), 200 * (y - z)};
}

double hueDegrees(double a, double b)
{
    if (a == 0 && b == 0)
        return 0;
    const double hue = std::atan2(b, a) / radiansPerDegree;
    return hue < 0 ? hue + 360 : hue;
}

/// The factor by which CIEDE2000 weighs large chromas down: sqrt(c^7 / (c^7 + 25^7)).
double largeChroma(double chroma)
{
    const double power = std::pow(chroma, 7);
    return std::sqrt(power / (power + std::pow(25.0, 7)));
}

double cosDegrees(double degrees) { return std::cos(degrees * radiansPerDegree); }

double sinDegrees(double degrees) { return std::sin(degrees * radiansPerDegree); }

double meanHue(double h1, double h2)
{
    if (std::abs(h1 - h2) <= 180)
        return (h1 + h2) / 2;
    return h1 + h2 < 360 ? (h1 + h2 + 360) / 2 : (h1 + h2 - 360) / 2;
}

double hueStep(double h1, double h2)
{
    const double step = h2 - h1;
    return step > 180 ? step - 360 : (step < -180 ? step + 360 : step);
}

} // namespace

double contrast(QColor a, QColor b)
{
    const auto [low, high] = std::minmax({luminance(a), luminance(b)});
    return (high + 0.05) / (low + 0.05);
}

double colourDifference(QColor first, QColor second)
{
    return colourDifference(toLab(first), toLab(second));
}

double colourDifference(const Lab &one, const Lab &two)
{
    const double g
        = 0.5 * (1 - largeChroma((std::hypot(one.a, one.b) + std::hypot(two.a, two.b)) / 2));
    const double a1 = one.a * (1 + g);
    const double a2 = two.a * (1 + g);
    const double c1 = std::hypot(a1, one.b);
    const double c2 = std::hypot(a2, two.b);
    const double h1 = hueDegrees(a1, one.b);
    const double h2 = hueDegrees(a2, two.b);

    const bool grey = c1 * c2 == 0;
    const double deltaH = grey ? 0 : 2 * std::sqrt(c1 * c2) * sinDegrees(hueStep(h1, h2) / 2);
    const double hue = grey ? h1 + h2 : meanHue(h1, h2);
    const double chroma = (c1 + c2) / 2;
    const double light = std::pow((one.l + two.l) / 2 - 50, 2);

    const double t = 1 - 0.17 * cosDegrees(hue - 30) + 0.24 * cosDegrees(2 * hue)
        + 0.32 * cosDegrees(3 * hue + 6) - 0.20 * cosDegrees(4 * hue - 63);
    const double turn = 60 * std::exp(-std::pow((hue - 275) / 25, 2));
    const double rotation = -2 * largeChroma(chroma) * sinDegrees(turn);
    const double l = (two.l - one.l) / (1 + 0.015 * light / std::sqrt(20 + light));
    const double c = (c2 - c1) / (1 + 0.045 * chroma);
    const double h = deltaH / (1 + 0.015 * chroma * t);
    return std::sqrt(l * l + c * c + h * h + rotation * c * h);
}

QColor blended(QColor colour, double alpha, QColor ground)
{
    const auto mix
        = [alpha](float over, float under) { return float(over * alpha + under * (1 - alpha)); };
    return QColor::fromRgbF(mix(colour.redF(), ground.redF()),
        mix(colour.greenF(), ground.greenF()), mix(colour.blueF(), ground.blueF()));
}

QColor meanColour(const QImage &image)
{
    const QImage pixels = image.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    double red = 0;
    double green = 0;
    double blue = 0;
    double alpha = 0;
    for (int y = 0; y < pixels.height(); ++y) {
        const auto *line = reinterpret_cast<const QRgb *>(pixels.constScanLine(y));
        for (int x = 0; x < pixels.width(); ++x) {
            red += qRed(line[x]);
            green += qGreen(line[x]);
            blue += qBlue(line[x]);
            alpha += qAlpha(line[x]);
        }
    }
    if (alpha == 0)
        return {};
    return QColor::fromRgbF(float(red / alpha), float(green / alpha), float(blue / alpha));
}
