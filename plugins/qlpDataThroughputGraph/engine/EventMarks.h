// SPDX-License-Identifier: GPL-3.0-or-later
// What happened when: missing frames, silence, overflows of the camera's buffer, begin and end of measurements, in any
// range of a record at the price of what there is to draw.
#ifndef KESTROVA_EVENTMARKS_H
#define KESTROVA_EVENTMARKS_H

#include <optional>
#include <vector>

#include <QtCore/QtGlobal>

class FrameList;
class SampleList;

enum class EventKind
{
    Start,          ///< of a measurement
    End,            ///< of a measurement
    Silence,        ///< no frame for longer than MeasuredRun::silenceLimitUs
    MissingFrames,  ///< the frame number leaves some out; at the frame behind them
    BufferOverflow, ///< of the camera's buffer: simulated in the throughput mode, else counted by the camera
};
constexpr int eventKinds = 5;

/// Events of one kind that lie so near to each other that they are drawn as one.
struct EventMark
{
    EventKind kind;
    qint64 fromUs; ///< of the first one: where its silence begins, else where it is
    qint64 toUs;   ///< of the last one
    /// Missing frames; frames (throughput mode) or counts of overflow; the longest silence in microseconds; else how
    /// many.
    quint64 amount;

    bool operator==(const EventMark& other) const
    {
        return kind == other.kind && fromUs == other.fromUs && toUs == other.toUs && amount == other.amount;
    }
};

/// A measurement of which a record may still keep frames.
struct MeasuredRun
{
    /// While no mean of the times between frames is known, and before the first frame at least.
    static constexpr qint64 longestFirstGapUs = 1000000;

    qint64 startUs;
    std::optional<qint64> endUs; ///< none while it runs
    qint64 silenceLimitUs = longestFirstGapUs;
};

/// What is looked at.
struct EventRange
{
    qint64 fromUs;
    qint64 toUs;
    qint64 joinUs; ///< events of one kind at most this far apart are one mark
    qint64 nowUs;  ///< of a run that has not ended: until when it has been silent
};

/// The marks that touch the range, kind by kind in the order of their times. `runs` in the order of their times; no
/// two records of different ones are compared.
std::vector<EventMark> findEventMarks(const FrameList& frames, const std::vector<MeasuredRun>& runs,
                                      const EventRange& range);
std::vector<EventMark> findEventMarks(const SampleList& samples, const std::vector<MeasuredRun>& runs,
                                      const EventRange& range);

#endif
