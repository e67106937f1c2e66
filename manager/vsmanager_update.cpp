// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// The update check and its question.

#include "manager/vsmanager.h"

#include "config/maker.h"
#include "config/vsconfig.h"
#include "platform/freememory.h"
#include "update/versionnumber.h"
#include "update/webpage.h"

#include <QtCore/qscopedvaluerollback.h>
#include <QtCore/qthread.h>
#include <QtCore/qurl.h>
#include <QtGui/qdesktopservices.h>
#include <QtWidgets/qmessagebox.h>

#include <chrono>

using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

void VsManager::scheduleUpdateChecks()
{
    m_updateCheckTimer.setInterval(1s); // no check that somebody asks for ends in a timer of 0 ms
    if (m_isPackaged)
        return; // the package manager brings the updates
    QTimer::singleShot(10s, this, &VsManager::checkUpdate);
    connect(&m_updateCheckTimer, &QTimer::timeout, this, &VsManager::checkUpdate);
    m_updateCheckTimer.setInterval(1h);
}

void VsManager::checkUpdate()
{
    m_updateCheckTimer.stop();
    if (!m_config->autoCheckUpdate())
        return;
    auto *const checker = new VsUpdateChecker;
    auto *const thread = new QThread;
    connect(checker, &VsUpdateChecker::versionInfoRecieved, this, &VsManager::onVersionRecieved,
        Qt::QueuedConnection);
    connect(
        checker, &VsUpdateChecker::finished, this,
        [this, thread] {
            thread->quit();
            if (!m_askingForUpdate)
                m_updateCheckTimer.start();
        },
        Qt::QueuedConnection);
    connect(thread, &QThread::finished, checker, &QObject::deleteLater);
    connect(checker, &QObject::destroyed, thread, &QObject::deleteLater);
    connect(thread, &QThread::started, checker, &VsUpdateChecker::checkForUpdate);
    // An answer may have been large. Qt's own thread for the connection ends later, on a busy
    // machine by seconds.
    connect(thread, &QObject::destroyed, this,
        [this] { QTimer::singleShot(10s, this, &returnFreeMemory); });
    checker->moveToThread(thread);
    m_updateThreads.removeAll(nullptr); // those of earlier checks
    m_updateThreads += thread;
    thread->start(QThread::InheritPriority);
}

// A thread must have ended before its object goes. It has no more to do than to close its sockets,
// however long the server keeps silent; should that take long, it is left to the end of the
// process.
void VsManager::endUpdateChecks()
{
    for (const QPointer<QThread> &thread : std::as_const(m_updateThreads)) {
        if (!thread)
            continue;
        thread->quit();
        if (thread->wait(800ms))
            delete thread;
    }
}

void VsManager::onVersionRecieved(const VsUpdateChecker::VersionInfo &info)
{
    if (compareVersions(Maker::programVersion, info.version) >= 0)
        return;
    m_updateCheckTimer.stop();
    {
        // While the question waits, no check may follow: boxes would pile up over an absent user.
        const QScopedValueRollback asking(m_askingForUpdate, true);
        const auto answer = QMessageBox::information(nullptr, tr("Vesper Update"),
            tr("A new version of Vesper is available.\nWould you like to open a download site?"),
            QMessageBox::Yes | QMessageBox::No);
        if (const QUrl site(info.site); answer == QMessageBox::Yes && isWebPage(site))
            QDesktopServices::openUrl(site);
    }
    m_updateCheckTimer.start();
}
