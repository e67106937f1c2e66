// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "tests/desktop/xsettings.h"

#include <QtCore/qfile.h>
#include <QtTest/qtest.h>

#include <csignal>

using namespace Qt::StringLiterals;

XSettings::XSettings(const QByteArray &settings)
{
    write(settings);
    m_daemon.start(u"xsettingsd"_s, {u"-c"_s, m_folder.filePath(u"xsettings"_s)});
    QVERIFY(m_daemon.waitForStarted());
    waitFor(settings);
}

XSettings::~XSettings()
{
    m_daemon.terminate();
    m_daemon.waitForFinished();
}

void XSettings::change(const QByteArray &settings)
{
    write(settings);
    kill(pid_t(m_daemon.processId()), SIGHUP); // reads its file again
    waitFor(settings);
}

void XSettings::write(const QByteArray &settings) const
{
    QFile file(m_folder.filePath(u"xsettings"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(settings), settings.size());
}

void XSettings::waitFor(const QByteArray &settings)
{
    QVERIFY(QTest::qWaitFor([&] {
        QProcess dump;
        dump.start(u"dump_xsettings"_s, QStringList());
        return dump.waitForFinished() && dump.readAllStandardOutput().contains(settings);
    }));
}
