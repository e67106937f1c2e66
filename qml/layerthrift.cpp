// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "qml/layerthrift.h"

#include <QtGui/qpainter.h>
#include <QtQuick/private/qquickimage_p.h>
#include <QtQuick/private/qquickitem_p.h>
#include <QtQuick/private/qsgadaptationlayer_p.h>
#include <QtQuick/qquickwindow.h>
#include <QtQuick/qsgrendererinterface.h>
#include <QtQuick/qsgtexture.h>
#include <QtQuick/qsgtextureprovider.h>

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

QSGInternalImageNode *nodeOf(QQuickImage *image)
{
    return static_cast<QSGInternalImageNode *>(QQuickItemPrivate::get(image)->paintNode);
}

// What is shown at nearly its own size costs little to paint, and much to keep where it is large.
bool isWorthKeeping(const QImage &picture, QSizeF shown)
{
    constexpr double least = 2; // pixels of the picture for one that is shown
    return double(picture.width()) * picture.height() >= least * shown.width() * shown.height();
}

// What Qt would paint into \a pixels of the window from a \a picture as large as \a target.
QImage pixelsFor(QRectF target, bool smooth, QRect pixels, const QImage &picture)
{
    QImage result(pixels.size(), QImage::Format_ARGB32_Premultiplied);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    painter.setRenderHint(QPainter::SmoothPixmapTransform, smooth);
    painter.translate(-pixels.topLeft());
    painter.drawImage(target, picture);
    return result;
}

} // namespace

QRectF LayerThrift::filledPart(const QImage &picture)
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
LayerThrift::LayerThrift(QQuickWindow *window)
    : QObject(window)
    , m_window(window)
{
    const auto lookAtAll = [this] {
        m_isWholeFrame = false;
        m_before = std::exchange(m_layers, {}); // of images that have gone nothing stays
        lookBelow(m_window->contentItem());
    };
    connect(window, &QQuickWindow::afterSynchronizing, this, lookAtAll, Qt::DirectConnection);
}

QRectF LayerThrift::paintedPart(const QQuickImage *image) const
{
    const QRectF part = m_layers.value(image).painted;
    return {part.x() * image->width(), part.y() * image->height(), part.width() * image->width(),
        part.height() * image->height()};
}

bool LayerThrift::isKept(const QQuickImage *image) const
{
    return m_layers.value(image).kept != nullptr;
}

void LayerThrift::lookBelow(QQuickItem *item)
{
    const QList<QQuickItem *> children = QQuickItemPrivate::get(item)->paintOrderChildItems();
    for (QQuickItem *child : children) {
        if (auto *image = qobject_cast<QQuickImage *>(child))
            lookAt(image);
        lookBelow(child);
    }
}

void LayerThrift::lookAt(QQuickImage *image)
{
    auto *node = nodeOf(image);
    if (!node || image->fillMode() != QQuickImage::Stretch || image->mirror()
        || image->mirrorVertically())
        return;
    Layer layer = m_before.value(image);
    // While the next picture is loading the one before it is painted.
    if (image->status() == QQuickImage::Ready && layer.source != image->source())
        layer = {image->source(), filledPart(image->image()), {}, {}, {}};
    if (layer.filled.isNull())
        return;
    choosePart(layer, image);
    keepPixels(layer, image);
    m_layers.insert(image, layer);
    if (layer.kept)
        paintKept(layer, node);
    else
        paintPart(layer, image);
    node->update();
}

void LayerThrift::choosePart(Layer &layer, QQuickImage *image)
{
    // Qt would paint and hand over what has changed, and nothing else. Of a see-through window that
    // changes in parts a compositor may show holes (picom 12 with XRender does), so a layer that is
    // as large as the window changes with every frame.
    if (layer.filled == whole && isSeen(image) && coversWindow(image)) {
        nodeOf(image)->markDirty(QSGNode::DirtyMaterial);
        m_isWholeFrame = true;
    }
    layer.painted = m_isWholeFrame ? layer.filled : whole;
}

// Only in the second frame of the same look: while the clock is resized each one is the last.
void LayerThrift::keepPixels(Layer &layer, const QQuickImage *image) const
{
    const Look look = lookOf(image);
    if (std::exchange(layer.look, look) != look || look.target.isEmpty())
        layer.kept.reset();
    else if (!layer.kept)
        layer.kept.reset(m_window->createTextureFromImage(
            pixelsFor(look.target, look.smooth, keptPixels(look), image->image())));
}

LayerThrift::Look LayerThrift::lookOf(const QQuickImage *image) const
{
    const QTransform transform = image->itemTransform(nullptr, nullptr);
    // Other renderers leave that work to the graphics card.
    if (transform.type() > QTransform::TxTranslate || !isSeen(image)
        || m_window->rendererInterface()->graphicsApi() != QSGRendererInterface::Software)
        return {};
    const double ratio = m_window->effectiveDevicePixelRatio();
    const QRectF place = transform.mapRect(QRectF(QPointF(), image->size()));
    const QRectF target(place.topLeft() * ratio, place.size() * ratio);
    const QImage picture = image->image();
    if (!isWorthKeeping(picture, target.size()))
        return {};
    return {picture.cacheKey(), image->smooth(), target};
}

// What of it lies in the window.
QRect LayerThrift::keptPixels(const Look &look) const
{
    const double ratio = m_window->effectiveDevicePixelRatio();
    return look.target.toAlignedRect()
        & QRect(QPoint(), (QSizeF(m_window->size()) * ratio).toSize());
}

void LayerThrift::paintKept(const Layer &layer, QSGInternalImageNode *node) const
{
    const double ratio = m_window->effectiveDevicePixelRatio();
    const QRectF pixels = keptPixels(layer.look);
    const QRectF target(
        (pixels.topLeft() - layer.look.target.topLeft()) / ratio, pixels.size() / ratio);
    node->setTexture(layer.kept.get());
    node->setTargetRect(target);
    node->setInnerTargetRect(target);
    node->setSubSourceRect(whole);
}

void LayerThrift::paintPart(const Layer &layer, QQuickImage *image) const
{
    QSGInternalImageNode *node = nodeOf(image);
    const QRectF target = paintedPart(image);
    node->setTexture(image->textureProvider()->texture()); // its own
    node->setTargetRect(target);
    node->setInnerTargetRect(target);
    node->setSubSourceRect(layer.painted);
}
