// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/desktop/machinespeed.h"

#include <QtCore/qdebug.h>
#include <QtCore/qelapsedtimer.h>
#include <QtCore/qlist.h>
#include <QtGui/qimagereader.h>
#include <QtTest/qtest.h>

#include <algorithm>

namespace
{

constexpr double meantMs = 10;
constexpr int side = 960;
constexpr double most = 8; // beyond, a limit would limit nothing
constexpr int repeats = 5;

void drawLayers()
{
    for (const char *layer : {"dark_blue/clock_base", "dark_blue/clock_background",
             "dark_gray/clock_dial", "dark_gray/clock_hand_hour", "dark_gray/clock_hand_minute",
             "dark_gray/clock_hand_second"}) {
        QImageReader reader(QStringLiteral(":/themes/basic/%1.svg").arg(QLatin1StringView(layer)));
        reader.setScaledSize({side, side});
        if (reader.read().isNull())
            qFatal() << "cannot draw" << layer << reader.errorString();
    }
}

double medianMs(int restMs)
{
    QList<double> times;
    for (int i = 0; i < repeats; ++i) {
        QTest::qWait(restMs);
        QElapsedTimer timer;
        timer.start();
        drawLayers();
        times.append(double(timer.nsecsElapsed()) / 1e6);
    }
    std::ranges::sort(times);
    return times[repeats / 2];
}

double slowness(int restMs)
{
    const double ms = medianMs(restMs);
    qInfo("the layers of a clock take %.1f ms at %d pixels after a rest of %d ms, %.0f are meant",
        ms, side, restMs, meantMs);
    return std::clamp(ms / meantMs, 1.0, most);
}

} // namespace

double machineSlowness()
{
    static const double result = slowness(0);
    return result;
}

double machineSlownessAfterRest()
{
    static const double result = slowness(500);
    return result;
}
