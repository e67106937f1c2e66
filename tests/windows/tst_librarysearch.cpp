// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// Where the built program takes libraries from, and where not.

#include "tests/windows/runningclock.h"

#include <QtCore/qdir.h>
#include <QtCore/qfile.h>
#include <QtCore/qtemporarydir.h>
#include <QtTest/qtest.h>

using namespace Qt::StringLiterals;

class TestLibrarySearch : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { QTest::failOnWarning(); }
    void cleanup() { QDir(Settings::makerFolder()).removeRecursively(); }
    void presentFolderIsLeftAlone();
};

// The modules of the documents need these by their plain names. In a build they lie only where PATH
// says, which Windows looks at after the present folder unless the program says otherwise.
void TestLibrarySearch::presentFolderIsLeftAlone()
{
    const QTemporaryDir folder;
    const QString before = QDir::currentPath();
    for (const QString &name :
        {u"Qt6QuickTemplates2"_s, u"Qt6QuickLayouts"_s, u"Qt6LabsPlatform"_s})
        QVERIFY(QFile::copy(QStringLiteral(VESPER_WITNESS), folder.filePath(name + u".dll"_s)));
    QVERIFY(QDir::setCurrent(folder.path()));
    RunningClock clock;
    QVERIFY(QDir::setCurrent(before));
    const bool hasStarted = clock.waitForWindow();
    QCOMPARE(QDir(folder.path()).entryList({u"*.loaded"_s}), QStringList());
    QVERIFY(hasStarted);
}

QTEST_GUILESS_MAIN(TestLibrarySearch)
#include "tst_librarysearch.moc"
