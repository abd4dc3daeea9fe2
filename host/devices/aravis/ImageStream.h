// SPDX-License-Identifier: GPL-3.0-or-later
// The frames of one acquisition.
#ifndef KESTROVA_ARAVIS_IMAGESTREAM_H
#define KESTROVA_ARAVIS_IMAGESTREAM_H

#include <chrono>
#include <deque>
#include <memory>
#include <optional>

#include "ArrivalGrain.h"
#include "CameraDevice.h"
#include "FrameTally.h"
#include "GlibOwners.h"

namespace aravis {

class PacketTap;

/// Owns the library's stream and its buffers. Made and destroyed by the camera's worker; the rest may be called from
/// any thread, one at a time. Buffers that somebody still looks at go back to the stream, or when that is gone to the
/// system.
class ImageStream
{
public:
    using TimePoint = std::chrono::steady_clock::time_point;

    /// A frame, and when its bytes arrived if that is what its data are to tell.
    struct Taken
    {
        DeviceImage image;
        std::optional<ArrivalCurve> arrivals;

        /// Writes the times over the picture. Takes a while; without a lock.
        void writeArrivals();
    };

    /// Allocates the buffers and touches them, lest the system does it while frames arrive. May throw std::bad_alloc.
    /// A tap (or null) tells where frames get lost; with `arrivals` the frames' data are the times that it tells.
    /// `known` is what conditions() tells besides.
    ImageStream(Owned<ArvStream> stream, size_t payload, std::unique_ptr<PacketTap> tap, bool arrivals,
                const StreamConditions& known);
    ~ImageStream();
    ImageStream(const ImageStream&) = delete;
    ImageStream& operator=(const ImageStream&) = delete;

    /// The next whole frame that has arrived, if there is one; with `arrivals` as soon as it is known where those before
    /// it were lost and when its bytes arrived. A frame whose times do not become known, or for which there is no room
    /// to wait, comes without data. Never waits.
    std::optional<Taken> take();
    /// When to look again although no news came.
    std::optional<TimePoint> nextLook() const;
    /// After the last take(), when the camera has been told to send no more: counts what was lost at the end, too. Waits
    /// a moment for the packets that are still under way.
    void finish();
    const FrameTally& tally() const { return frames; }
    StreamConditions conditions() const;

private:
    class BufferReturn;

    struct Waiting
    {
        Owned<ArvBuffer> buffer;
        quint32 number;
        TimePoint patience; ///< how long its times are waited for
    };

    /// What is lost before a frame.
    struct Gap
    {
        quint64 nextId;
        quint32 nextNumber;
        std::optional<quint64> lost; ///< not judged yet; none: what the tap has seen before the first whole frame
        TimePoint patience;          ///< how long it is waited for that
    };

    static LostFrames withoutTap(const FrameTally::Step& step);
    std::optional<quint32> numberOf(ArvBuffer* buffer);
    void fetch();
    bool judge(Gap& gap, bool atOnce);
    bool judgeGaps(quint32 upToNumber, bool atOnce);
    DeviceImage imageOf(Waiting frame);

    ArvStream* stream; ///< `buffers` owns it
    std::shared_ptr<BufferReturn> buffers;
    FrameTally frames;
    std::optional<quint64> firstStampNs;
    std::unique_ptr<PacketTap> tap;
    bool withArrivals;
    size_t bufferCount;
    StreamConditions knownConditions;
    ArrivalGrain grain;
    std::deque<Waiting> waiting;
    std::deque<Gap> gaps; ///< that nobody has judged yet
};

} // namespace aravis

#endif
