// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/desktop/monitors.h"

#include <QtCore/qprocess.h>
#include <QtGui/qguiapplication.h>
#include <QtGui/qscreen.h>
#include <QtTest/qtestsystem.h>

#include <algorithm>

using namespace Qt::StringLiterals;

namespace Monitors
{

namespace
{

bool callXrandr(const QStringList &arguments)
{
    QProcess xrandr;
    xrandr.start(u"xrandr"_s, arguments);
    return xrandr.waitForFinished() && xrandr.exitStatus() == QProcess::NormalExit
        && xrandr.exitCode() == 0;
}

bool setMonitor(const QString &name, QRect geometry, const QString &output)
{
    // The size in millimetres is that of 96 dots per inch.
    const auto millimetres = [](int pixels) { return qRound(pixels * 25.4 / 96); };
    const QString size = u"%1/%2x%3/%4+%5+%6"_s.arg(geometry.width())
                             .arg(millimetres(geometry.width()))
                             .arg(geometry.height())
                             .arg(millimetres(geometry.height()))
                             .arg(geometry.x())
                             .arg(geometry.y());
    return callXrandr({u"--setmonitor"_s, name, size, output});
}

bool waitForScreens(qsizetype count)
{
    return QTest::qWaitFor([count] { return QGuiApplication::screens().size() == count; });
}

} // namespace

bool divide(QRect geometry)
{
    const QString output = QGuiApplication::primaryScreen()->name();
    return setMonitor(u"left"_s, geometry, output) && QTest::qWaitFor([geometry] {
        return QGuiApplication::primaryScreen()->geometry() == geometry;
    });
}

bool add(const QString &name, QRect geometry)
{
    const qsizetype before = QGuiApplication::screens().size();
    return setMonitor(name, geometry, u"none"_s) && waitForScreens(before + 1);
}

bool addRight(QRect geometry) { return add(u"right"_s, geometry); }

bool remove(const QString &name)
{
    const qsizetype before = QGuiApplication::screens().size();
    return callXrandr({u"--delmonitor"_s, name}) && waitForScreens(before - 1);
}

bool removeRight() { return remove(u"right"_s); }

bool has(const QString &name)
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    return std::ranges::any_of(
        screens, [&name](const QScreen *screen) { return screen->name() == name; });
}

bool show(QRect rectangle)
{
    const QList<QScreen *> screens = QGuiApplication::screens();
    return std::ranges::any_of(screens,
        [rectangle](const QScreen *screen) { return screen->geometry().contains(rectangle); });
}

} // namespace Monitors
