// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qabstractitemmodel.h>

class VsTheme;

/// Read-only list of the catalogue for QML. It keeps nothing of its own: every call asks the root
/// again, and it never notifies, since the catalogue is fixed once it is built.
class VsListModel : public QAbstractListModel
{
    Q_OBJECT

    // Without a notify signal on purpose: the views read the number again when they bind the model
    // anew.
    Q_PROPERTY(int count READ count) // clazy:exclude=qproperty-without-notify

public:
    enum ListKind : qint32 {
        Themes = 1,
        ColorTones = 2, ///< those of the root's current theme
    };
    enum Role {
        NameRole = Qt::UserRole + 1,
        DisplayNameRole,
    };

    /// \a theme is the root of the catalogue and must outlive the model. A \a listKind that is none
    /// of ListKind makes an empty list.
    VsListModel(const VsTheme *theme, qint32 listKind, QObject *parent = nullptr);

    int count() const { return rowCount(); }

    Q_INVOKABLE int rowCount(const QModelIndex &parent = QModelIndex()) const override;

    /// Row of the tone of that name, -1 when there is none; -1 for every name in a list of themes.
    Q_INVOKABLE qsizetype getIndexNumber(const QString &name) const;

    QVariant data(const QModelIndex &index, int role = Qt::DisplayRole) const override;
    QHash<int, QByteArray> roleNames() const override;

    /// Does not check the range; data() of a row that is not there is an invalid variant.
    QModelIndex index(
        int row, int column = 0, const QModelIndex &parent = QModelIndex()) const override;
    QModelIndex parent(const QModelIndex &child) const override;
    using QObject::parent;

private:
    VsTheme entryAt(int row) const;
    VsTheme currentThemeEntry() const;

    const VsTheme *m_theme;
    qint32 m_listKind;
};
