// SPDX-License-Identifier: GPL-3.0-or-later
// A signal handler may do next to nothing: it writes a byte into a pipe that the event loop reads.
#include "StopSignals.h"

#include <fcntl.h>
#include <unistd.h>

#include <cerrno>
#include <csignal>

#include <QtCore/QSocketNotifier>

namespace {

int pipeEnds[2] = {-1, -1}; // read, write
constexpr int stopSignals[] = {SIGINT, SIGTERM, SIGHUP};
constexpr int failedWrites[] = {SIGPIPE, SIGXFSZ};

extern "C" void writeByte(int /*signal*/)
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

bool isIgnored(int signal)
{
    struct sigaction action = {};
    return ::sigaction(signal, nullptr, &action) == 0 && action.sa_handler == SIG_IGN;
}

} // namespace

StopSignals::StopSignals(QObject* parent) : QObject(parent)
{
    for (const int signal : failedWrites)
        handle(signal, SIG_IGN);
    if (::pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0) {
        qWarning("No pipe for signals: they end the program at once");
        return;
    }
    auto* notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        char bytes[16];
        while (::read(pipeEnds[0], bytes, sizeof bytes) > 0) {
        }
        Q_EMIT received();
    });
    for (const int signal : stopSignals) {
        if (signal != SIGHUP || !isIgnored(signal))
            handle(signal, writeByte);
    }
}

StopSignals::~StopSignals()
{
    for (const int signal : stopSignals) {
        if (!isIgnored(signal))
            handle(signal, SIG_DFL);
    }
    for (const int signal : failedWrites)
        handle(signal, SIG_DFL);
    for (int& end : pipeEnds) {
        if (end >= 0)
            ::close(end);
        end = -1;
    }
}
