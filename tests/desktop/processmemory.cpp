// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/desktop/processmemory.h"

#include <QtCore/qfile.h>
#include <QtCore/qstring.h>

using namespace Qt::StringLiterals;

double privateMiB(qint64 pid)
{
    QFile file(u"/proc/%1/smaps_rollup"_s.arg(pid)); // proc(5)
    if (!file.open(QFile::ReadOnly))
        return 0;
    double kilobytes = 0;
    const QByteArrayList lines = file.readAll().split('\n');
    for (const QByteArray &line : lines) {
        if (line.startsWith("Private_Dirty:") || line.startsWith("Swap:"))
            kilobytes += line.simplified().split(' ').value(1).toDouble();
    }
    return kilobytes / 1024;
}
