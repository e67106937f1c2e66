// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

// What Windows says when the user locks the session, sent by hand.

#include "platform/sessionlock.h"

#include <QtTest/qsignalspy.h>
#include <QtTest/qtest.h>

#include <windows.h>
#include <wtsapi32.h>

class TestSessionLock : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void tellsOfEachChangeOnce();
    void leavesNoWindow();

private:
    static HWND window() { return FindWindowW(L"VesperSessionLock", nullptr); }
};

void TestSessionLock::tellsOfEachChangeOnce()
{
    const SessionLock lock;
    const QSignalSpy changes(&lock, &SessionLock::lockedChanged);
    QVERIFY(window());
    QVERIFY(!IsWindowVisible(window()));
    const QList<WPARAM> messages{WTS_SESSION_UNLOCK, WTS_SESSION_LOCK, WTS_SESSION_LOCK,
        WTS_REMOTE_CONNECT, WTS_SESSION_UNLOCK, WTS_SESSION_LOCK};
    for (const WPARAM message : messages)
        SendMessageW(window(), WM_WTSSESSION_CHANGE, message, 0);
    SendMessageW(window(), WM_NULL, WTS_SESSION_UNLOCK, 0);
    const QList<QVariantList> expected{{true}, {false}, {true}};
    QCOMPARE(QList<QVariantList>(changes), expected);
}

void TestSessionLock::leavesNoWindow()
{
    {
        const SessionLock lock;
        QVERIFY(window());
    }
    QVERIFY(!window());
    const SessionLock again;
    QVERIFY(window());
}

QTEST_GUILESS_MAIN(TestSessionLock)
#include "tst_sessionlock.moc"
