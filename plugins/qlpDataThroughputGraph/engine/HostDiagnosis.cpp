// SPDX-License-Identifier: GPL-3.0-or-later
// Rules for what this machine did with a camera's data. Each needs something to explain.
#include "HostDiagnosis.h"

#include <algorithm>

#include <QtCore/QCoreApplication>

#include "Plural.h"

namespace {

using Kind = Finding::Kind;

constexpr double busyPercent = 90.0;  ///< of all processors, from which on one may have had to wait
constexpr double roomyShare = 0.5;    ///< of its rate; a link that carries less has room for its cameras
constexpr double fewestPackets = 4.0; ///< in a block that tells of the link

QString whole(double value)
{
    return QString::number(value, 'f', 0);
}

/// Looks for each cause in turn.
class HostDiagnosis
{
    Q_DECLARE_TR_FUNCTIONS(HostDiagnosis)

public:
    HostDiagnosis(const DiagnosisInput& figures, const HostFigures& ofHost) : in(figures), host(ofHost) {}

    std::vector<Finding> findings()
    {
        lookAtWay();
        lookAtSocket();
        lookAtReader();
        lookAtRest();
        lookAtProcessors();
        lookAtUsb();
        lookAtGrain();
        return std::move(found);
    }

private:
    bool nothingCame() const { return in.run.frames == 0; }

    void add(Kind kind, const QString& sentence, std::vector<NamedFigure> figures)
    {
        found.push_back({kind, sentence, std::move(figures)});
    }

    void lookAtWay()
    {
        const double lost = host.lostOnTheWay;
        if (lost > 0.0)
            add(Kind::LostOnLink,
                (lost == 1.0 ? tr("One frame was lost on the way to this machine.")
                             : tr("%n frames were lost on the way to this machine.", nullptr, plural(lost))) +
                    QLatin1Char(' ') +
                    tr("A bad cable or plug, interference, or a switch that drops packets may be the cause."),
                {{"lostOnTheWay", lost, ""}});
        if ((lost > 0.0 || nothingCame()) && host.packetBytes > host.interfaceMtu && host.interfaceMtu)
            add(Kind::PacketsTooLarge,
                tr("The camera's packets have %1 bytes, the network interface takes %2. A smaller packet size, or a "
                   "larger MTU of all that is on the way, may help.")
                    .arg(whole(*host.packetBytes), whole(*host.interfaceMtu)),
                {{"packetBytes", *host.packetBytes, "B"}, {"interfaceMtuBytes", *host.interfaceMtu, "B"}});
        if (lost <= 0.0)
            return;
        if (host.interfaceDrops > 0.0)
            add(Kind::InterfaceDrops,
                tr("The network interface itself dropped packets meanwhile: %1. A larger ring of the interface "
                   "(ethtool -G), or fewer and larger packets, may help.")
                    .arg(whole(*host.interfaceDrops)),
                {{"interfaceDrops", *host.interfaceDrops, ""}});
        const bool roomy = in.link && in.link->rate && in.link->delivered < roomyShare * *in.link->rate;
        if (in.link && in.link->cameras > 1 && !roomy)
            add(Kind::SharedInterface,
                tr("%1 cameras share the interface %2. Together they may overrun it or a switch on the way; a pause "
                   "between their packets may help.")
                    .arg(QString::number(in.link->cameras), in.link->name),
                {{"linkDeliveredMBps", in.link->delivered, "MB/s"}});
    }

    void lookAtSocket()
    {
        const double lost = host.lostInSocket;
        if (lost <= 0.0)
            return;
        const bool small = host.socketLimitBytes && host.frameBytes && *host.socketLimitBytes < *host.frameBytes;
        std::vector<NamedFigure> figures{{"lostInSocket", lost, ""}};
        QString sentence =
            lost == 1.0 ? tr("One frame was lost because the socket's buffer was full.")
                        : tr("%n frames were lost because the socket's buffer was full.", nullptr, plural(lost));
        sentence += QLatin1Char(' ');
        if (small) {
            sentence +=
                tr("It may hold %1 bytes, a frame has %2: sysctl net.core.rmem_max=%3 may help.")
                    .arg(whole(*host.socketLimitBytes), whole(*host.frameBytes), whole(2.0 * *host.frameBytes));
            figures.push_back({"socketLimitBytes", *host.socketLimitBytes, "B"});
            figures.push_back({"frameBytes", *host.frameBytes, "B"});
        } else {
            sentence += tr("This machine may be too busy to empty it.");
        }
        add(Kind::SocketFull, sentence, std::move(figures));
    }

    void lookAtReader()
    {
        const double lost = host.lostNoBuffer;
        if (lost > 0.0)
            add(Kind::FetchedTooLate,
                (lost == 1.0 ? tr("One frame was lost for want of a buffer.")
                             : tr("%n frames were lost for want of a buffer.", nullptr, plural(lost))) +
                    QLatin1Char(' ') + tr("Who reads the frames may be too slow."),
                {{"lostNoBuffer", lost, ""}});
    }

    void lookAtRest()
    {
        if (const double late = host.lostLate; late > 0.0)
            add(Kind::PacketsLate,
                (late == 1.0
                     ? tr("One frame was lost because its packets came too late.")
                     : tr("%n frames were lost because their packets came too late.", nullptr, plural(late))) +
                    QLatin1Char(' ') + tr("The camera or a switch may have held them back."),
                {{"lostLate", late, ""}});
        if (const double other = host.lostNotAttributable; other > 0.0)
            add(Kind::LostHere,
                (other == 1.0
                     ? tr("One frame was lost on this machine, and nothing tells why.")
                     : tr("%n frames were lost on this machine, and nothing tells why.", nullptr, plural(other))),
                {{"lostNotAttributable", other, ""}});
        if (const double unknown = host.lostUnknown; unknown > 0.0)
            add(Kind::LostUnseen,
                (unknown == 1.0 ? tr("One frame was lost, nobody knows where.")
                                : tr("%n frames were lost, nobody knows where.", nullptr, plural(unknown))) +
                    QLatin1Char(' ') + tr("The tap that sees their packets was not there or did not keep up."),
                {{"lostUnknown", unknown, ""}});
    }

    void lookAtProcessors()
    {
        const double here =
            host.lostInSocket + host.lostNoBuffer + host.lostNotAttributable + host.interfaceDrops.value_or(0.0);
        if (here > 0.0 && host.processorsBusyPercent >= busyPercent)
            add(Kind::ProcessorsBusy,
                tr("The processors of this machine were busy %1 % of the time.")
                    .arg(whole(*host.processorsBusyPercent)),
                {{"processorsBusyPercent", *host.processorsBusyPercent, "%"}});
    }

    void lookAtUsb()
    {
        const bool small = host.usbLimitBytes && host.usbBufferBytes && *host.usbLimitBytes < *host.usbBufferBytes;
        if (small && (in.run.missingFrames > 0 || nothingCame()))
            add(Kind::UsbMemory,
                tr("The system lends USB transfers %1 MiB, this camera's buffers need %2 MiB. A larger "
                   "usbcore.usbfs_memory_mb may help.")
                    .arg(whole(*host.usbLimitBytes / 0x100000), whole(*host.usbBufferBytes / 0x100000)),
                {{"usbLimitBytes", *host.usbLimitBytes, "B"}, {"usbBufferBytes", *host.usbBufferBytes, "B"}});
    }

    void lookAtGrain()
    {
        if (!host.grainBytes || !in.run.minThroughput)
            return;
        const double least = std::max(*host.grainBytes, fewestPackets * host.packetBytes.value_or(0.0));
        if (in.samplePeriod < least)
            add(Kind::CoarseArrival,
                tr("Data arrived %1 bytes at a time: with a sample period of %2 bytes the lowest throughput is this "
                   "machine's, not the link's. %3 bytes or more tell of the link.")
                    .arg(whole(*host.grainBytes), whole(in.samplePeriod), whole(least)),
                {{"grainBytes", *host.grainBytes, "B"}, {"samplePeriodBytes", in.samplePeriod, "B"}});
    }

    const DiagnosisInput& in;
    const HostFigures& host;
    std::vector<Finding> found;
};

} // namespace

std::vector<Finding> hostFindings(const DiagnosisInput& input)
{
    return input.host ? HostDiagnosis(input, *input.host).findings() : std::vector<Finding>();
}
