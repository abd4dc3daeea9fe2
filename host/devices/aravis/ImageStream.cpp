// SPDX-License-Identifier: GPL-3.0-or-later
// Buffers, from the library to whoever looks at them and back.
#include "ImageStream.h"

#include <algorithm>
#include <cmath>
#include <cstring>
#include <limits>
#include <mutex>
#include <thread>

#include "PacketTap.h"
#include "PixelFormats.h"

namespace aravis {

namespace {

constexpr double packetHeaderBytes = 36; ///< IPv4, UDP and the stream's own
constexpr size_t mostBuffers = 64;
constexpr size_t leastBuffers = 8;
constexpr size_t wantedBytes = size_t{256} << 20;
constexpr std::chrono::milliseconds shortestEnd{30}; ///< the tap has told by then what had arrived
constexpr std::chrono::milliseconds longestEnd{80};  ///< a window may wait for it
constexpr std::chrono::milliseconds endStep{5};
constexpr quint64 longestGap = 4096; ///< as many frames as a tap's book remembers
constexpr guint endRetentionUs = 10000;
constexpr std::chrono::milliseconds patience{500}; ///< with a tap, which tells of a packet within 20 ms

/// Of a frame in the network, with its leader and trailer: the library looks for a buffer with each. Else 1.
quint64 packetsOf(size_t payload, const StreamConditions& conditions)
{
    const double dataBytes = conditions.packetBytes.value_or(0.0) - packetHeaderBytes;
    return dataBytes > 0.0 ? static_cast<quint64>(std::ceil(static_cast<double>(payload) / dataBytes)) + 2 : 1;
}

LostFrames one(LossCause cause)
{
    LostFrames lost;
    lost.*cause = 1;
    return lost;
}

/// Takes from a gap's length the frames that nobody remembers any more.
LostFrames forgotten(quint64& count)
{
    LostFrames lost;
    lost.unknown = count - std::min(count, longestGap);
    count -= lost.unknown;
    return lost;
}

} // namespace

/// Where buffers go when nobody looks at them any more.
class ImageStream::BufferReturn
{
public:
    explicit BufferReturn(Owned<ArvStream> owned) : stream(std::move(owned)) {}

    void take(ArvBuffer* buffer)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        if (stream)
            arv_stream_push_buffer(stream.get(), buffer);
        else
            g_object_unref(buffer);
    }
    void end()
    {
        Owned<ArvStream> ended;
        const std::lock_guard<std::mutex> lock(mutex);
        ended.swap(stream);
    }

private:
    /// Guards `stream`. Under it a buffer is put into a queue of the library, which takes a lock of its own.
    std::mutex mutex;
    Owned<ArvStream> stream;
};

ImageStream::ImageStream(Owned<ArvStream> owned, size_t payload, std::unique_ptr<PacketTap> ownTap, bool arrivals,
                         const StreamConditions& known)
    : stream(owned.get()),
      buffers(std::make_shared<BufferReturn>(std::move(owned))),
      frames(packetsOf(payload, known)),
      tap(std::move(ownTap)),
      withArrivals(arrivals),
      bufferCount(std::clamp(wantedBytes / std::max<size_t>(payload, 1), leastBuffers, mostBuffers)),
      knownConditions(known)
{
    knownConditions.frameBytes = payload;
    if (!tap && !ARV_IS_GV_STREAM(stream))
        knownConditions.usbBufferBytes = bufferCount * payload;
    for (size_t i = 0; i < bufferCount; ++i) {
        void* memory = ::operator new(payload, std::align_val_t(64));
        std::memset(memory, 0, payload);
        buffers->take(arv_buffer_new_full(payload, memory, memory,
                                          [](void* data) { ::operator delete(data, std::align_val_t(64)); }));
    }
}

ImageStream::~ImageStream()
{
    tap.reset(); // it looks at the stream
    buffers->end();
}

/// Without a tap the library's count of missing buffers is all that is known.
LostFrames ImageStream::withoutTap(const FrameTally::Step& step)
{
    LostFrames lost;
    lost.noBuffer = step.withoutBuffer;
    lost.unknown = step.lost - step.withoutBuffer;
    return lost;
}

std::optional<quint32> ImageStream::numberOf(ArvBuffer* buffer)
{
    // The id of an incomplete frame may be another one's: what counts is which ids no complete frame has.
    if (arv_buffer_get_status(buffer) != ARV_BUFFER_STATUS_SUCCESS)
        return std::nullopt;
    guint64 completed = 0;
    guint64 failed = 0;
    guint64 underruns = 0;
    arv_stream_get_statistics(stream, &completed, &failed, &underruns);
    const quint64 id = arv_buffer_get_frame_id(buffer);
    const bool isFirst = frames.delivered() == 0;
    const auto step = frames.addComplete(id, underruns);
    if (step && tap && (isFirst || step->lost > 0))
        gaps.push_back({id, step->number, isFirst ? std::nullopt : std::optional<quint64>(step->lost),
                        std::chrono::steady_clock::now() + patience});
    else if (step)
        frames.addLost(withoutTap(*step));
    return step ? std::optional<quint32>(step->number) : std::nullopt;
}

/// Counts where the frames of a gap were lost, the first ones first. False if that is not known yet of all.
bool ImageStream::judge(Gap& gap, bool atOnce)
{
    if (!gap.lost) {
        const auto seen = tap->seen();
        if (!seen)
            return atOnce;
        gap.lost = frames.steps(seen->first, gap.nextId);
    }
    frames.addLost(forgotten(*gap.lost));
    for (; *gap.lost > 0; --*gap.lost) {
        const auto cause = tap->lossOf(frames.idBefore(gap.nextId, *gap.lost), gap.nextId, atOnce);
        if (!cause)
            return false;
        frames.addLost(one(*cause));
    }
    return true;
}

bool ImageStream::judgeGaps(quint32 upToNumber, bool atOnce)
{
    const auto now = std::chrono::steady_clock::now();
    while (!gaps.empty() && gaps.front().nextNumber <= upToNumber) {
        if (!judge(gaps.front(), atOnce || now > gaps.front().patience))
            return false;
        gaps.pop_front();
    }
    return true;
}

void ImageStream::finish()
{
    if (!tap)
        return;
    // The library keeps whole frames back as long as it waits for packets of one before them.
    g_object_set(stream, "frame-retention", endRetentionUs, nullptr);
    const auto begin = std::chrono::steady_clock::now();
    for (;;) {
        const auto passed = std::chrono::steady_clock::now() - begin;
        const bool atOnce = passed > longestEnd;
        fetch();
        const bool judged = judgeGaps(std::numeric_limits<quint32>::max(), atOnce);
        const auto seen = tap->seen();
        const auto newest = frames.newest();
        quint64 lost = !seen    ? 0
                       : newest ? frames.steps(*newest, seen->last)
                                : frames.steps(seen->first, seen->last) + 1;
        // Whole frames may not be through the library yet.
        if (judged && passed > shortestEnd && (lost == 0 || atOnce)) {
            frames.addLost(forgotten(lost));
            for (; lost > 0; --lost) {
                const auto cause = *tap->lossOf(frames.idBefore(seen->last, lost - 1), seen->last, true);
                if (cause != &LostFrames::notAttributable) // which was under way to a reader who has left
                    frames.addLost(one(cause));
            }
            return;
        }
        std::this_thread::sleep_for(endStep);
    }
}

StreamConditions ImageStream::conditions() const
{
    StreamConditions all = knownConditions;
    all.grainBytes = grain.bytes();
    return all;
}

void ImageStream::fetch()
{
    const auto until = std::chrono::steady_clock::now() + patience;
    while (Owned<ArvBuffer> buffer{arv_stream_try_pop_buffer(stream)}) {
        if (const auto number = numberOf(buffer.get()))
            waiting.push_back({std::move(buffer), *number, until});
        else
            buffers->take(buffer.release());
    }
}

std::optional<ImageStream::TimePoint> ImageStream::nextLook() const
{
    return waiting.empty() ? std::nullopt : std::optional<TimePoint>(waiting.front().patience);
}

std::optional<ImageStream::Taken> ImageStream::take()
{
    fetch();
    if (waiting.empty())
        return std::nullopt;
    // Frames that wait hold buffers, and none may be lost for that.
    const bool patient =
        waiting.size() < bufferCount / 2 && std::chrono::steady_clock::now() < waiting.front().patience;
    if (!judgeGaps(waiting.front().number, !patient) && withArrivals)
        return std::nullopt;
    Taken taken;
    if (withArrivals) {
        const Waiting& next = waiting.front();
        size_t bytes = 0;
        arv_buffer_get_data(next.buffer.get(), &bytes);
        taken.arrivals.emplace();
        const auto known = tap->find(arv_buffer_get_frame_id(next.buffer.get()), bytes, *taken.arrivals);
        if (known == ArrivalBook::Known::NotYet && patient)
            return std::nullopt;
        grain.add(*taken.arrivals);
    }
    Waiting next = std::move(waiting.front());
    waiting.pop_front();
    taken.image = imageOf(std::move(next));
    return taken;
}

void ImageStream::Taken::writeArrivals()
{
    if (!arrivals)
        return;
    VN_IMG& out = image.descriptor;
    if (arrivals->points().empty())
        out.dataBytes = 0;
    arrivals->writeTicks(const_cast<void*>(out.data),
                         out.dataBytes); // the library's buffer, this program's until it goes back
    const quint64 rows = std::max(out.height, 1U);
    out.width = static_cast<quint32>((out.dataBytes + 2 * rows - 1) / (2 * rows)); // of two bytes
    out.dataFormat = VN_FRM_TRANSPORT_DATA;
    out.bitDepth = 16;
}

DeviceImage ImageStream::imageOf(Waiting frame)
{
    Owned<ArvBuffer>& buffer = frame.buffer;
    DeviceImage image;
    VN_IMG& out = image.descriptor;
    size_t bytes = 0;
    out.size = sizeof(VN_IMG);
    out.data = arv_buffer_get_data(buffer.get(), &bytes);
    out.dataBytes = bytes;
    out.frameNumber = frame.number;
    const quint64 cameraNs = arv_buffer_get_timestamp(buffer.get());
    const quint64 stampNs = cameraNs > 0 ? cameraNs : arv_buffer_get_system_timestamp(buffer.get());
    if (!firstStampNs)
        firstStampNs = stampNs;
    const quint64 sinceNs = std::max(stampNs, *firstStampNs) - *firstStampNs;
    out.tsSec = static_cast<quint32>(sinceNs / 1000000000);
    out.tsUSec = static_cast<quint32>(sinceNs / 1000 % 1000000);
    const ArvBufferPayloadType kind = arv_buffer_get_payload_type(buffer.get());
    if (kind == ARV_BUFFER_PAYLOAD_TYPE_IMAGE || kind == ARV_BUFFER_PAYLOAD_TYPE_EXTENDED_CHUNK_DATA) {
        out.width = static_cast<quint32>(arv_buffer_get_image_width(buffer.get()));
        out.height = static_cast<quint32>(arv_buffer_get_image_height(buffer.get()));
        const quint32 code = arv_buffer_get_image_pixel_format(buffer.get());
        out.dataFormat = static_cast<quint32>(formatValue(code));
        out.bitDepth = bitDepth(code);
    }
    auto release = [to = buffers](ArvBuffer* released) { to->take(released); };
    image.memory = std::shared_ptr<const void>(buffer.release(), std::move(release));
    return image;
}

} // namespace aravis
