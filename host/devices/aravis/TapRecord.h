// SPDX-License-Identifier: GPL-3.0-or-later
// What kestrova-tap writes to its standard output. Needs nothing but the language: the program links no library.
#ifndef KESTROVA_ARAVIS_TAPRECORD_H
#define KESTROVA_ARAVIS_TAPRECORD_H

#include <cstdint>

namespace aravis {

struct TapRecord
{
    enum Kind : std::uint8_t
    {
        Leader,
        Payload,
        Trailer,
        Ready,  ///< the first one, unless Fault is: from now on every packet is recorded
        Fault,  ///< the last one: `frameId` is the error number, `packetId` the step that failed
        Status, ///< every 10 ms or when the ring has been read: `frameId` is how many packets were dropped since the
                ///< last one, `offsetNs` the steady clock's lead on the wall clock
    };

    std::uint64_t frameId;
    union {
        std::int64_t stampNs; ///< of the wall clock, when the kernel received the packet
        std::int64_t offsetNs;
    };
    std::uint32_t packetId;
    std::uint16_t bytes; ///< of the frame, in a Payload
    Kind kind;
    std::uint8_t extendedIds; ///< 1: ids of 64 bits
};
static_assert(sizeof(TapRecord) == 24, "a pipe's writes of whole records");

/// Steps in which a tap may fail.
enum TapStep : std::uint32_t
{
    TapDone, ///< none failed
    TapUsage,
    TapSocket, ///< with "operation not permitted": the program has no right to capture
    TapRing,
    TapBind,
    TapRights, ///< it could not give them up
};

} // namespace aravis

#endif
