// SPDX-FileCopyrightText: 2026 Marrowby Inc.
// SPDX-License-Identifier: MIT

#include "platform/terminationsignals.h"

#include <QtCore/qsocketnotifier.h>

#include <array>
#include <utility>

#include <cerrno>
#include <csignal>
#include <sys/socket.h>
#include <unistd.h>

namespace
{

constexpr std::array caught{SIGTERM, SIGINT, SIGHUP};

// A handler may do next to nothing; writing to a socket is allowed. The first end is the handler's.
std::array<int, 2> ends{-1, -1};
std::array<struct sigaction, caught.size()> before{};

void handle(int /*signal*/)
{
    const int error = errno; // of whatever was interrupted
    const char byte = 0;
    [[maybe_unused]] const auto written = write(ends[0], &byte, sizeof byte);
    errno = error;
}

} // namespace

TerminationSignals::TerminationSignals(QObject *parent)
    : QObject(parent)
{
    if (socketpair(AF_UNIX, SOCK_STREAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0, ends.data()) != 0)
        return; // the signals go on ending the process at once
    m_notifier = std::make_unique<QSocketNotifier>(ends[1], QSocketNotifier::Read);
    connect(m_notifier.get(), &QSocketNotifier::activated, this, [this] {
        char byte = 0;
        while (read(ends[1], &byte, sizeof byte) > 0) { }
        Q_EMIT received();
    });

    struct sigaction action{};
    action.sa_handler = handle;
    action.sa_flags = SA_RESTART;
    for (std::size_t i = 0; i < caught.size(); ++i) {
        sigaction(caught[i], nullptr, &before[i]);
        if (before[i].sa_handler != SIG_IGN) // what nohup and the like have set stays in force
            sigaction(caught[i], &action, nullptr);
    }
}

TerminationSignals::~TerminationSignals()
{
    if (ends[0] < 0)
        return;
    for (std::size_t i = 0; i < caught.size(); ++i)
        sigaction(caught[i], &before[i], nullptr);
    m_notifier.reset();
    for (int &end : ends)
        close(std::exchange(end, -1));
}
