// SPDX-License-Identifier: GPL-3.0-or-later
// A signal handler may do next to nothing: it writes a byte into a pipe that the event loop reads.
#include "UnixSignals.h"

#include <csignal>

#include <fcntl.h>
#include <unistd.h>

#include <QtCore/QSocketNotifier>

namespace {

int pipeEnds[2] = {-1, -1}; // read, write; the write end is what the handler uses

constexpr int caught[] = {SIGTERM, SIGINT, SIGHUP};

extern "C" void onSignal(int)
{
    const char byte = 0;
    [[maybe_unused]] const auto written = ::write(pipeEnds[1], &byte, 1);
}

void setHandler(void (*handler)(int))
{
    struct sigaction action = {};
    action.sa_handler = handler;
    action.sa_flags = SA_RESTART;
    sigemptyset(&action.sa_mask);
    for (const int signal : caught) {
        ::sigaction(signal, &action, nullptr);
    }
}

} // namespace

UnixSignals::UnixSignals(QObject* parent) : QObject(parent)
{
    if (::pipe2(pipeEnds, O_CLOEXEC | O_NONBLOCK) != 0) {
        qWarning("No pipe for signals: SIGTERM ends the program at once");
        return;
    }
    auto* notifier = new QSocketNotifier(pipeEnds[0], QSocketNotifier::Read, this);
    connect(notifier, &QSocketNotifier::activated, this, [this] {
        char bytes[16];
        while (::read(pipeEnds[0], bytes, sizeof bytes) > 0) {
        }
        Q_EMIT quitRequested();
    });
    setHandler(onSignal);
}

UnixSignals::~UnixSignals()
{
    setHandler(SIG_DFL);
    ::close(pipeEnds[0]);
    ::close(pipeEnds[1]);
}
