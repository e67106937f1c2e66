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
}

void XSettings::write(const QByteArray &settings) const
{
    QFile file(m_folder.filePath(u"xsettings"_s));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QCOMPARE(file.write(settings), settings.size());
}
