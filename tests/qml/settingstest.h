// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include "tests/qml/documents.h"

#include <QtQuick/qquickwindow.h>

/// All that is an item below \a item with properties of these names, in the order of the document.
QList<QQuickItem *> itemsWith(const QQuickItem *item, const QByteArrayList &properties);

/// The texts of the labels below \a item.
QStringList labelTexts(const QQuickItem *item);

/// A click of the mouse in the middle of \a item.
void click(const QQuickItem &item);

/// What the tests of the settings window share: the document, shown.
class SettingsTest : public QObject
{
protected:
    /// Makes the objects only, so that a test can change them before open().
    void prepare();
    void open();
    void close();

    QQuickItem *content() const { return m_window->contentItem(); }
    QList<QQuickItem *> checkBoxes() const { return itemsWith(content(), {"setting", "checked"}); }
    QList<QQuickItem *> sliderRows() const { return itemsWith(content(), {"setting", "slider"}); }
    QQuickItem *checkBoxOf(const QString &setting) const;
    /// The slider with its labels, its value box and its reset button.
    QQuickItem *sliderOf(const QString &setting) const;
    QQuickItem *toneChooser() const
    {
        return byId<QQuickItem>(m_window, QStringLiteral("toneChooser"));
    }

    std::unique_ptr<Documents> m_documents;
    std::unique_ptr<QObject> m_root;
    QQuickWindow *m_window = nullptr; // the root
};
