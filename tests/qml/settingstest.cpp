// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/qml/settingstest.h"

#include <algorithm>

using namespace Qt::StringLiterals;

namespace
{

QQuickItem *itemOf(const QString &setting, const QList<QQuickItem *> &items)
{
    const auto found = std::ranges::find_if(
        items, [&](const auto *item) { return item->property("setting").toString() == setting; });
    return found == items.end() ? nullptr : *found;
}

} // namespace

QList<QQuickItem *> itemsWith(const QQuickItem *item, const QByteArrayList &properties)
{
    QList<QQuickItem *> found;
    const QList<QQuickItem *> children = item->childItems();
    for (QQuickItem *const child : children) {
        if (std::ranges::all_of(properties, [child](const QByteArray &name) {
                return child->metaObject()->indexOfProperty(name) >= 0;
            }))
            found += child;
        found += itemsWith(child, properties);
    }
    return found;
}

QStringList labelTexts(const QQuickItem *item)
{
    QStringList texts;
    const QList<QQuickItem *> labels = itemsWith(item, {"elide", "text"});
    for (const QQuickItem *label : labels)
        texts += label->property("text").toString();
    return texts;
}

void click(const QQuickItem &item)
{
    const QPointF centre(item.width() / 2, item.height() / 2);
    QTest::mouseClick(item.window(), Qt::LeftButton, {}, item.mapToScene(centre).toPoint());
}

void SettingsTest::prepare() { m_documents = std::make_unique<Documents>(Documents::AllObjects); }

void SettingsTest::open()
{
    m_root = m_documents->create(u"Settings.qml"_s);
    m_window = qobject_cast<QQuickWindow *>(m_root.get());
    QVERIFY(m_window);
    m_window->setPosition(100, 40);
    m_window->show();
    QVERIFY(QTest::qWaitForWindowExposed(m_window));
}

void SettingsTest::close()
{
    m_root.reset();
    m_documents.reset();
}

QQuickItem *SettingsTest::checkBoxOf(const QString &setting) const
{
    return itemOf(setting, checkBoxes());
}

QQuickItem *SettingsTest::sliderOf(const QString &setting) const
{
    const QQuickItem *row = itemOf(setting, sliderRows());
    return row ? row->property("slider").value<QQuickItem *>() : nullptr;
}
