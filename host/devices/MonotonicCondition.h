// SPDX-License-Identifier: GPL-3.0-or-later
// A condition variable on the steady clock. std::condition_variable reaches that clock through a call that race
// checkers do not follow: they miss that the waiter gave its lock away and report races that are none.
#ifndef KESTROVA_MONOTONICCONDITION_H
#define KESTROVA_MONOTONICCONDITION_H

#include <chrono>
#include <mutex>

#include <pthread.h>

/// Operations as those of std::condition_variable.
class MonotonicCondition
{
public:
    using TimePoint = std::chrono::steady_clock::time_point;
    using Lock = std::unique_lock<std::mutex>;

    MonotonicCondition()
    {
        pthread_condattr_t attributes;
        pthread_condattr_init(&attributes);
        pthread_condattr_setclock(&attributes, CLOCK_MONOTONIC); // the steady clock
        pthread_cond_init(&condition, &attributes);
        pthread_condattr_destroy(&attributes);
    }
    ~MonotonicCondition() { pthread_cond_destroy(&condition); }
    MonotonicCondition(const MonotonicCondition&) = delete;
    MonotonicCondition& operator=(const MonotonicCondition&) = delete;

    void notify_all() { pthread_cond_broadcast(&condition); }

    void wait(Lock& lock) { pthread_cond_wait(&condition, lock.mutex()->native_handle()); }

    template<typename Predicate>
    void wait(Lock& lock, Predicate done)
    {
        while (!done())
            wait(lock);
    }

    void wait_until(Lock& lock, TimePoint time)
    {
        const auto since = time.time_since_epoch();
        const auto seconds = std::chrono::floor<std::chrono::seconds>(since);
        const timespec at{seconds.count(), std::chrono::nanoseconds(since - seconds).count()};
        pthread_cond_timedwait(&condition, lock.mutex()->native_handle(), &at);
    }

    template<typename Predicate>
    bool wait_until(Lock& lock, TimePoint time, Predicate done)
    {
        while (!done()) {
            if (std::chrono::steady_clock::now() >= time)
                return false;
            wait_until(lock, time);
        }
        return true;
    }

private:
    pthread_cond_t condition;
};

#endif
