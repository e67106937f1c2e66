// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "qml/layerpictures.h"

#include "platform/freememory.h"
#include "qml/layerdrawing.h"

#include <QtQml/qqmlengine.h>
#include <QtQuick/qquickimageprovider.h>
#include <QtQuick/qquickwindow.h>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace
{

constexpr auto providerName = "layers"_L1;
constexpr auto themesFolder = "/themes/"_L1;
constexpr LayerDrawing::Place placeBeforeWindow{512, 1.0};

// Asked by the thread of QML's image reader, or by the GUI thread where an image is not
// asynchronous. An address is side/ratio/file.
class LayerProvider : public QQuickImageProvider
{
public:
    LayerProvider()
        : QQuickImageProvider(QQuickImageProvider::Image)
    {
    }

    QImage requestImage(const QString &id, QSize *size, const QSize &) override
    {
        const LayerDrawing::Place place{
            id.section(u'/', 0, 0).toInt(), id.section(u'/', 1, 1).toDouble()};
        const QString file = u':' + themesFolder + id.section(u'/', 2);
        const QImage picture = file.contains("_hand_"_L1) ? LayerDrawing::hand(file, place)
                                                          : LayerDrawing::standing(file, place);
        *size = picture.size();
        return picture;
    }
};

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
    QObject::connect(
        &m_rest, &QTimer::timeout, &m_rest, returnFreeMemory); // of the larger drawings
}

void LayerPictures::addTo(QQmlEngine *engine)
{
    engine->addImageProvider(providerName, new LayerProvider); // the engine owns it
    engine->addUrlInterceptor(this);
}

void LayerPictures::setWindow(const QQuickWindow *window) { m_window = window; }

QUrl LayerPictures::intercept(const QUrl &url, DataType type)
{
    if (type != UrlString || !isLayer(url))
        return url;
    m_rest.start();
    const auto place = m_window
        ? LayerDrawing::Place{m_window->width(), m_window->effectiveDevicePixelRatio()}
        : placeBeforeWindow;
    return QUrl(u"image://%1/%2/%3/%4"_s.arg(providerName)
            .arg(place.side)
            .arg(place.ratio, 0, 'g', 17)
            .arg(url.path().mid(themesFolder.size())));
}
