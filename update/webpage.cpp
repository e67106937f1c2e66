// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "update/webpage.h"

#include <QtCore/qurl.h>

using namespace Qt::StringLiterals;

bool isWebPage(const QUrl &url)
{
    // An invalid address still has its scheme.
    return url.isValid() && !url.host().isEmpty()
        && (url.scheme() == "https"_L1 || url.scheme() == "http"_L1);
}
