// SPDX-License-Identifier: GPL-3.0-or-later
// Tells one listener of a loss or a return, such that a removed listener is not running any more.
#ifndef KESTROVA_SIM_LOSSNOTIFIER_H
#define KESTROVA_SIM_LOSSNOTIFIER_H

#include <algorithm>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <thread>
#include <vector>

namespace sim {

/// Any thread. The listener is called without a lock and may remove itself.
class LossNotifier
{
public:
    void setListener(std::function<void(bool lost)> next)
    {
        std::unique_lock<std::mutex> lock(mutex);
        listener = std::move(next);
        const auto self = std::this_thread::get_id();
        idle.wait(lock, [&] {
            return std::all_of(callers.begin(), callers.end(), [&](std::thread::id id) { return id == self; });
        });
    }

    void notify(bool lost)
    {
        std::unique_lock<std::mutex> lock(mutex);
        if (!listener)
            return;
        const auto call = listener;
        const auto self = std::this_thread::get_id();
        callers.push_back(self);
        lock.unlock();
        call(lost);
        lock.lock();
        callers.erase(std::find(callers.begin(), callers.end(), self));
        idle.notify_all();
    }

private:
    /// Guards the fields below. A leaf: nothing is called while it is held.
    std::mutex mutex;
    std::condition_variable idle;
    std::function<void(bool lost)> listener;
    std::vector<std::thread::id> callers;
};

} // namespace sim

#endif
