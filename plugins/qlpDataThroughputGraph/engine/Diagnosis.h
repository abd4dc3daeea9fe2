// SPDX-License-Identifier: GPL-3.0-or-later
// Why a run went as it did: possible causes, from its figures alone. Pure; knows no camera, no window and no program.
#ifndef KESTROVA_DIAGNOSIS_H
#define KESTROVA_DIAGNOSIS_H

#include <optional>
#include <vector>

#include <QtCore/QString>

#include "FrameCounters.h"
#include "RunTotals.h"

/// How the cameras of a link use it.
struct LinkUse
{
    QString name;
    std::optional<double> rate; ///< MB/s that it can carry; nothing: not known
    double delivered = 0.0;     ///< MB/s of all its cameras, silence included
    int cameras = 1;
    double own = 0.0;     ///< MB/s of the camera in question
    double busiest = 0.0; ///< MB/s of the camera that delivers most
};

/// Where frames of a camera were lost, and what its data found on their way through this machine.
struct HostFigures
{
    double lostUnknown = 0.0; ///< frames; one of these causes each
    double lostOnTheWay = 0.0;
    double lostInSocket = 0.0;
    double lostNoBuffer = 0.0;
    double lostLate = 0.0;
    double lostNotAttributable = 0.0;
    std::optional<double> frameBytes;       ///< of one frame, as it is sent
    std::optional<double> packetBytes;      ///< of a packet with its headers
    std::optional<double> grainBytes;       ///< that arrived at once, on average
    std::optional<double> socketLimitBytes; ///< that the stream's socket may hold
    std::optional<double> interfaceMtu;     ///< bytes
    std::optional<double> interfaceDrops;   ///< packets since the start
    std::optional<double> processorsBusyPercent;
    std::optional<double> usbLimitBytes;  ///< that the system lends to USB transfers
    std::optional<double> usbBufferBytes; ///< that the camera's buffers need of it
};

/// The figures of one camera's run. What is not known has no value; then what needs it is not found.
struct DiagnosisInput
{
    RunTotals run;
    std::optional<double> required; ///< MB/s that the sensor asks for; throughput mode only
    double bufferSize = 0.0;        ///< bytes of the camera's buffer
    double samplePeriod = 0.0;      ///< bytes of a block
    CounterDifferences counters;    ///< standard mode only
    int countersReset = 0;          ///< how many of them ran backwards, and so are not known
    std::optional<double> driftPpm;
    std::optional<LinkUse> link;
    std::optional<HostFigures> host; ///< of a camera that can tell
    quint64 droppedFrames = 0;       ///< by the capacity
    double keptS = 0.0;              ///< seconds from the first to the last frame that it still keeps
};

/// A figure behind a finding.
struct NamedFigure
{
    const char* key; ///< as in other outputs, where it has one there
    double value;
    const char* unit; ///< empty for a count
};

/// One possible cause.
struct Finding
{
    enum class Kind
    {
        Silence,            ///< nothing came for a while
        LinkTooSlow,        ///< the sensor asks for more than the link gives
        SharedLink,         ///< cameras share a link that others fill
        StallsHeld,         ///< the link has short stalls, which the buffer holds
        StallsNotHeld,      ///< and which it does not hold
        LostOnLink,         ///< frames are lost on the link
        FetchedTooLate,     ///< frames are fetched too late by the host
        FramesMissing,      ///< one of both; these figures cannot tell which
        TriggersTooFast,    ///< triggers come while the sensor is busy
        TriggersFullBuffer, ///< triggers or frames find the buffer full
        PacketsTooLarge,    ///< packets are larger than the network interface takes
        InterfaceDrops,     ///< the network interface itself dropped packets
        SharedInterface,    ///< others send through the same interface while frames are lost on the way
        SocketFull,         ///< frames are lost in the socket
        PacketsLate,        ///< frames are lost because packets came too late
        LostHere,           ///< frames are lost on this machine for no known reason
        LostUnseen,         ///< nobody saw where frames were lost
        ProcessorsBusy,     ///< this machine had no time while frames were lost on it
        UsbMemory,          ///< the system lends too little memory to USB transfers
        CoarseArrival,      ///< the lowest throughput is this machine's
        CountersReset,      ///< counters began anew, and what they counted is not known
        ClockDrift,         ///< the camera's clock runs away
        HistoryTooShort,    ///< what went wrong may lie before what is kept
    };

    Kind kind;
    QString sentence; ///< in the user's language, worded as a possible cause
    std::vector<NamedFigure> figures;
};

/// The kind's name in outputs for programs, such as "linkTooSlow".
const char* findingName(Finding::Kind kind);

/// Possible causes, the weightiest first; none if nothing is wrong. Any thread.
std::vector<Finding> diagnose(const DiagnosisInput& input);

#endif
