// SPDX-License-Identifier: GPL-3.0-or-later
// What a simulated camera is, as plain values: sensor, frame buffer, link, features and faults. Tests build
// them in code; ScenarioReader reads them from JSON. The format is described in docs/scenarios.md.
#ifndef KESTROVA_SIM_SCENARIO_H
#define KESTROVA_SIM_SCENARIO_H

#include <optional>
#include <vector>

#include <QtCore/QString>

#include <vnCore/vnTypes.h>

namespace sim {

/// When frames are made, and how fast the frame buffer fills.
struct SensorScenario
{
    quint32 width = 1024;      ///< pixels
    quint32 height = 512;      ///< pixels
    int bitDepth = 8;          ///< power-up value of "output_bit_depth": 8, 10, 12 or 16
    double rateHz = 100.0;     ///< frame or trigger rate
    double jitterUs = 0.0;     ///< a trigger comes up to this much late
    double exposureUs = 100.0; ///< may overlap the readout of the frame before
    double readoutUs = 0.0;    ///< shortest readout of a frame
    double dataRate = 400.0;   ///< MB/s at which a readout fills the frame buffer
};

/// How fast the frame buffer empties, and what is lost on the way.
struct LinkScenario
{
    QString name;                ///< cameras that name the same link share it; empty is a link of its own
    double rate = 400.0;         ///< MB/s within a packet
    quint32 packetBytes = 65536; ///< a multiple of 8
    double gapUs = 1.0;          ///< pause after a packet
    double jitterUs = 0.0;       ///< added to a gap, evenly from 0 to this
    double stallEveryMs = 0.0;   ///< period of the periodic stall, 0 for none
    double stallUs = 0.0;        ///< its duration
    double randomStallsPerSecond = 0.0;
    double randomStallUs = 0.0; ///< mean duration, exponentially distributed
    double frameGapUs = 0.0;    ///< pause between frames of the counter pattern
    double frameLoss = 0.0;     ///< share of frames lost on the link, 0 to 1
};

/// A stretch of time. Of an acquisition for "no image", of the camera's life for a loss.
struct Window
{
    double atMs = 0.0;
    double forMs = 0.0; ///< a loss of 0 or less is for good
};

/// Frames of an acquisition by their index: `count` from `first` on, again after every `every` frames (0:
/// once).
struct FrameSelection
{
    quint64 first = 0;
    quint64 count = 0;
    quint64 every = 0;

    bool contains(quint64 index) const
    {
        if (index < first)
            return false;
        const quint64 offset = index - first;
        return (every == 0 ? offset : offset % every) < count;
    }
};

/// A host call.
enum class Call
{
    Get,
    Set,
    CanSet,
    Start,
    Stop,
    Wait
};

/// Makes a host call fail.
struct Refusal
{
    Call call = Call::Set;
    QByteArray parameter;     ///< of Get, Set and CanSet; empty means every parameter
    std::optional<int> value; ///< of Set and CanSet: only this value
    int nth = 0;              ///< only this use of those that match, from 1; 0 means always
};

/// What goes wrong in this camera; nothing by default. May be exchanged while the camera acquires.
struct Faults
{
    std::vector<Refusal> refuse;
    std::vector<Window> noImage; ///< the camera sends nothing, time since the acquisition's start
    std::vector<Window> loss;    ///< the camera is gone, time since it was created
    FrameSelection nullData;     ///< frames without a data pointer
    FrameSelection shortData;    ///< frames with only `shortBytes` bytes
    quint64 shortBytes = 0;
    FrameSelection oddSize; ///< frames that claim to be oddWidth x oddHeight
    quint32 oddWidth = 0;
    quint32 oddHeight = 0;
    quint64 tickStart = 0;     ///< the word that a reset counter starts with: near 2^64 for one that soon wraps
    int tickBits = 64;         ///< width of the counter, which wraps at 2^tickBits
    int tickDirection = 1;     ///< 1 forwards, 0 stands still, -1 backwards
    FrameSelection numberJump; ///< the frame number jumps at these frames
    qint32 numberJumpBy = 0;
    FrameSelection stampJump; ///< the clock of the time stamps jumps at these frames; ticks do not
    double stampJumpMs = 0.0;
    double driftPpm = 0.0; ///< camera clock against true time
};

/// One camera as it is made. Code may set anything; ScenarioReader keeps to ranges.
struct CameraScenario
{
    QString name = QStringLiteral("Simulated camera");
    QString id = QStringLiteral("sim-1");
    QString customId;
    quint64 seed = 1;
    SensorScenario sensor;
    LinkScenario link;
    quint32 bufferBytes = 8 << 20;           ///< internal frame buffer
    quint32 triggerReserveBytes = 0;         ///< a trigger that finds less room is missed; 0: a quarter of a frame
    quint32 queueFrames = 8;                 ///< frames that wait for the host, the oldest is dropped
    std::optional<int> transportSpeed = 380; ///< MB/s in register 4096 of unit 8; none: no such register
    bool frameBufferControl = true;
    bool missedTriggerCounters = true;
    std::vector<int> formats{VN_FRM_MONO8, VN_FRM_MONO16, VN_FRM_TRANSPORT_DATA}; ///< the first is the power-up one
    Faults faults;
};

} // namespace sim

#endif
