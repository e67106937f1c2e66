// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "update/versionnumber.h"

#include <QtCore/qstringlist.h>

#include <algorithm>

QList<int> versionToNumbers(const QString &text)
{
    QList<int> numbers;
    const QStringList parts = text.split(u'.', Qt::SkipEmptyParts);
    for (const QString &part : parts) {
        bool isNumber = false;
        const int number = part.toInt(&isNumber);
        if (isNumber)
            numbers += number;
    }
    return numbers;
}

int compareVersions(const QString &a, const QString &b)
{
    const QList<int> first = versionToNumbers(a);
    const QList<int> second = versionToNumbers(b);
    const auto common = std::min(first.size(), second.size());
    const auto [left, right] = std::mismatch(first.begin(), first.begin() + common, second.begin());
    if (left == first.begin() + common)
        return 0;
    return *left < *right ? -1 : 1;
}
