// SPDX-License-Identifier: GPL-3.0-or-later
// A queue, and the thread that empties it and outlives its owner until it has.
#include "CameraWorker.h"

#include <deque>
#include <optional>
#include <thread>
#include <utility>

#include "MonotonicCondition.h"

namespace aravis {

namespace {

using Clock = std::chrono::steady_clock;

/// How many threads there are, of all cameras.
struct Living
{
    std::mutex mutex; ///< guards `count`; nothing is called under it
    MonotonicCondition ended;
    int count = 0;
};

/// Never destroyed: a thread may outlive the program's static objects.
Living& living()
{
    static auto* const threads = new Living;
    return *threads;
}

void countThread(int change)
{
    Living& threads = living();
    const std::lock_guard<std::mutex> lock(threads.mutex);
    threads.count += change;
    threads.ended.notify_all();
}

} // namespace

struct CameraWorker::Queue
{
    struct Later
    {
        Clock::time_point time;
        Task task;
    };

    /// Guards all below; no task is done while it is held.
    std::mutex mutex;
    MonotonicCondition changed; ///< there is something to do, or a call is over
    std::deque<Task> tasks;
    std::optional<Later> later;
    bool ending = false;
    std::thread::id thread;
};

CameraWorker::CameraWorker() : queue(std::make_shared<Queue>())
{
    countThread(1);
    try {
        std::thread(run, queue).detach();
    } catch (...) {
        countThread(-1);
        throw;
    }
}

CameraWorker::~CameraWorker()
{
    std::optional<Queue::Later> dropped; // destroyed without the lock
    const std::lock_guard<std::mutex> lock(queue->mutex);
    queue->ending = true;
    dropped.swap(queue->later);
    queue->changed.notify_all();
}

void CameraWorker::run(const std::shared_ptr<Queue>& queue)
{
    {
        std::unique_lock<std::mutex> lock(queue->mutex);
        queue->thread = std::this_thread::get_id();
        while (!queue->ending || !queue->tasks.empty()) {
            Task task;
            if (!queue->tasks.empty()) {
                task = std::move(queue->tasks.front());
                queue->tasks.pop_front();
            } else if (!queue->later) {
                queue->changed.wait(lock);
            } else if (Clock::now() < queue->later->time) {
                queue->changed.wait_until(lock, queue->later->time);
            } else {
                task = std::move(queue->later->task);
                queue->later.reset();
            }
            if (!task)
                continue;
            lock.unlock();
            task();
            task = {};
            lock.lock();
        }
    }
    countThread(-1);
}

void CameraWorker::post(Task task)
{
    const std::lock_guard<std::mutex> lock(queue->mutex);
    queue->tasks.push_back(std::move(task));
    queue->changed.notify_all();
}

void CameraWorker::postLater(std::chrono::milliseconds delay, Task task)
{
    std::optional<Queue::Later> replaced = Queue::Later{Clock::now() + delay, std::move(task)};
    const std::lock_guard<std::mutex> lock(queue->mutex);
    if (queue->ending)
        return;
    queue->later.swap(replaced);
    queue->changed.notify_all();
}

bool CameraWorker::call(std::chrono::milliseconds limit, std::function<bool()> task, Task undo)
{
    struct Call
    {
        bool abandoned = false;
        bool done = false;
        bool result = false;
    };
    const auto deadline = Clock::now() + limit;
    std::unique_lock<std::mutex> lock(queue->mutex);
    if (queue->thread == std::this_thread::get_id()) {
        lock.unlock();
        return task();
    }
    const auto state = std::make_shared<Call>();
    const auto work = [queue = queue, state, task = std::move(task), undo = std::move(undo)] {
        {
            const std::lock_guard<std::mutex> begin(queue->mutex);
            if (state->abandoned)
                return;
        }
        const bool result = task();
        bool abandoned = false;
        {
            const std::lock_guard<std::mutex> end(queue->mutex);
            state->done = true;
            state->result = result;
            abandoned = state->abandoned;
            queue->changed.notify_all();
        }
        if (result && abandoned && undo)
            undo();
    };
    queue->tasks.emplace_back(work);
    queue->changed.notify_all();
    if (queue->changed.wait_until(lock, deadline, [&] { return state->done; }))
        return state->result;
    state->abandoned = true;
    return false;
}

void CameraWorker::finish(std::chrono::milliseconds limit, Task task)
{
    const auto deadline = Clock::now() + limit;
    const auto done = std::make_shared<bool>(false);
    post([queue = queue, done, task = std::move(task)] {
        task();
        const std::lock_guard<std::mutex> end(queue->mutex);
        *done = true;
        queue->changed.notify_all();
    });
    std::unique_lock<std::mutex> lock(queue->mutex);
    queue->changed.wait_until(lock, deadline, [&] { return *done; });
}

bool CameraWorker::waitForAll(std::chrono::milliseconds limit)
{
    const auto deadline = Clock::now() + limit;
    Living& threads = living();
    std::unique_lock<std::mutex> lock(threads.mutex);
    return threads.ended.wait_until(lock, deadline, [&] { return threads.count == 0; });
}

} // namespace aravis
