// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "platform/packageidentity.h"

#include <QtCore/qcoreapplication.h>
#include <QtCore/qfile.h>

using namespace Qt::StringLiterals;

// The packages put a marker file beside the program.
bool hasPackageIdentity()
{
    return QFile::exists(QCoreApplication::applicationDirPath() + u"/installed-by-package"_s);
}

QString applicationUserModelId() { return {}; }
