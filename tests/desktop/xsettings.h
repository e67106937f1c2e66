// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qbytearray.h>
#include <QtCore/qprocess.h>
#include <QtCore/qtemporarydir.h>

/// A settings daemon of the X server; it ends with the object.
class XSettings
{
public:
    /// Starts it with \a settings, in the form of xsettingsd's file: a name and a value a line.
    /// Like change(), this returns when the server has them.
    explicit XSettings(const QByteArray &settings);
    Q_DISABLE_COPY_MOVE(XSettings)
    ~XSettings();

    /// Replaces all settings.
    void change(const QByteArray &settings);

private:
    void write(const QByteArray &settings) const;
    static void waitFor(const QByteArray &settings);

    QTemporaryDir m_folder;
    QProcess m_daemon;
};
