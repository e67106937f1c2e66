// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qrect.h>
#include <QtCore/qstring.h>

/// Monitors that come and go, made of the one screen of the X server. Each call waits until this
/// program knows the change and is false if that does not happen.
namespace Monitors
{

constexpr QRect left(0, 0, 960, 1080);
constexpr QRect right(960, 0, 960, 1080);

/// Divides the server's screen: \a geometry is all that remains of it.
[[nodiscard]] bool divide(QRect geometry = left);
/// There are monitors of the names "right" and "third" only as long as they have been added.
[[nodiscard]] bool add(const QString &name, QRect geometry);
[[nodiscard]] bool addRight(QRect geometry = right);
[[nodiscard]] bool remove(const QString &name);
[[nodiscard]] bool removeRight();
[[nodiscard]] bool has(const QString &name);

/// Whether all of \a rectangle lies on one of them.
[[nodiscard]] bool show(QRect rectangle);

} // namespace Monitors
