// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Two version texts, a line each.

#include "fuzztarget.h"

#include "update/versionnumber.h"

#include <QtCore/qstringlist.h>

using namespace Qt::StringLiterals;

namespace
{

QString joined(const QList<int> &numbers)
{
    QStringList parts;
    for (const int number : numbers)
        parts += QString::number(number);
    return parts.join(u'.');
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    const QString text = QString::fromUtf8(reinterpret_cast<const char *>(data), qsizetype(size));
    const QString first = text.section(u'\n', 0, 0);
    const QString second = text.section(u'\n', 1);

    const int order = compareVersions(first, second);
    mustHold(order >= -1 && order <= 1, "lower, equal or higher");
    mustHold(compareVersions(second, first) == -order, "the other way round it is the opposite");
    mustHold(compareVersions(first, first) == 0, "a version equals itself");
    mustHold(compareVersions(first, first + u".7"_s) == 0, "only what both have counts");

    const QList<int> numbers = versionToNumbers(first);
    mustHold(versionToNumbers(joined(numbers)) == numbers, "numbers come back");
    mustHold(compareVersions(joined(numbers), second) == order, "only the numbers count");
    return 0;
}
