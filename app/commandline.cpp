// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "app/commandline.h"

#include "config/configfolder.h"

#include <algorithm>
#include <array>

using namespace Qt::StringLiterals;

namespace
{

bool isOneOf(const QString &argument, std::array<QLatin1StringView, 2> texts)
{
    return std::any_of(texts.begin(), texts.end(), [&argument](QLatin1StringView text) {
        return argument.compare(text, Qt::CaseInsensitive) == 0;
    });
}

} // namespace

std::optional<int> runMaintenanceSwitches(const QStringList &arguments)
{
    if (arguments.size() < 2)
        return std::nullopt;
    for (const QString &argument : arguments) {
        if (isOneOf(argument, {"-u"_L1, "--uninstall"_L1}))
            return uninstallCleanup() ? 0 : 1;
        if (isOneOf(argument, {"-r"_L1, "--reset"_L1}))
            removeConfigurationFolder(); // a folder that cannot be removed is left
    }
    return std::nullopt;
}
