// SPDX-License-Identifier: GPL-3.0-or-later
// Tells one listener of losses and returns: in their order, one at a time, and such that a removed listener is not
// running any more.
#ifndef KESTROVA_LOSSNOTIFIER_H
#define KESTROVA_LOSSNOTIFIER_H

#include <condition_variable>
#include <functional>
#include <memory>
#include <mutex>
#include <thread>

/// Any thread. A device notes a change under its own lock, which gives the changes their order, and tells it without.
class LossNotifier
{
public:
    using Listener = std::function<void(bool lost)>;

    /// Not under the device's lock: waits for a call that is under way, unless it comes from that call.
    void setListener(Listener next)
    {
        auto replaced = next ? std::make_shared<const Listener>(std::move(next)) : nullptr;
        std::unique_lock<std::mutex> lock(mutex);
        listener.swap(replaced);
        const auto nobody = std::thread::id();
        idle.wait(lock, [&] { return teller == nobody || teller == std::this_thread::get_id(); });
    }

    /// The device is lost, or back: whichever it was not before.
    void note()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        ++untold;
    }

    /// Whether something was noted that nobody is telling yet.
    bool hasNews() const
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return untold > 0 && teller == std::thread::id();
    }

    /// Tells what was noted, without a lock. If another call is at it, that one goes on with what is new.
    void tell()
    {
        std::unique_lock<std::mutex> lock(mutex);
        if (teller != std::thread::id())
            return;
        teller = std::this_thread::get_id();
        while (untold > 0) {
            --untold;
            told = !told;
            const bool lost = told;
            auto call = listener;
            lock.unlock();
            if (call)
                (*call)(lost);
            call.reset();
            lock.lock();
        }
        teller = std::thread::id();
        idle.notify_all();
    }

private:
    /// Guards the fields below. A leaf: nothing is called while it is held.
    mutable std::mutex mutex;
    std::condition_variable idle;
    std::shared_ptr<const Listener> listener;
    std::thread::id teller; ///< who is telling
    int untold = 0;         ///< changes; they alternate, so their number says it all
    bool told = false;      ///< whether the last one told was a loss
};

#endif
