// SPDX-License-Identifier: GPL-3.0-or-later
// The way out of a signal handler: a byte in a pipe.
#include "StopSignals.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include <QtCore/QSocketNotifier>

namespace {

int pipeEnds[2] = {-1, -1};
constexpr int stopSignals[] = {SIGINT, SIGTERM, SIGHUP};

void writeByte(int /*signal*/)
{
    const int error = errno;
    const char byte = 0;
    // A full pipe holds the message already.
    [[maybe_unused]] const auto written = ::write(pipeEnds[1], &byte, 1);
    errno = error;
}

void handle(int signal, void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    ::sigaction(signal, &action, nullptr);
}

} // namespace

StopSignals::StopSignals(QObject* parent) : QObject(parent)
{
    if (::pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0)
        return;
    m_notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(m_notifier, &QSocketNotifier::activated, this, [this] {
        char bytes[16];
        while (::read(pipeEnds[0], bytes, sizeof bytes) > 0) {
        }
        Q_EMIT received();
    });
    for (const int signal : stopSignals)
        handle(signal, writeByte);
    handle(SIGPIPE, SIG_IGN);
}

StopSignals::~StopSignals()
{
    for (const int signal : stopSignals)
        handle(signal, SIG_DFL);
    for (int& end : pipeEnds) {
        ::close(end);
        end = -1;
    }
}
