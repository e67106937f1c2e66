// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qhash.h>
#include <QtCore/qobject.h>
#include <QtCore/qrect.h>
#include <QtCore/qurl.h>

class QQuickImage;
class QQuickItem;
class QQuickWindow;

/// Keeps the clear parts of pictures from being painted.
///
/// Every layer of the clock is as large as the clock, but a hand fills a fraction of its own, and
/// turning a clear pixel takes as long as turning another. Cut to what is filled, the hands make a
/// tick half as dear. The picture stays what it was, but for rounding. Figures:
/// docs/performance.md.
///
/// What an item paints can be said to nobody but its node in the scene graph, behind the public
/// interface of Qt Quick. With another Qt this may not build; without it the clock is dearer, else
/// the same.
class LayerTrimmer : public QObject
{
    Q_OBJECT

public:
    /// Watches the images in \a window, which owns it. To be made before the first frame.
    explicit LayerTrimmer(QQuickWindow *window);

    /// The part of \a picture outside of which every pixel is clear, with some room about it, in
    /// shares of the picture's width and height. All of it when it is clear throughout. What is
    /// thinner than a 512th of the picture and stands apart may be missed.
    [[nodiscard]] static QRectF filledPart(const QImage &picture);

    /// The part of \a image that is painted, in its coordinates. Null before its first frame.
    [[nodiscard]] QRectF paintedPart(const QQuickImage *image) const;

private:
    struct Filled {
        QUrl source;
        QRectF part; // of the picture, in shares of it
        QRectF painted; // the same, or all
    };

    void trimBelow(QQuickItem *item);
    void trim(QQuickImage *image);

    QHash<const QQuickImage *, Filled> m_filled; // in the last frame
    QHash<const QQuickImage *, Filled> m_before; // in the one before it
    bool m_isWholeFrame = false; // whether all of the window will be painted
};
