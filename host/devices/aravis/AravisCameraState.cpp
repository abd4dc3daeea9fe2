// SPDX-License-Identifier: GPL-3.0-or-later
// What the worker does with a camera, and what a loss means to it.
#include "AravisCameraState.h"

#include <new>

#include "PacketTap.h"
#include "PixelFormats.h"

namespace aravis {

namespace {

using namespace std::chrono_literals;

constexpr unsigned anyPort = 1;         ///< to try whether packets may be captured
constexpr auto reopenInterval = 1s;     ///< between attempts to reach a lost camera
constexpr auto triggerInterval = 500ms; ///< between looks at a camera's own counter

} // namespace

const CameraConnection::Format* AravisCamera::State::knownFormat(int value) const
{
    for (const auto& known : formats) {
        if (formatValue(known.code) == value)
            return &known;
    }
    return nullptr;
}

int AravisCamera::State::formatLocked() const
{
    return arrivals ? int(VN_FRM_TRANSPORT_DATA) : formatValue(format);
}

bool AravisCamera::State::connect(QString* error)
{
    connection = CameraConnection::open(
        address,
        [weak = weak_from_this()] {
            if (const auto state = weak.lock())
                state->setLost();
        },
        error);
    if (!connection)
        return false;
    const quint32 code = connection->format();
    const int required = connection->requiredThroughput();
    const bool countsTriggers = connection->missedTriggers().has_value();
    const std::lock_guard<std::mutex> lock(mutex);
    format = code;
    parameters.requiredThroughput = required;
    parameters.missedTriggers = countsTriggers ? std::optional<int>(0) : std::nullopt;
    return true;
}

/// On the thread of the library that found out; what is to be cleared up is the worker's business.
void AravisCamera::State::setLost()
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        lostAgain = lost;
        if (lost || closing)
            return;
        lost = true;
        if (acquisition == Acquisition::Running)
            acquisition = Acquisition::Cut;
        notifier.note();
        changed.notify_all();
    }
    if (const auto present = worker.lock())
        present->post([self = shared_from_this()] { self->clearAfterLoss(); });
    notifier.tell();
}

void AravisCamera::State::clearAfterLoss()
{
    endStream(false);
    connection.reset();
    reopenLater();
}

void AravisCamera::State::reopenLater()
{
    if (const auto present = worker.lock())
        present->postLater(reopenInterval, [self = shared_from_this()] { self->reopen(); });
}

void AravisCamera::State::reopen()
{
    {
        const std::lock_guard<std::mutex> lock(mutex);
        lostAgain = false;
    }
    QString error;
    const bool reached = connect(&error) && connection->identity().serial == serial;
    std::unique_lock<std::mutex> lock(mutex);
    if (!reached || lostAgain) {
        lock.unlock();
        connection.reset();
        reopenLater();
        return;
    }
    lost = false;
    notifier.note();
    lock.unlock();
    notifier.tell();
}

bool AravisCamera::State::start()
{
    endStream(true);
    if (!connection)
        return false;
    bool withArrivals = false;
    {
        const std::lock_guard<std::mutex> lock(mutex);
        withArrivals = arrivals;
    }
    const auto onNews = [weak = weak_from_this()] {
        if (const auto state = weak.lock()) {
            const std::lock_guard<std::mutex> lock(state->mutex);
            state->changed.notify_all();
        }
    };
    std::shared_ptr<ImageStream> started;
    try {
        started = connection->start(onNews, withArrivals);
    } catch (const std::bad_alloc&) {
        qCritical("No memory for the buffers of a camera");
    }
    if (!started)
        return false;
    const HostWatch watching(link.name);
    const auto missed = connection->missedTriggers();
    if (missed)
        watchTriggers(*missed);
    const std::lock_guard<std::mutex> lock(mutex);
    stream = std::move(started);
    watch = watching;
    lostEarlier += tally.lost();
    tally = {};
    parameters.missedTriggers = missed ? std::optional<int>(0) : std::nullopt;
    return true;
}

/// Tells every now and then how many more than `before` there are, as long as this acquisition lasts.
void AravisCamera::State::watchTriggers(int before)
{
    const auto look = [self = shared_from_this(), before] {
        const auto missed = self->connection ? self->connection->missedTriggers() : std::nullopt;
        std::unique_lock<std::mutex> lock(self->mutex);
        if (!self->stream)
            return;
        if (missed)
            self->parameters.missedTriggers = *missed - before;
        lock.unlock();
        self->watchTriggers(before);
    };
    if (const auto present = worker.lock())
        present->postLater(triggerInterval, look);
}

void AravisCamera::State::endStream(bool tellCamera)
{
    std::shared_ptr<ImageStream> ended; // without the lock: its threads may want it
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (stream) {
            tally = stream->tally();
            conditions = stream->conditions();
        }
        ended.swap(stream);
        finishing = ended != nullptr;
    }
    if (!ended)
        return;
    if (connection && tellCamera)
        connection->stop();
    ended->finish();
    const std::lock_guard<std::mutex> lock(mutex);
    tally = ended->tally();
    finishing = false;
    changed.notify_all();
}

void AravisCamera::State::close()
{
    endStream(true);
    connection.reset();
}

/// The buffers are made for the format that the acquisition began with.
bool AravisCamera::State::canSetFormat(int value)
{
    const std::lock_guard<std::mutex> lock(mutex);
    const bool known = value == VN_FRM_TRANSPORT_DATA || knownFormat(value);
    return !lost && known && (acquisition == Acquisition::Idle || formatLocked() == value);
}

/// Why times of arrival cannot be had; empty if they can.
QString AravisCamera::State::arrivalsFault() const
{
    if (!route)
        return Text::tr("a USB3 Vision camera's data have no times of arrival, which the throughput is measured by");
    QString fault;
    PacketTap::start(
        {route->camera, route->host, anyPort}, [] {}, {}, &fault);
    return fault;
}

} // namespace aravis
