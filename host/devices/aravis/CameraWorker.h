// SPDX-License-Identifier: GPL-3.0-or-later
// The thread of one camera: calls into the library may take many seconds when a camera is dead, and nobody else may
// wait for that.
#ifndef KESTROVA_ARAVIS_CAMERAWORKER_H
#define KESTROVA_ARAVIS_CAMERAWORKER_H

#include <chrono>
#include <functional>
#include <memory>

namespace aravis {

/// Takes tasks from any thread and does them in their order. Tasks must not throw.
class CameraWorker
{
public:
    using Task = std::function<void()>;

    /// Throws std::system_error if the system has no room for a thread.
    CameraWorker();
    /// Waits for nothing: the thread does what it was given and then ends. A task for later is dropped.
    ~CameraWorker();
    CameraWorker(const CameraWorker&) = delete;
    CameraWorker& operator=(const CameraWorker&) = delete;

    void post(Task task);
    /// There is one such task at a time; a new one takes its place.
    void postLater(std::chrono::milliseconds delay, Task task);

    /// Has a task done and waits for its result. False if it was not done within the limit: it is then never begun,
    /// and if it was under way and ends well after all, `undo` follows it. From a task: does it at once.
    bool call(std::chrono::milliseconds limit, std::function<bool()> task, Task undo = {});
    /// Has a task done, whenever that is, and waits for its end at most this long. Not from a task.
    void finish(std::chrono::milliseconds limit, Task task);

    /// Waits until no worker's thread is left. False if the limit passed before.
    static bool waitForAll(std::chrono::milliseconds limit);

private:
    struct Queue;
    static void run(const std::shared_ptr<Queue>& queue);

    std::shared_ptr<Queue> queue;
};

} // namespace aravis

#endif
