// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// savingprogram once|forever
// Loads the settings, changes them and saves, until it is killed: once for each character that
// comes in, or forever, without a rest. Writes how many saves are over, 0 at first.

#include "config/vsconfig.h"

#include <QtCore/qcoreapplication.h>
#include <QtCore/qstandardpaths.h>

#include <cstdio>

using namespace Qt::StringLiterals;

namespace
{

// So that the number can be told, and by turns to longer and shorter files.
void change(VsConfig &config, int number)
{
    constexpr int lengths = 200;
    config.setLeft(number);
    config.setTop(number);
    config.setWidth(number);
    config.setHeight(number);
    config.setColorToneName(QString(1 + number % lengths, u'x'));
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication application(argc, argv);
    QStandardPaths::setTestModeEnabled(true);
    const bool isForever = QCoreApplication::arguments().value(1) == "forever"_L1;
    VsConfig config;
    for (int number = 0;; ++number) {
        if (number > 0) {
            change(config, number);
            config.save();
        }
        std::printf("%d\n", number);
        std::fflush(stdout);
        if (!isForever && std::getchar() == EOF)
            return 0;
    }
}
