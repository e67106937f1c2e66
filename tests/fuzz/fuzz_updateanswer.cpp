// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// What the update service answers: from the body to what the program would do about it.

#include "fuzztarget.h"

#include "config/maker.h"
#include "tests/unit/cannedanswer.h"
#include "update/versionnumber.h"
#include "update/vsupdatechecker.h"
#include "update/webpage.h"

#include <QtCore/qcoreapplication.h>
#include <QtCore/qurl.h>

#include <algorithm>
#include <memory>

using namespace Qt::StringLiterals;

namespace
{

/// A checker, and what it has told of the present answer.
struct World {
    World()
    {
        makeApplication<QCoreApplication>();
        checker = std::make_unique<VsUpdateChecker>();
        QObject::connect(checker.get(), &VsUpdateChecker::errorOccured, checker.get(),
            [this](const QString &) { news += 'e'; });
        QObject::connect(checker.get(), &VsUpdateChecker::versionInfoRecieved, checker.get(),
            [this](const VsUpdateChecker::VersionInfo &received) {
                news += 'v';
                info = received;
            });
        QObject::connect(
            checker.get(), &VsUpdateChecker::finished, checker.get(), [this] { news += 'f'; });
    }

    std::unique_ptr<VsUpdateChecker> checker;
    QByteArray news;
    VsUpdateChecker::VersionInfo info;
};

bool isPlain(char character)
{
    return character > ' ' && character < '\x7f' && character != '"' && character != '<'
        && character != '>' && character != '\\' && character != '`';
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size)
{
    static World world;
    world.news.clear();
    CannedAnswer answer(QByteArray(reinterpret_cast<const char *>(data), qsizetype(size)));
    world.checker->onManagerFinished(&answer);
    mustHold(world.news == "f" || world.news == "ef" || world.news == "vf",
        "an answer is an error, a release or nothing, and then the check is over");
    if (!world.news.startsWith('v'))
        return 0;
    mustHold(world.info.result, "a release was found");
    const int order = compareVersions(Maker::programVersion, world.info.version);
    mustHold(order >= -1 && order <= 1, "order");
    const QUrl site(world.info.site);
    if (!isWebPage(site))
        return 0;
    const QByteArray address = site.toEncoded();
    mustHold(address.startsWith("https:") || address.startsWith("http:"), "for a browser");
    mustHold(std::all_of(address.begin(), address.end(), isPlain),
        "an address without blanks, quotes and control characters");
    return 0;
}
