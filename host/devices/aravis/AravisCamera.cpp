// SPDX-License-Identifier: GPL-3.0-or-later
// The calls of the host: what the state knows, or what the worker is to do about it.
#include "AravisCamera.h"

#include <algorithm>
#include <cstring>
#include <exception>

#include "AravisCameraState.h"
#include "HostLink.h"
#include "PixelFormats.h"

namespace aravis {

namespace {

using namespace std::chrono_literals;

constexpr auto openLimit = 15s;  ///< a search takes its time, and so do attempts to reach a camera
constexpr auto callLimit = 1s;   ///< for what a camera does in milliseconds
constexpr auto startLimit = 3s;  ///< with all the buffers to be made
constexpr auto stopLimit = 50ms; ///< a window may wait for it, and a dead camera has not to hear of it
constexpr auto endLimit = 140ms; ///< since the stop; the rest is waited for by whoever asks what was lost

bool isFormat(const char* name)
{
    return std::strcmp(name, VN_PRM_IMAGE_DATA_FORMAT) == 0;
}

} // namespace

std::shared_ptr<AravisCamera> AravisCamera::open(const QString& name, QString* error)
{
    const auto address = parseAddress(name);
    if (!address) {
        *error = Text::tr("\"%1\" is no address of a camera").arg(name);
        return nullptr;
    }
    auto state = std::make_shared<State>();
    state->address = *address;
    std::shared_ptr<CameraWorker> worker;
    try {
        worker = std::make_shared<CameraWorker>();
    } catch (const std::exception& fault) {
        *error = QString::fromLocal8Bit(fault.what());
        return nullptr;
    }
    state->worker = worker;
    const auto fault = std::make_shared<QString>(Text::tr("no answer in time")); // the state's mutex guards the text
    const auto connect = [state, name, fault] {
        QString why;
        if (!state->connect(&why)) {
            const std::lock_guard<std::mutex> lock(state->mutex);
            *fault = why;
            return false;
        }
        const CameraConnection::Identity& who = state->connection->identity();
        // Its throughput is not what a camera's clock tells of its link, and whoever reads a figure has to know.
        const bool arrives = state->connection->route().has_value();
        state->info = {who.model, name, who.userId, arrives ? QStringLiteral("host arrival") : QString()};
        state->serial = who.serial;
        state->formats = state->connection->formats();
        state->route = state->connection->route();
        if (state->route)
            state->link = linkOfHostAddress(state->route->host);
        return true;
    };
    const auto close = [state] { state->close(); };
    if (worker->call(openLimit, connect, close))
        return std::shared_ptr<AravisCamera>(new AravisCamera(std::move(worker), std::move(state)));
    const std::lock_guard<std::mutex> lock(state->mutex);
    *error = QStringLiteral("%1: %2").arg(name, *fault);
    return nullptr;
}

AravisCamera::AravisCamera(std::shared_ptr<CameraWorker> ownWorker, std::shared_ptr<State> ownState)
    : worker(std::move(ownWorker)), state(std::move(ownState))
{
}

AravisCamera::~AravisCamera()
{
    {
        const std::lock_guard<std::mutex> lock(state->mutex);
        state->closing = true;
        state->acquisition = Acquisition::Idle;
    }
    worker->post([closed = state] { closed->close(); });
}

SxCameraInfo AravisCamera::info() const
{
    return state->info;
}

CameraLink AravisCamera::link() const
{
    return state->link;
}

bool AravisCamera::getInt(const char* name, int& value)
{
    const std::lock_guard<std::mutex> lock(state->mutex);
    if (state->lost)
        return false;
    if (isFormat(name)) {
        value = state->formatLocked();
        return true;
    }
    const auto known = state->parameters.get(name, state->stream ? state->stream->tally() : state->tally);
    value = known.value_or(value);
    return known.has_value();
}

bool AravisCamera::setInt(const char* name, int value)
{
    if (isFormat(name) && state->canSetFormat(value)) {
        if (value == VN_FRM_TRANSPORT_DATA) {
            const QString fault = state->arrivalsFault();
            if (!fault.isEmpty())
                qCritical("%s: %s", qPrintable(state->info.id), qPrintable(fault));
            const std::lock_guard<std::mutex> lock(state->mutex);
            state->arrivals |= fault.isEmpty() && state->acquisition == Acquisition::Idle;
            return state->arrivals;
        }
        return setFormat(state->knownFormat(value)->code);
    }
    const std::lock_guard<std::mutex> lock(state->mutex);
    return !state->lost && !isFormat(name) && state->parameters.set(name, value);
}

bool AravisCamera::setFormat(quint32 code)
{
    const auto set = [state = state](quint32 wanted) {
        if (!state->connection)
            return false;
        if (state->connection->format() != wanted && !state->connection->setFormat(wanted))
            return false;
        const int required = state->connection->requiredThroughput();
        const std::lock_guard<std::mutex> lock(state->mutex);
        state->format = wanted;
        state->arrivals = false;
        state->parameters.requiredThroughput = required;
        return true;
    };
    quint32 before = 0;
    {
        const std::lock_guard<std::mutex> lock(state->mutex);
        before = state->format;
        if (before == code) { // nobody else changes it
            state->arrivals = false;
            return true;
        }
    }
    return worker->call(
        callLimit, [set, code] { return set(code); }, [set, before] { set(before); });
}

bool AravisCamera::canSet(const char* name, int value)
{
    if (isFormat(name))
        return state->canSetFormat(value) && (value != VN_FRM_TRANSPORT_DATA || state->arrivalsFault().isEmpty());
    const std::lock_guard<std::mutex> lock(state->mutex);
    return !state->lost && state->parameters.canSet(name, value);
}

bool AravisCamera::hasParameter(const char* name) const
{
    return isFormat(name) || HostParameters::has(name);
}

QList<CxCameraParam::SxEnumItem> AravisCamera::enumeration(const char* name) const
{
    QList<CxCameraParam::SxEnumItem> items;
    if (!isFormat(name))
        return items;
    for (const auto& known : state->formats)
        items.append({formatValue(known.code), known.name});
    if (state->route)
        items.append({VN_FRM_TRANSPORT_DATA, Text::tr("Times of arrival")});
    return items;
}

bool AravisCamera::start()
{
    {
        const std::lock_guard<std::mutex> lock(state->mutex);
        if (state->lost)
            return false;
    }
    const auto begin = [state = state] {
        const bool started = state->start();
        const std::lock_guard<std::mutex> lock(state->mutex);
        state->acquisition = started && !state->lost ? Acquisition::Running : Acquisition::Idle;
        return state->acquisition == Acquisition::Running;
    };
    const auto undo = [state = state] {
        state->endStream(true);
        const std::lock_guard<std::mutex> lock(state->mutex);
        state->acquisition = Acquisition::Idle;
    };
    return worker->call(startLimit, begin, undo);
}

bool AravisCamera::stop()
{
    bool lost = false;
    {
        const std::lock_guard<std::mutex> lock(state->mutex);
        if (state->acquisition == Acquisition::Idle)
            return true;
        lost = state->lost;
        state->acquisition = Acquisition::Idle;
        ++state->waitEpoch;
        state->endExpectedBy = std::chrono::steady_clock::now() + endLimit;
        state->changed.notify_all();
    }
    // Nobody gets an image any more, whether the camera has heard of it in time or not.
    if (!lost)
        worker->finish(stopLimit, [state = state] { state->endStream(true); });
    return true;
}

bool AravisCamera::waitForImage(std::chrono::milliseconds limit, DeviceImage& image)
{
    const auto deadline = std::chrono::steady_clock::now() + limit;
    std::optional<ImageStream::Taken> taken;
    std::unique_lock<std::mutex> lock(state->mutex);
    const quint64 epoch = state->waitEpoch;
    if (state->acquisition == Acquisition::Idle)
        return false;
    while (!taken && epoch == state->waitEpoch) {
        auto until = deadline;
        if (state->acquisition == Acquisition::Running && state->stream) {
            taken = state->stream->take();
            until = std::min(deadline, state->stream->nextLook().value_or(deadline));
        }
        if (taken)
            break;
        if (std::chrono::steady_clock::now() >= deadline)
            return false;
        state->changed.wait_until(lock, until);
    }
    lock.unlock();
    if (!taken)
        return false;
    taken->writeArrivals();
    image = std::move(taken->image);
    return true;
}

bool AravisCamera::isLost() const
{
    const std::lock_guard<std::mutex> lock(state->mutex);
    return state->lost;
}

std::optional<LostFrames> AravisCamera::lostFrames() const
{
    std::unique_lock<std::mutex> lock(state->mutex);
    state->changed.wait_until(lock, state->endExpectedBy, [this] { return !state->isEnding(); });
    LostFrames all = state->lostEarlier;
    all += state->stream ? state->stream->tally().lost() : state->tally.lost();
    return all;
}

StreamConditions AravisCamera::streamConditions() const
{
    std::unique_lock<std::mutex> lock(state->mutex);
    StreamConditions all = state->stream ? state->stream->conditions() : state->conditions;
    const HostWatch watch = state->watch;
    lock.unlock();
    watch.tell(all);
    return all;
}

void AravisCamera::setLossListener(std::function<void(bool)> listener)
{
    state->notifier.setListener(std::move(listener));
}

} // namespace aravis
