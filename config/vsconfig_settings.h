// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include "config/vsconfig.h"

#include <QtCore/qjsonobject.h>

#include <type_traits>
#include <variant>

/// One stored setting: where it stands in the file, where it stands in the object and its default.
class VsConfig::Setting
{
public:
    /// An empty \a group is the top level of the file; an empty \a key keeps the setting out of it.
    template <typename T>
    Setting(QLatin1StringView group, QLatin1StringView key, T VsConfig::*member,
        std::type_identity_t<T> defaultValue)
        : m_group(group)
        , m_key(key)
        , m_field(Field<T>{member, std::move(defaultValue)})
    {
    }

    void reset(VsConfig &config) const;
    void copy(const VsConfig &from, VsConfig &to) const;

    /// Takes the value from \a file, the file's top-level object.
    void read(VsConfig &config, const QJsonObject &file) const;
    void write(const VsConfig &config, QJsonObject &file) const;

private:
    template <typename T> struct Field {
        T VsConfig::*member;
        T defaultValue;
    };

    QLatin1StringView m_group;
    QLatin1StringView m_key;
    std::variant<Field<bool>, Field<double>, Field<QString>> m_field;
};
