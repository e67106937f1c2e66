// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qmap.h>
#include <QtCore/qstring.h>

#include <optional>

/// The group "Desktop Entry" of a desktop file, as freedesktop.org has it (Desktop Entry 1.5).
class DesktopFile
{
public:
    /// None when there is no such file or it is no desktop file.
    [[nodiscard]] static std::optional<DesktopFile> read(const QString &path);

    [[nodiscard]] bool contains(const QString &key) const { return m_values.contains(key); }
    /// Without its escapes; empty for a key that is not there.
    [[nodiscard]] QString value(const QString &key) const { return m_values.value(key); }

private:
    QMap<QString, QString> m_values;
};

/// The value of Exec that starts \a program, an absolute path, with nothing else.
[[nodiscard]] QString commandOfProgram(const QString &program);

/// The program that the value \a command of Exec starts; empty if the value is no command.
[[nodiscard]] QString programOfCommand(const QString &command);
