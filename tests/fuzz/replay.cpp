// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// In builds without a fuzzer: every file of the folders given as arguments, once.

#include "fuzztarget.h"

#include <QtCore/qdir.h>
#include <QtCore/qfile.h>

int main(int argc, char *argv[])
{
    int count = 0;
    for (int i = 1; i < argc; ++i) {
        const QDir folder(QFile::decodeName(argv[i]));
        const QStringList names = folder.entryList(QDir::Files, QDir::Name);
        for (const QString &name : names) {
            QFile file(folder.filePath(name));
            if (!file.open(QIODevice::ReadOnly))
                return EXIT_FAILURE;
            std::printf("%s\n", qPrintable(name));
            std::fflush(stdout); // the last name is that of the culprit
            const QByteArray input = file.readAll();
            LLVMFuzzerTestOneInput(reinterpret_cast<const std::uint8_t *>(input.constData()),
                std::size_t(input.size()));
            ++count;
        }
    }
    return count > 0 ? EXIT_SUCCESS : EXIT_FAILURE;
}
