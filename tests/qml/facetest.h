// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/qml/documents.h"

#include <QtGui/qcolor.h>

/// The layers of the clock face from the bottom up, which is their order as its children.
enum Layer {
    Base,
    Background,
    Dial,
    Logo,
    HourHand,
    MinuteHand,
    SecondHand,
    Time,
    AmPm,
    Date,
    LayerCount
};

/// The colour of \a object as it reaches the screen: documents hold it in floating point.
inline QRgb rgbaOf(const QObject *object)
{
    return object->property("color").value<QColor>().rgba();
}

/// What the tests of the clock face share: the document in a view.
class FaceTest : public QObject
{
protected:
    static constexpr qreal side = 320;

    void load(Documents::Context context)
    {
        unload();
        m_documents = std::make_unique<Documents>(context);
        m_view = std::make_unique<QQuickView>();
        m_face = m_documents->createFace(*m_view, side);
        QVERIFY(m_face);
    }
    void unload()
    {
        m_view.reset();
        m_documents.reset();
    }

    QQuickItem *layer(Layer which) const { return m_face->childItems().value(which); }
    QQuickItem *item(const char *id) const
    {
        return byId<QQuickItem>(m_face, QLatin1StringView(id));
    }

    std::unique_ptr<Documents> m_documents;
    std::unique_ptr<QQuickView> m_view;
    QQuickItem *m_face = nullptr; // owned by the view
};
