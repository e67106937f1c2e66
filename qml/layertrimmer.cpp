// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "qml/layertrimmer.h"

#include <QtGui/qimage.h>
#include <QtQuick/private/qquickimage_p.h>
#include <QtQuick/private/qquickitem_p.h>
#include <QtQuick/private/qsgadaptationlayer_p.h>
#include <QtQuick/qquickwindow.h>

#include <algorithm>
#include <utility>

namespace
{

constexpr QRectF whole(0, 0, 1, 1);
// About the filled part: the same drawing at another size may reach a little further, and lines are
// left out below.
constexpr double room = 1.0 / 64;
constexpr int lines = 512; // to look at, at most twice as many

// The pixels of a line from the first to the last that is not clear.
QRect filledPixels(const QImage &picture, int y)
{
    const auto *begin = reinterpret_cast<const QRgb *>(picture.constScanLine(y));
    const auto *end = begin + picture.width();
    const auto isFilled = [](QRgb pixel) { return qAlpha(pixel) != 0; };
    const auto *first = std::find_if(begin, end, isFilled);
    if (first == end)
        return {};
    const auto *last
        = std::find_if(std::reverse_iterator(end), std::reverse_iterator(first), isFilled).base();
    return {int(first - begin), y, int(last - first), 1};
}

// By what it and all around it let through; Qt Quick does not paint what is fainter.
bool isSeen(const QQuickItem *item)
{
    constexpr double faintest = 0.001;
    double opacity = 1;
    for (const QQuickItem *around = item; around; around = around->parentItem())
        opacity *= around->opacity();
    return item->isVisible() && opacity >= faintest;
}

// But for the share of a pixel that it may stand aside.
bool coversWindow(const QQuickItem *item)
{
    const QRectF all(QPointF(), item->window()->size());
    return item->mapRectToScene(item->boundingRect()).adjusted(-1, -1, 1, 1).contains(all);
}

} // namespace

QRectF LayerTrimmer::filledPart(const QImage &picture)
{
    const QImage pixels = picture.convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QRect filled;
    for (int y = 0; y < pixels.height(); y += std::max(1, pixels.height() / lines))
        filled |= filledPixels(pixels, y);
    if (filled.isEmpty())
        return whole;
    const QRectF part(double(filled.x()) / pixels.width(), double(filled.y()) / pixels.height(),
        double(filled.width()) / pixels.width(), double(filled.height()) / pixels.height());
    return part.adjusted(-room, -room, room, room) & whole;
}

// The images tell their nodes to paint all of them in each frame for which they have changed. In
// between, and while no image can change, they are told better.
LayerTrimmer::LayerTrimmer(QQuickWindow *window)
    : QObject(window)
{
    const auto trimAll = [this, window] {
        m_isWholeFrame = false;
        m_before = std::exchange(m_filled, {}); // of images that have gone nothing stays
        trimBelow(window->contentItem());
    };
    connect(window, &QQuickWindow::afterSynchronizing, this, trimAll, Qt::DirectConnection);
}

QRectF LayerTrimmer::paintedPart(const QQuickImage *image) const
{
    const QRectF part = m_filled.value(image).painted;
    return {part.x() * image->width(), part.y() * image->height(), part.width() * image->width(),
        part.height() * image->height()};
}

void LayerTrimmer::trimBelow(QQuickItem *item)
{
    const QList<QQuickItem *> children = QQuickItemPrivate::get(item)->paintOrderChildItems();
    for (QQuickItem *child : children) {
        if (auto *image = qobject_cast<QQuickImage *>(child))
            trim(image);
        trimBelow(child);
    }
}

void LayerTrimmer::trim(QQuickImage *image)
{
    auto *node = static_cast<QSGInternalImageNode *>(QQuickItemPrivate::get(image)->paintNode);
    if (!node || image->fillMode() != QQuickImage::Stretch || image->mirror()
        || image->mirrorVertically())
        return;
    Filled filled = m_before.value(image);
    // While the next picture is loading the one before it is painted.
    if (image->status() == QQuickImage::Ready && filled.source != image->source())
        filled = {image->source(), filledPart(image->image()), {}};
    if (filled.part.isNull())
        return;
    // Qt would paint and hand over what has changed, and nothing else. Of a see-through window that
    // changes in parts a compositor may show holes (picom 12 with XRender does), so a layer that is
    // as large as the window changes with every frame.
    if (filled.part == whole && isSeen(image) && coversWindow(image)) {
        node->markDirty(QSGNode::DirtyMaterial);
        m_isWholeFrame = true;
    }
    filled.painted = m_isWholeFrame ? filled.part : whole;
    m_filled.insert(image, filled);
    const QRectF target = paintedPart(image);
    node->setTargetRect(target);
    node->setInnerTargetRect(target);
    node->setSubSourceRect(filled.painted);
    node->update();
}
