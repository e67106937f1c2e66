// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "theme/vslistmodel.h"

#include "theme/vstheme.h"

VsListModel::VsListModel(const VsTheme *theme, qint32 listKind, QObject *parent)
    : QAbstractListModel(parent)
    , m_theme(theme)
    , m_listKind(listKind)
{
}

qsizetype VsListModel::getIndexNumber(const QString &name) const
{
    switch (m_listKind) {
    case Themes:
        // Asks a theme for the index of a theme, which only the root knows: always -1, and meant.
        return m_theme->themeAt(0).themeIndexOf(name);
    case ColorTones:
        return currentThemeEntry().colorToneIndexOf(name);
    default:
        return -1;
    }
}

int VsListModel::rowCount([[maybe_unused]] const QModelIndex &parent) const
{
    switch (m_listKind) {
    case Themes:
        return static_cast<int>(m_theme->themeCount());
    case ColorTones:
        return static_cast<int>(currentThemeEntry().colorToneCount());
    default:
        return 0;
    }
}

QVariant VsListModel::data(const QModelIndex &index, int role) const
{
    const VsTheme entry = entryAt(index.row());
    if (entry.itemKind() == VsTheme::Root)
        return {};
    return role == NameRole ? entry.name() : entry.displayName();
}

QHash<int, QByteArray> VsListModel::roleNames() const
{
    QHash<int, QByteArray> names = QAbstractListModel::roleNames();
    names.insert(NameRole, QByteArrayLiteral("name"));
    names.insert(DisplayNameRole, QByteArrayLiteral("displayName"));
    return names;
}

QModelIndex VsListModel::index(
    int row, int column, [[maybe_unused]] const QModelIndex &parent) const
{
    return createIndex(row, column);
}

QModelIndex VsListModel::parent([[maybe_unused]] const QModelIndex &child) const { return {}; }

/// An empty entry, which has the kind of a root, when there is no such row.
VsTheme VsListModel::entryAt(int row) const
{
    switch (m_listKind) {
    case Themes:
        return m_theme->themeAt(row);
    case ColorTones:
        return currentThemeEntry().colorToneAt(row);
    default:
        return VsTheme();
    }
}

/// An empty entry, which has no tones, while no tone is current.
VsTheme VsListModel::currentThemeEntry() const
{
    return m_theme->findTheme(m_theme->currentTheme());
}
