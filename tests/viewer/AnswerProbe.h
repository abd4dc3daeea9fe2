// SPDX-License-Identifier: GPL-3.0-or-later
// How long a window takes to answer.
#ifndef KESTROVA_TESTS_ANSWERPROBE_H
#define KESTROVA_TESTS_ANSWERPROBE_H

#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>

#include <QtCore/QCoreApplication>

#include "Files.h"

/// How long a thread has been ready to run without getting a processor.
inline double unservedMs(pid_t thread)
{
    return readFile(QStringLiteral("/proc/self/task/%1/schedstat").arg(thread)).split(' ').value(1).toDouble() / 1e6;
}

/// Asks the event loop for an answer again and again, as a person who clicks all the time would.
class AnswerProbe
{
public:
    AnswerProbe() : asker([this] { run(); }) {}
    ~AnswerProbe()
    {
        stop = true;
        asker.join();
        QCoreApplication::sendPostedEvents(&receiver);
    }

    double longestMs = 0.0;    ///< from question to answer
    double longestOwnMs = 0.0; ///< without what others took of the processors

private:
    void run()
    {
        while (!stop) {
            if (!questionOpen.exchange(true)) {
                const auto asked = std::chrono::steady_clock::now();
                const double unserved = unservedMs(window);
                QMetaObject::invokeMethod(
                    &receiver, [=] { answer(asked, unserved); }, Qt::QueuedConnection);
            }
            std::this_thread::sleep_for(probeEvery);
        }
    }
    void answer(std::chrono::steady_clock::time_point asked, double unserved)
    {
        const std::chrono::duration<double, std::milli> waited = std::chrono::steady_clock::now() - asked;
        longestMs = std::max(longestMs, waited.count());
        longestOwnMs = std::max(longestOwnMs, waited.count() - (unservedMs(window) - unserved));
        questionOpen = false;
    }

    static constexpr auto probeEvery = std::chrono::milliseconds(5);

    QObject receiver;
    const pid_t window = ::gettid();
    std::atomic<bool> questionOpen{false};
    std::atomic<bool> stop{false};
    std::thread asker;
};

#endif
