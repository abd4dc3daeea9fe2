// SPDX-License-Identifier: GPL-3.0-or-later
// What a camera's data find on their way through this host.
#ifndef KESTROVA_STREAMCONDITIONS_H
#define KESTROVA_STREAMCONDITIONS_H

#include <optional>

/// Of a camera's newest acquisition. Read, never changed. What is not known, or has no meaning for the camera, has no
/// value.
struct StreamConditions
{
    std::optional<double> frameBytes;            ///< of one frame, as it is sent
    std::optional<double> packetBytes;           ///< of a packet in the network, with its headers
    std::optional<double> grainBytes;            ///< that arrived at once, on average over bytes
    std::optional<double> socketLimitBytes;      ///< that the stream's socket may hold
    std::optional<double> interfaceMtu;          ///< bytes
    std::optional<double> interfaceDrops;        ///< packets that the interface has dropped since the start
    std::optional<double> processorsBusyPercent; ///< of all processors' time since the start
    std::optional<double> usbLimitBytes;         ///< that the system lends to USB transfers
    std::optional<double> usbBufferBytes;        ///< that the camera's buffers need of it
};

#endif
