// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "platform/nearestscreen.h"

#include <QtGui/qguiapplication.h>
#include <QtGui/qscreen.h>
#include <QtGui/qwindow.h>

#include <algorithm>

namespace
{

// 64 bits: a stored position may lie at either end of what an int holds.
qint64 movedInto(qint64 start, qint64 length, qint64 low, qint64 lengthOfAll)
{
    const qint64 highest = std::max(low, low + lengthOfAll - length);
    return std::clamp(start, low, highest);
}

QPoint placeOn(const QRect &rect, const QRect &screen)
{
    return {static_cast<int>(movedInto(rect.x(), rect.width(), screen.x(), screen.width())),
        static_cast<int>(movedInto(rect.y(), rect.height(), screen.y(), screen.height()))};
}

double distance(QPoint from, QPoint to)
{
    const double dx = double(from.x()) - to.x();
    const double dy = double(from.y()) - to.y();
    return dx * dx + dy * dy;
}

} // namespace

bool meetsAnyScreen(const QRect &rect, const QList<QRect> &screens)
{
    return std::any_of(screens.begin(), screens.end(),
        [&rect](const QRect &screen) { return screen.intersects(rect); });
}

QRect movedOntoNearestScreen(const QRect &rect, const QList<QRect> &screens)
{
    const auto way
        = [&rect](const QRect &screen) { return distance(rect.topLeft(), placeOn(rect, screen)); };
    const auto nearest = std::min_element(screens.begin(), screens.end(),
        [&way](const QRect &left, const QRect &right) { return way(left) < way(right); });
    return nearest == screens.end() ? rect : QRect(placeOn(rect, *nearest), rect.size());
}

QList<QRect> screenGeometries()
{
    QList<QRect> geometries;
    const QList<QScreen *> screens = QGuiApplication::screens();
    for (const QScreen *screen : screens)
        geometries.append(screen->geometry());
    return geometries;
}

void rescueOffScreenWindow(QWindow *window)
{
    const QList<QRect> screens = screenGeometries();
    if (!meetsAnyScreen(window->geometry(), screens))
        window->setPosition(movedOntoNearestScreen(window->geometry(), screens).topLeft());
}
