// SPDX-License-Identifier: GPL-3.0-or-later
// The camera itself: sensor, frame buffer, link, the queue of frames for the host, counters and ledger. Pure: model
// time in, frames out; no thread, no clock, no lock.
#ifndef KESTROVA_SIM_CAMERAMODEL_H
#define KESTROVA_SIM_CAMERAMODEL_H

#include <deque>
#include <map>
#include <memory>
#include <optional>

#include "Ledger.h"
#include "LinkTimeline.h"
#include "ParameterFile.h"
#include "Scenario.h"
#include "SharedLink.h"

namespace sim {

/// A frame that has arrived. Its data are made from this when somebody looks at them.
struct Frame
{
    quint64 serial = 0; ///< its place in the ledger
    quint64 index = 0;  ///< in the acquisition
    quint32 number = 0; ///< what it says its number is
    quint32 width = 0;  ///< pixels
    quint32 height = 0;
    int format = 0;         ///< VN_FRM_...
    int bitDepth = 8;       ///< significant bits of a pixel
    quint64 imageBytes = 0; ///< what the host receives
    quint64 linkBytes = 0;  ///< what the link carries
    quint64 stampUs = 0;    ///< camera time of the first word
    bool counterPattern = false;
    std::shared_ptr<const WordTimes> times;
};

/// Times are nanoseconds of model time, the same scale in all calls and never backwards.
class CameraModel
{
public:
    /// The ledger keeps the last `ledgerFrames` frames.
    CameraModel(const CameraScenario& scenario, std::shared_ptr<SharedLink> link, size_t ledgerFrames);
    ~CameraModel();
    CameraModel(const CameraModel&) = delete;
    CameraModel& operator=(const CameraModel&) = delete;

    const CameraScenario& scenario() const { return camera; }
    const LinkScenario& linkScenario() const { return link->scenario(); } ///< of all cameras on the link
    void setFaults(const Faults& faults);

    /// Parameters, counters, clock and ledger as after switching on.
    void powerUp(qint64 nowNs);

    ParameterFile& parameters() { return params; }
    const ParameterFile& parameters() const { return params; }
    bool get(const QString& name, int& value);
    bool set(const QString& name, int value, qint64 nowNs);

    /// Begins an acquisition, ending the one before.
    void start(qint64 nowNs);
    /// Frames that were not fetched are discarded.
    void stop();
    bool acquiring() const { return running; }

    /// When something happens next; none while nothing is acquired.
    std::optional<qint64> nextEventNs() const;
    /// Everything up to and including that time happens, in order.
    void advanceTo(qint64 nowNs);

    bool hasFrame() const { return !queue.empty(); }
    /// The oldest frame in the queue, which is now received.
    Frame takeFrame();

    const Ledger& ledger() const { return book; }

private:
    /// What the parameters, as they are now, make of a frame.
    struct Geometry
    {
        bool counterPattern = false;
        int format = 0;
        int bitDepth = 8;
        quint64 linkBytes = 0;
        quint64 imageBytes = 0;
    };
    /// A packet that occupies the frame buffer.
    struct Packet
    {
        qint64 enterNs;
        qint64 leaveNs;
        quint64 bytes;
    };
    struct Outcome
    {
        Fate fate;
        Frame frame;
    };

    Geometry geometry() const;
    qint64 nextSourceNs() const;
    qint64 afterPause(qint64 timeNs) const;
    void scheduleTrigger();
    void runSource(qint64 nowNs);
    void sendPattern(qint64 nowNs, const Geometry& shape);
    void trigger(qint64 nowNs, const Geometry& shape);
    std::optional<qint64> overflowNs(const std::vector<Packet>& packets, qint64 readoutNs) const;
    void dispatch(Frame frame, std::shared_ptr<const WordTimes> times);
    std::shared_ptr<WordTimes> wordTimes(const Geometry& shape) const;
    quint64 tickAt(qint64 timeNs) const;
    quint64 bufferCapacity() const;
    void announceDemand(const Geometry& shape);

    Frame newFrame(const Geometry& shape);
    FrameEntry* entry(const Frame& frame);
    void settle(const Frame& frame, Fate fate);
    void count(VN_COUNTER_SELECTOR counter) { ++book.counters[static_cast<size_t>(counter)]; }
    void arrive(Frame frame);

    CameraScenario camera;
    const std::shared_ptr<SharedLink> link;
    const size_t ledgerLimit;
    ParameterFile params;
    LinkTimeline timeline;
    Random random;
    Ledger book;
    quint64 nextSerial = 0; ///< of the next frame; the last of `book.frames` has the one before

    bool running = false;
    qint64 startNs = 0;
    qint64 clockEpochNs = 0; ///< camera time 0
    quint64 frameIndex = 0;
    quint32 numberOffset = 0;
    qint64 stampOffsetUs = 0; ///< by jumps of the time stamps' clock
    qint64 sourceNs = 0;      ///< when sensor or generator acted last
    quint64 triggerIndex = 0;
    qint64 triggerNs = 0;
    qint64 exposureEndNs = 0; ///< of the frame before
    qint64 readoutEndNs = 0;
    std::deque<Packet> buffer;
    std::multimap<qint64, Outcome> events; ///< what becomes of the frames under way, by time
    std::deque<Frame> queue;
};

} // namespace sim

#endif
