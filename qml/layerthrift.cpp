// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "qml/layerthrift.h"

#include "platform/freememory.h"

#include <QtGui/qpainter.h>
#include <QtQuick/private/qquickimage_p.h>
#include <QtQuick/private/qquickimagebase_p_p.h>
#include <QtQuick/private/qquickitem_p.h>
#include <QtQuick/private/qsgadaptationlayer_p.h>
#include <QtQuick/qquickwindow.h>
#include <QtQuick/qsgrendererinterface.h>
#include <QtQuick/qsgtexture.h>
#include <QtQuick/qsgtextureprovider.h>

#include <algorithm>
#include <chrono>
#include <functional>
#include <utility>

using namespace std::chrono_literals;
using PicturePart::scaled;
using PicturePart::whole;

namespace
{

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

// What is left of it may as well stay where it is.
bool isWorthCutting(QRectF filled)
{
    constexpr double most = 0.5;
    return !filled.isNull() && filled.width() * filled.height() < most;
}

// Qt would hold the whole picture beside what is cut out, so it is told that this is all. False
// when there is no memory for it.
bool cutPicture(QQuickImage *image, QRectF part)
{
    const QImage cut = PicturePart::cut(image->image(), part);
    if (cut.isNull())
        return false;
    static_cast<QQuickImageBasePrivate *>(QQuickItemPrivate::get(image))->currentPix->setImage(cut);
    image->update();
    return true;
}

void paint(QQuickImage *image, QSGTexture *texture, QRectF target, QRectF source)
{
    QSGInternalImageNode *node = nodeOf(image);
    node->setTexture(texture);
    node->setTargetRect(target);
    node->setInnerTargetRect(target);
    node->setSubSourceRect(source);
    node->update();
}

void visitImages(QQuickItem *item, const std::function<void(QQuickImage *)> &visit)
{
    const QList<QQuickItem *> children = QQuickItemPrivate::get(item)->paintOrderChildItems();
    for (QQuickItem *child : children) {
        if (auto *image = qobject_cast<QQuickImage *>(child))
            visit(image);
        visitImages(child, visit);
    }
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

// The images tell their nodes to paint all of them in each frame for which they have changed. In
// between, and while no image can change, they are told better.
LayerThrift::LayerThrift(QQuickWindow *window)
    : QObject(window)
    , m_window(window)
{
    const auto lookAtAll = [this] {
        m_isWholeFrame = false;
        m_before = std::exchange(m_layers, {}); // of images that have gone nothing stays
        visitImages(m_window->contentItem(), [this](QQuickImage *image) { lookAt(image); });
    };
    connect(window, &QQuickWindow::afterSynchronizing, this, lookAtAll, Qt::DirectConnection);
    // In the course of a frame, which brings the nodes what is left of the pictures.
    const auto cutWhenDue = [this] {
        if (std::exchange(m_isCutDue, false))
            cutPictures();
    };
    connect(window, &QQuickWindow::beforeSynchronizing, this, cutWhenDue, Qt::DirectConnection);
    m_rest.setSingleShot(true);
    m_rest.setInterval(1s);
    connect(&m_rest, &QTimer::timeout, this, &LayerThrift::waitForCut);
}

QRectF LayerThrift::paintedPart(const QQuickImage *image) const
{
    return scaled(m_layers.value(image).painted, image->size());
}

bool LayerThrift::isKept(const QQuickImage *image) const
{
    return m_layers.value(image).kept != nullptr;
}

bool LayerThrift::isCut(const QQuickImage *image) const
{
    return PicturePart::isCut(image->image());
}

bool LayerThrift::isAtRest() const
{
    const auto isCut = [](const Layer &layer) { return layer.held != whole; };
    return !m_rest.isActive() && !m_isCutDue && std::ranges::any_of(m_layers, isCut);
}

void LayerThrift::lookAt(QQuickImage *image)
{
    auto *node = nodeOf(image);
    if (!node || image->fillMode() != QQuickImage::Stretch || image->mirror()
        || image->mirrorVertically())
        return;
    Layer layer = m_before.value(image);
    lookAtPicture(layer, image);
    if (layer.filled.isNull())
        return;
    choosePart(layer, image);
    keepPixels(layer, image);
    m_layers.insert(image, layer);
    if (layer.kept)
        paintKept(layer, image);
    else
        paintPart(layer, image);
}

void LayerThrift::lookAtPicture(Layer &layer, const QQuickImage *image)
{
    const QImage picture = image->image();
    const bool isOtherPicture
        = std::exchange(layer.pictureKey, picture.cacheKey()) != picture.cacheKey();
    if (isOtherPicture) {
        layer.held = PicturePart::held(picture);
        layer.look = {};
    }
    // While the next picture is loading the one before it is painted.
    const bool isOtherDrawing
        = image->status() == QQuickImage::Ready && layer.source != image->source();
    if (isOtherDrawing)
        layer.source = image->source();
    const bool isCut = layer.held != whole;
    if (isCut && (isOtherDrawing || layer.filled.isNull()))
        layer.filled = layer.held; // the image was not looked at for a while
    else if (isOtherDrawing)
        layer.filled = PicturePart::filled(picture);
    if (isOtherPicture && !isCut && isWorthCutting(layer.filled) && isComputedHere())
        m_rest.start();
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

// Only in the second frame of the same look, and of the picture that is meant: while the clock is
// resized each may be the last.
void LayerThrift::keepPixels(Layer &layer, const QQuickImage *image) const
{
    const Look look = lookOf(layer, image);
    if (std::exchange(layer.look, look) != look || look.target.isEmpty())
        layer.kept.reset();
    else if (!layer.kept)
        layer.kept.reset(m_window->createTextureFromImage(
            pixelsFor(look.target, look.smooth, keptPixels(look), image->image())));
}

LayerThrift::Look LayerThrift::lookOf(const Layer &layer, const QQuickImage *image) const
{
    const QTransform transform = image->itemTransform(nullptr, nullptr);
    if (image->status() != QQuickImage::Ready || transform.type() > QTransform::TxTranslate
        || !isSeen(image) || !isComputedHere())
        return {};
    const double ratio = m_window->effectiveDevicePixelRatio();
    const QRectF place = transform.mapRect(scaled(layer.held, image->size()));
    const QRectF target(place.topLeft() * ratio, place.size() * ratio);
    if (!isWorthKeeping(image->image(), target.size()))
        return {};
    return {image->smooth(), target};
}

// Other renderers leave that work to the graphics card, and the pictures to its memory.
bool LayerThrift::isComputedHere() const
{
    return m_window->rendererInterface()->graphicsApi() == QSGRendererInterface::Software;
}

// What of it lies in the window.
QRect LayerThrift::keptPixels(const Look &look) const
{
    const double ratio = m_window->effectiveDevicePixelRatio();
    return look.target.toAlignedRect()
        & QRect(QPoint(), (QSizeF(m_window->size()) * ratio).toSize());
}

void LayerThrift::paintKept(const Layer &layer, QQuickImage *image) const
{
    const double ratio = m_window->effectiveDevicePixelRatio();
    const QRectF pixels = keptPixels(layer.look);
    const QRectF target(
        (pixels.topLeft() - layer.look.target.topLeft()) / ratio, pixels.size() / ratio);
    const QPointF corner = scaled(layer.held, image->size()).topLeft();
    paint(image, layer.kept.get(), target.translated(corner), whole);
}

void LayerThrift::paintPart(const Layer &layer, QQuickImage *image) const
{
    const QRectF &held = layer.held;
    const QRectF &painted = layer.painted; // what of it is not held is clear
    const QRectF source((painted.x() - held.x()) / held.width(),
        (painted.y() - held.y()) / held.height(), painted.width() / held.width(),
        painted.height() / held.height());
    paint(image, image->textureProvider()->texture(), paintedPart(image), source);
}

// While pictures are on their way those that are there may soon be of no use.
void LayerThrift::waitForCut()
{
    if (isAnyLoading()) {
        m_rest.start();
        return;
    }
    m_isCutDue = true;
    m_window->update();
}

bool LayerThrift::isAnyLoading() const
{
    bool result = false;
    visitImages(m_window->contentItem(), [&result](const QQuickImage *image) {
        result = result || image->status() == QQuickImage::Loading;
    });
    return result;
}

void LayerThrift::cutPictures()
{
    bool isAnyCut = false;
    visitImages(m_window->contentItem(), [&](QQuickImage *image) {
        const Layer layer = m_layers.value(image);
        const QImage picture = image->image();
        if (layer.pictureKey == picture.cacheKey() && !PicturePart::isCut(picture)
            && isWorthCutting(layer.filled))
            isAnyCut = cutPicture(image, layer.filled) || isAnyCut;
    });
    // The scene graph lets go of the whole pictures when the frame is over.
    if (isAnyCut)
        QTimer::singleShot(1s, this, returnFreeMemory);
}
