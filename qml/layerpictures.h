// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qpointer.h>
#include <QtCore/qtimer.h>
#include <QtQml/qqmlabstracturlinterceptor.h>

class QQmlEngine;
class QQuickWindow;

/// Gives the layers of the clock face pictures for the pixels that the screen shows.
///
/// The source size of a layer is up to three times what is shown, which a renderer would sample in
/// each frame. With an object of this class in the engine the picture of each layer comes from an
/// image provider, which reduces it once and by area, and leaves out what is clear around a hand.
/// The properties of the image keep their values; without an object of this class the image draws
/// its source itself.
class LayerPictures : public QQmlAbstractUrlInterceptor
{
public:
    LayerPictures();

    /// Takes over the layers that \a engine loads, which must not outlive this object.
    void addTo(QQmlEngine *engine);

    /// Sets the window that the layers fill, whose size and pixel ratio their pictures have. A
    /// layer asks again only when its size or ratio changes, so call this before the window is
    /// created.
    void setWindow(const QQuickWindow *window);

    /// The image provider's address for a layer at its present size; any other \a url as it is.
    QUrl intercept(const QUrl &url, DataType type) override;

private:
    QPointer<const QQuickWindow> m_window;
    QTimer m_rest; // since the last picture was asked for
};
