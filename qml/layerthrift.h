// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include "qml/picturepart.h"

#include <QtCore/qhash.h>
#include <QtCore/qobject.h>
#include <QtCore/qrect.h>
#include <QtCore/qtimer.h>
#include <QtCore/qurl.h>

#include <memory>

class QQuickImage;
class QQuickWindow;
class QSGTexture;

/// Keeps a frame from computing pixels in vain, and the program from holding clear ones.
///
/// Every layer of the clock is as large as the clock, but a hand fills a fraction of its own, and
/// turning a clear pixel takes as long as turning another: hands are cut to what is filled, and
/// once the clock has kept its size and its tone for a second, so are their pictures in memory. A
/// layer that stands is made three times as large as it is shown: once it rests, its pixels are
/// computed for the screen and kept. The picture stays what it was, but for rounding. Figures:
/// docs/performance.md.
///
/// What an item paints can be said to nobody but its node in the scene graph, behind the public
/// interface of Qt Quick. With another Qt this may not build; without it the clock is dearer, else
/// the same.
class LayerThrift : public QObject
{
    Q_OBJECT

public:
    /// Watches the images in \a window, which owns it. To be made before the first frame.
    explicit LayerThrift(QQuickWindow *window);

    /// The part of \a image that is painted, in its coordinates. Null before its first frame.
    [[nodiscard]] QRectF paintedPart(const QQuickImage *image) const;
    /// Whether \a image is painted from pixels that were computed in an earlier frame.
    [[nodiscard]] bool isKept(const QQuickImage *image) const;
    /// Whether \a image holds the filled part of its picture and no more.
    [[nodiscard]] bool isCut(const QQuickImage *image) const;
    /// Whether pictures have been cut, and none waits for it: from here on nothing but what is
    /// shown brings a frame about.
    [[nodiscard]] bool isAtRest() const;

private:
    // What decides about the pixels of an image, beside its picture.
    struct Look {
        bool smooth = false;
        QRectF target; // of all that the picture has, in the window, in pixels

        bool operator==(const Look &) const = default;
    };

    struct Layer {
        QUrl source;
        QRectF filled; // the part of the whole picture, in shares of it
        QRectF painted; // the same, or all
        qint64 pictureKey = 0; // QImage::cacheKey()
        QRectF held = PicturePart::whole; // what of the whole picture the image's own has
        Look look;
        std::shared_ptr<QSGTexture> kept; // the pixels, while the look stays what it is
    };

    void lookAt(QQuickImage *image);
    void lookAtPicture(Layer &layer, const QQuickImage *image);
    void choosePart(Layer &layer, QQuickImage *image);
    void keepPixels(Layer &layer, const QQuickImage *image) const;
    void paintPart(const Layer &layer, QQuickImage *image) const;
    void paintKept(const Layer &layer, QQuickImage *image) const;
    Look lookOf(const Layer &layer, const QQuickImage *image) const;
    QRect keptPixels(const Look &look) const;

    void waitForCut();
    void cutPictures();
    bool isAnyLoading() const;
    bool isComputedHere() const;

    QQuickWindow *m_window;
    QHash<const QQuickImage *, Layer> m_layers; // in the last frame
    QHash<const QQuickImage *, Layer> m_before; // in the one before it
    bool m_isWholeFrame = false; // whether all of the window will be painted
    QTimer m_rest; // since the last picture to cut has come
    bool m_isCutDue = false;
};
