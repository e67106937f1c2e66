// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtQuick/qquickitem.h>
#include <QtQuick/qquickwindow.h>

#include <algorithm>

/// The items of a window, for tests that look into their own process.
namespace SceneItems
{

inline QList<QQuickItem *> below(const QQuickItem *item)
{
    QList<QQuickItem *> items = item->childItems();
    for (const QQuickItem *child : item->childItems())
        items += below(child);
    return items;
}

inline QList<QQuickItem *> of(const QQuickWindow *window) { return below(window->contentItem()); }

/// The pictures of the clock face that can be seen.
inline QList<QQuickItem *> visibleLayers(const QQuickWindow *window)
{
    QList<QQuickItem *> layers = of(window);
    layers.removeIf([](const QQuickItem *item) {
        return !item->property("sourceRatio").isValid() || !item->isVisible();
    });
    return layers;
}

/// Whether the picture of a layer is the one for its present size.
inline bool isSharp(const QQuickItem *layer)
{
    constexpr int ready = 1; // Image.Ready
    const double ratio = layer->window()->effectiveDevicePixelRatio();
    const int pixels = qRound(layer->implicitWidth() * ratio);
    const int shown = qRound(layer->width() * ratio);
    return layer->property("status").toInt() == ready
        && (pixels == std::min(shown, 8192) || pixels == std::min(2 * shown, 8192));
}

inline bool isSharp(const QQuickWindow *window)
{
    const QList<QQuickItem *> layers = visibleLayers(window);
    return !layers.isEmpty()
        && std::all_of(
            layers.begin(), layers.end(), [](const QQuickItem *layer) { return isSharp(layer); });
}

} // namespace SceneItems
