// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "qml/layerthrift.h"

#include "platform/freememory.h"

#include <QtCore/qtextstream.h>
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

namespace
{

constexpr QRectF whole(0, 0, 1, 1);
// About the filled part: the same drawing at another size may reach a little further, and lines are
// left out below.
constexpr double room = 1.0 / 64;
constexpr int lines = 512; // to look at, at most twice as many

QRectF scaled(QRectF shares, QSizeF size)
{
    return {shares.x() * size.width(), shares.y() * size.height(), shares.width() * size.width(),
        shares.height() * size.height()};
}

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

// A picture that was cut says by itself where it lies in the whole one, so that it is never taken
// for that: its left and top edge, and the width and height of the whole, in pixels.
constexpr QLatin1StringView placeText("Place");

QImage cutTo(QRectF part, const QImage &picture)
{
    const int width = picture.width();
    const int height = picture.height();
    const QRect pixels = scaled(part, picture.size()).toAlignedRect() & picture.rect();
    QImage cut = picture.copy(pixels);
    QString place;
    QTextStream(&place) << pixels.x() << ' ' << pixels.y() << ' ' << width << ' ' << height;
    cut.setText(placeText, place);
    return cut;
}

// The part of the whole picture that this one has, in shares of it.
QRectF heldPart(const QImage &picture)
{
    QString place = picture.text(placeText);
    if (place.isEmpty())
        return whole;
    double x = 0;
    double y = 0;
    double width = 0;
    double height = 0;
    QTextStream(&place) >> x >> y >> width >> height;
    return {x / width, y / height, picture.width() / width, picture.height() / height};
}

// Qt would hold the whole picture beside what is cut out, so it is told that this is all.
void cutPicture(QQuickImage *image, QRectF part)
{
    auto *base = static_cast<QQuickImageBasePrivate *>(QQuickItemPrivate::get(image));
    base->currentPix->setImage(cutTo(part, image->image()));
    image->update();
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
        visitImages(m_window->contentItem(), [this](QQuickImage *image) { lookAt(image); });
    };
    connect(window, &QQuickWindow::afterSynchronizing, this, lookAtAll, Qt::DirectConnection);
    m_cutting.setSingleShot(true);
    m_cutting.setInterval(1s);
    connect(&m_cutting, &QTimer::timeout, this, &LayerThrift::cutPictures);
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
    return heldPart(image->image()) != whole;
}

void LayerThrift::lookAt(QQuickImage *image)
{
    auto *node = nodeOf(image);
    if (!node || image->fillMode() != QQuickImage::Stretch || image->mirror()
        || image->mirrorVertically())
        return;
    Layer layer = m_before.value(image);
    const QImage picture = image->image();
    const bool isOtherPicture = layer.picture != picture.cacheKey();
    layer.picture = picture.cacheKey();
    if (isOtherPicture)
        layer.held = heldPart(picture);
    // While the next picture is loading the one before it is painted.
    if (image->status() == QQuickImage::Ready && layer.source != image->source()) {
        layer.source = image->source();
        layer.filled = layer.held == whole ? filledPart(picture) : layer.held;
    }
    if (layer.filled.isNull())
        return;
    if (isOtherPicture && isComputedHere())
        m_cutting.start();
    choosePart(layer, image);
    keepPixels(layer, image);
    m_layers.insert(image, layer);
    if (layer.kept)
        paintKept(layer, image);
    else
        paintPart(layer, image);
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
    if (transform.type() > QTransform::TxTranslate || !isSeen(image) || !isComputedHere())
        return {};
    const double ratio = m_window->effectiveDevicePixelRatio();
    const QRectF place = transform.mapRect(scaled(layer.held, image->size()));
    const QRectF target(place.topLeft() * ratio, place.size() * ratio);
    const QImage picture = image->image();
    if (!isWorthKeeping(picture, target.size()))
        return {};
    return {picture.cacheKey(), image->smooth(), target};
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

// A second after the last picture has come, and once more to give back what the cuts have freed,
// for the scene graph holds the whole pictures until the next frame.
void LayerThrift::cutPictures()
{
    bool isAnyCut = false;
    visitImages(m_window->contentItem(), [&](QQuickImage *image) {
        const Layer layer = m_layers.value(image);
        if (image->status() != QQuickImage::Ready || layer.filled.isNull() || layer.filled == whole
            || isCut(image))
            return;
        cutPicture(image, layer.filled);
        isAnyCut = true;
    });
    if (isAnyCut)
        m_cutting.start();
    else
        returnFreeMemory();
}
