// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "platform/nearestscreen.h"

#include <QtGui/qguiapplication.h>
#include <QtGui/qscreen.h>

#include <algorithm>

namespace
{

bool meet(qint64 start, qint64 length, qint64 otherStart, qint64 otherLength)
{
    return start < otherStart + otherLength && otherStart < start + length;
}

int movedInto(qint64 start, qint64 length, qint64 low, qint64 lengthOfAll)
{
    const qint64 highest = std::max(low, low + lengthOfAll - length);
    return static_cast<int>(std::clamp(start, low, highest));
}

QPoint placeOn(QPoint position, QSize size, const QRect &screen)
{
    return {movedInto(position.x(), size.width(), screen.x(), screen.width()),
        movedInto(position.y(), size.height(), screen.y(), screen.height())};
}

double distance(QPoint from, QPoint to)
{
    const double dx = double(from.x()) - to.x();
    const double dy = double(from.y()) - to.y();
    return dx * dx + dy * dy;
}

} // namespace

bool meetsAnyScreen(QPoint position, QSize size, const QList<QRect> &screens)
{
    return std::any_of(screens.begin(), screens.end(), [position, size](const QRect &screen) {
        return meet(position.x(), size.width(), screen.x(), screen.width())
            && meet(position.y(), size.height(), screen.y(), screen.height());
    });
}

QPoint positionOnNearestScreen(QPoint position, QSize size, const QList<QRect> &screens)
{
    const auto way = [position, size](const QRect &screen) {
        return distance(position, placeOn(position, size, screen));
    };
    const auto nearest = std::min_element(screens.begin(), screens.end(),
        [&way](const QRect &left, const QRect &right) { return way(left) < way(right); });
    return nearest == screens.end() ? position : placeOn(position, size, *nearest);
}

QList<QRect> screenGeometries()
{
    QList<QRect> geometries;
    const QList<QScreen *> screens = QGuiApplication::screens();
    for (const QScreen *screen : screens)
        geometries.append(screen->geometry());
    return geometries;
}
