// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#pragma once

#include <QtCore/qjsonobject.h>
#include <QtCore/qstringlist.h>
#include <QtTest/qtest.h>
#include <QtWidgets/qapplication.h>

#include <optional>

/// Where the catalogues beside a program lie depends on where the program is, and the system's
/// locale is read once. So each case runs in a copy of the test program in a folder of its own,
/// which installs the catalogues and tells what came of it.
namespace TranslatorProbe
{

/// The texts as they stand in the sources.
QJsonObject english();

/// What a copy says that has \a besideFiles in its folder "translations": "installed", "language"
/// and the texts "before", with ("texts") and "after" the translator's life. A file name with
/// "broken" in it becomes a file that is no catalogue, every other one a copy of the one catalogue.
/// Without a
/// \a language it loads the system's; \a locale is what the environment says.
QJsonObject result(const QStringList &besideFiles, const std::optional<QString> &language,
    const QString &locale = QStringLiteral("C"));

/// The part of the copy.
bool isChild(int argc, char **argv);
int runChild(int argc, char **argv);

template <typename Test> int runTest(int argc, char **argv)
{
    if (isChild(argc, argv))
        return runChild(argc, argv);
    const QApplication application(argc, argv);
    Test test;
    return QTest::qExec(&test, argc, argv);
}

} // namespace TranslatorProbe
