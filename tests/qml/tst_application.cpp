// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// What the program settles for the whole process before anything of it is made. It runs here as it
// is, up to the moment at which its event loop starts.

#include "app/application.h"
#include "config/maker.h"

#include <QtCore/qtemporarydir.h>
#include <QtCore/qtimer.h>
#include <QtTest/qtest.h>
#include <QtWidgets/qapplication.h>
#include <QtWidgets/qstyle.h>

#include <vector>

using namespace Qt::StringLiterals;

namespace
{

struct Globals {
    bool noNativeMenuBar = false;
    QString style;
    QString organizationDomain;
    QString organizationName;
    QString applicationName;
};

Globals globals;
constexpr int ownExitCode = 42;
int exitCode = 0;

void look()
{
    globals = Globals{QCoreApplication::testAttribute(Qt::AA_DontUseNativeMenuBar),
        QApplication::style()->name(), QCoreApplication::organizationDomain(),
        QCoreApplication::organizationName(), QCoreApplication::applicationName()};
    QCoreApplication::exit(ownExitCode);
}

void lookAtTheStartOfTheLoop() { QTimer::singleShot(0, qApp, look); }

} // namespace

Q_COREAPP_STARTUP_FUNCTION(lookAtTheStartOfTheLoop)

class TestApplication : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void exitCodeIsThatOfTheLoop() { QCOMPARE(exitCode, ownExitCode); }
    void menuBarIsNotTheSystems() { QVERIFY(globals.noNativeMenuBar); }
    void styleIsFusion() { QCOMPARE(globals.style, u"fusion"_s); }
    void domainIsTheMakers() { QCOMPARE(globals.organizationDomain, Maker::organizationDomain); }
    void organizationHasNoName() { QCOMPARE(globals.organizationName, QString()); }
    void nameIsThatOfTheProgram() { QCOMPARE(globals.applicationName, u"tst_application"_s); }
};

int main(int argc, char **argv)
{
    const QTemporaryDir home;
    qputenv("HOME", home.path().toUtf8());
    qputenv("QML_IMPORT_PATH", VESPER_IMPORTS);
    // A style of the user's, in the place of which the program has its own.
    QByteArrayList texts{argv[0], "-style", "windows"};
    std::vector<char *> arguments;
    for (QByteArray &text : texts)
        arguments.push_back(text.data());
    int count = int(arguments.size());
    exitCode = runVesper(count, arguments.data());
    TestApplication testCase;
    return QTest::qExec(&testCase, argc, argv);
}

#include "tst_application.moc"
