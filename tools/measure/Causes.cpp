// SPDX-License-Identifier: GPL-3.0-or-later
// Gathers the figures of a run for the diagnosis.
#include "Causes.h"

namespace {

HostFigures hostFigures(const LostFrames& lost, const StreamConditions& conditions)
{
    const auto count = [](quint64 frames) { return static_cast<double>(frames); };
    HostFigures host;
    host.lostUnknown = count(lost.unknown);
    host.lostOnTheWay = count(lost.onTheWay);
    host.lostInSocket = count(lost.socket);
    host.lostNoBuffer = count(lost.noBuffer);
    host.lostLate = count(lost.late);
    host.lostNotAttributable = count(lost.notAttributable);
    host.frameBytes = conditions.frameBytes;
    host.packetBytes = conditions.packetBytes;
    host.grainBytes = conditions.grainBytes;
    host.socketLimitBytes = conditions.socketLimitBytes;
    host.interfaceMtu = conditions.interfaceMtu;
    host.interfaceDrops = conditions.interfaceDrops;
    host.processorsBusyPercent = conditions.processorsBusyPercent;
    host.usbLimitBytes = conditions.usbLimitBytes;
    host.usbBufferBytes = conditions.usbBufferBytes;
    return host;
}

} // namespace

DiagnosisInput diagnosisInput(const MeasuredCamera& camera, const LinkTable& links)
{
    DiagnosisInput input = diagnosisInput(camera.record(), camera.record().runTotals());
    if (const LinkTotals* link = links.find(camera.link()))
        input.link = LinkUse{link->name,
                             link->rate,
                             link->delivered().value_or(0.0),
                             static_cast<int>(link->cameras.size()),
                             input.run.deliveredThroughput().value_or(0.0),
                             link->busiest};
    if (const KnownLosses lost = camera.wholeRun().lost)
        input.host = hostFigures(*lost, camera.conditions());
    return input;
}
