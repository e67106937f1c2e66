// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qlist.h>
#include <QtCore/qstring.h>

/// The numbers between the dots of \a text, in their order; what is no decimal number is left out.
[[nodiscard]] QList<int> versionToNumbers(const QString &text);

/// -1 if the version \a a is lower than \a b, 1 if it is higher, else 0. Only the positions that
/// both have count, so 4.1 equals 4.1.5: meant so. A text without any number equals every version.
[[nodiscard]] int compareVersions(const QString &a, const QString &b);
