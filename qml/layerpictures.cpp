// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "qml/layerpictures.h"

#include "platform/freememory.h"
#include "qml/layerdrawing.h"

#include <QtQml/qqmlengine.h>
#include <QtQuick/qquickimageprovider.h>
#include <QtQuick/qquickitem.h>
#include <QtQuick/qquickwindow.h>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace
{

constexpr auto providerName = "layers"_L1;
constexpr auto themesFolder = "/themes/"_L1;

// For a layer whose window is not known: a third of the source size, which is up to three times
// what the screen shows. A layer that has no size yet gets the size that a first clock has.
LayerDrawing::Place guessedPlace(QSize sourceSize)
{
    constexpr int firstSide = 320;
    return {sourceSize.isEmpty() ? firstSide : sourceSize.width() / 3, 1};
}

// Asked by the thread of QML's image reader, or by the GUI thread where an image is not
// asynchronous. An address is side/ratio/file, the side 0 where it is not known.
class LayerProvider : public QQuickImageProvider
{
public:
    LayerProvider()
        : QQuickImageProvider(QQuickImageProvider::Image)
    {
    }

    QImage requestImage(const QString &id, QSize *size, const QSize &requestedSize) override
    {
        LayerDrawing::Place place{
            id.section(u'/', 0, 0).toInt(), id.section(u'/', 1, 1).toDouble()};
        if (place.side <= 0)
            place = guessedPlace(requestedSize);
        const QString file = u':' + themesFolder + id.section(u'/', 2);
        const QImage picture = file.contains("_hand_"_L1) ? LayerDrawing::hand(file, place)
                                                          : LayerDrawing::standing(file, place);
        *size = picture.size();
        return picture;
    }
};

// When the scale factor changes, the window's size changes at once, that of its content only with
// the next resize event. Before the window is created, and while it is destroyed, only the window
// has a size.
int sideOf(const QQuickWindow &window)
{
    const QQuickItem *content = window.contentItem();
    return content && content->width() > 0 ? int(content->width()) : window.width();
}

bool isLayer(const QUrl &url)
{
    return url.scheme() == "qrc"_L1 && url.path().startsWith(themesFolder)
        && !url.path().endsWith("clock_resize_grip.svg"_L1);
}

} // namespace

LayerPictures::LayerPictures()
{
    m_rest.setSingleShot(true);
    m_rest.setInterval(2s);
    m_rest.callOnTimeout(returnFreeMemory); // of the larger drawings
}

void LayerPictures::addTo(QQmlEngine *engine)
{
    engine->addImageProvider(providerName, new LayerProvider); // the engine owns it
    engine->addUrlInterceptor(this);
}

void LayerPictures::setWindow(const QQuickWindow *window) { m_window = window; }

QUrl LayerPictures::intercept(const QUrl &url, DataType type)
{
    // QML files may be asked for by other threads; an image asks in the GUI thread.
    if (type != UrlString || !isLayer(url))
        return url;
    m_rest.start();
    const int side = m_window ? sideOf(*m_window) : 0;
    const double ratio = m_window ? m_window->effectiveDevicePixelRatio() : 1;
    return QUrl(u"image://%1/%2/%3/%4"_s.arg(providerName)
            .arg(side)
            .arg(ratio, 0, 'g', 17)
            .arg(url.path().mid(themesFolder.size())));
}
