// SPDX-License-Identifier: GPL-3.0-or-later
// Names that programs know findings by; they never change.
#include "Diagnosis.h"

const char* findingName(Finding::Kind kind)
{
    using Kind = Finding::Kind;
    switch (kind) {
    case Kind::Silence:
        return "silence";
    case Kind::LinkTooSlow:
        return "linkTooSlow";
    case Kind::SharedLink:
        return "sharedLink";
    case Kind::StallsHeld:
        return "stallsHeld";
    case Kind::StallsNotHeld:
        return "stallsNotHeld";
    case Kind::LostOnLink:
        return "lostOnLink";
    case Kind::FetchedTooLate:
        return "fetchedTooLate";
    case Kind::FramesMissing:
        return "framesMissing";
    case Kind::TriggersTooFast:
        return "triggersTooFast";
    case Kind::TriggersFullBuffer:
        return "triggersFullBuffer";
    case Kind::PacketsTooLarge:
        return "packetsTooLarge";
    case Kind::InterfaceDrops:
        return "interfaceDrops";
    case Kind::SharedInterface:
        return "sharedInterface";
    case Kind::SocketFull:
        return "socketFull";
    case Kind::PacketsLate:
        return "packetsLate";
    case Kind::LostHere:
        return "lostHere";
    case Kind::LostUnseen:
        return "lostUnseen";
    case Kind::ProcessorsBusy:
        return "processorsBusy";
    case Kind::UsbMemory:
        return "usbMemory";
    case Kind::CoarseArrival:
        return "coarseArrival";
    case Kind::CountersReset:
        return "countersReset";
    case Kind::ClockDrift:
        return "clockDrift";
    case Kind::HistoryTooShort:
        return "historyTooShort";
    }
    return "";
}
