// SPDX-License-Identifier: GPL-3.0-or-later
// When this host dropped something of a stream.
#ifndef KESTROVA_ARAVIS_DROPSAMPLES_H
#define KESTROVA_ARAVIS_DROPSAMPLES_H

#include <deque>
#include <optional>

#include <QtCore/QtGlobal>

namespace aravis {

/// A look at the counters, which took from `beginNs` to `endNs` of the steady clock.
struct DropSample
{
    qint64 beginNs;
    qint64 endNs;
    quint32 socketDrops; ///< packets that found the socket full, so far; wraps
    quint64 underruns;   ///< times that a packet found no buffer for its frame, so far
    quint32 queuedBytes; ///< that arrived and have not been read yet
};

/// Keeps what the newest samples tell; times without an event take no room. Whoever calls it keeps the calls apart.
class DropSamples
{
public:
    void add(const DropSample& sample);

    /// Whether everything since then is still kept.
    bool reachesBackTo(qint64 timeNs) const { return !steps.empty() && steps.front().fromNs <= timeNs; }
    /// From when on nothing waited any more of what had arrived until then, or could have if the socket is read at all.
    /// None if that is not known yet.
    std::optional<qint64> readBy(qint64 timeNs) const;
    /// Whether that may have happened between these times, both included.
    bool wasSocketFull(qint64 fromNs, qint64 untilNs) const { return happened(&Step::socketFull, fromNs, untilNs); }
    bool wasWithoutBuffer(qint64 fromNs, qint64 untilNs) const { return happened(&Step::noBuffer, fromNs, untilNs); }

private:
    /// From one sample to the next, or to a later one as long as nothing happens.
    struct Step
    {
        qint64 fromNs;
        qint64 toNs;
        qint64 firstSampleNs; ///< after its begin
        bool socketFull;
        bool noBuffer;
        bool empty; ///< nothing waited at its samples
    };
    bool happened(bool Step::*event, qint64 fromNs, qint64 untilNs) const;

    std::optional<DropSample> last;
    std::deque<Step> steps;
};

} // namespace aravis

#endif
