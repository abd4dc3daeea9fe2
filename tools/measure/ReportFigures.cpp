// SPDX-License-Identifier: GPL-3.0-or-later
// The table of names, and figures in its order.
#include "ReportFigures.h"

#include <algorithm>
#include <iterator>

namespace {

struct FigureName
{
    const char* key;
    const char* title;
    const char* unit;
    const char* brief; ///< in the table of several cameras; null: not there
};

/// In the order of the report.
constexpr FigureName figureNames[] = {
    {"deliveredMBps", "Delivered throughput", "MB/s", "Delivered"},
    {"framesPerSecond", "Frame rate", "1/s", nullptr},
    {"avgThroughputMBps", "Average while frames flow", "MB/s", nullptr},
    {"minThroughputMBps", "Lowest block throughput", "MB/s", "Lowest block"},
    {"maxBufferLevelPercent", "Highest buffer level", "%", "Level"},
    {"overflows", "Buffer overflows", "", "Overflows"},
    {"missingFrames", "Missing frames", "", "Missing"},
    {"transportSkips", "Lost on the link", "", nullptr},
    {"apiSkips", "Fetched too late", "", nullptr},
    {"skips", "Skipped in all", "", "Skipped"},
    {"lostOnTheWay", "Lost on the way to this host", "", nullptr},
    {"lostInSocket", "Lost in the socket", "", nullptr},
    {"lostNoBuffer", "Lost for want of a buffer", "", nullptr},
    {"lostLate", "Lost because too late", "", nullptr},
    {"lostNotAttributable", "Lost on this host, nothing tells why", "", nullptr},
    {"lostUnknown", "Lost nobody knows where", "", nullptr},
    {"missedTriggersOverlap", "Triggers while busy", "", nullptr},
    {"missedTriggersOverflow", "Triggers with a full buffer", "", nullptr},
    {"longestGapMs", "Longest gap", "ms", "Longest gap"},
    {"silentMs", "Silent in all", "ms", nullptr},
    {"losses", "Losses of the camera", "", "Losses"},
    {"lostS", "Time lost", "s", nullptr},
    {"frames", "Frames", "", nullptr},
    {"blocks", "Blocks", "", nullptr},
    {"skippedFrames", "Frames without a block", "", nullptr},
    {"clockDriftPpm", "Camera's clock is fast by", "ppm", nullptr},
    {"failedWaits", "Failed image waits", "", nullptr},
    {"throughputP0_1MBps", "0.1 % of blocks at most", "MB/s", nullptr},
    {"throughputP1MBps", "1 % of blocks at most", "MB/s", nullptr},
    {"throughputP10MBps", "10 % of blocks at most", "MB/s", nullptr},
    {"throughputP50MBps", "Half of the blocks at most", "MB/s", nullptr},
    {"linkDeliveredMBps", "Delivered by the link", "MB/s", nullptr},
    {"linkRateMBps", "Rate of the link", "MB/s", nullptr},
    {"busiestDeliveredMBps", "Busiest camera", "MB/s", nullptr},
    {"requiredThroughputMBps", "Required", "MB/s", nullptr},
    {"frameBytes", "Frame", "B", nullptr},
    {"packetBytes", "Packet", "B", nullptr},
    {"grainBytes", "Arrived at once", "B", nullptr},
    {"samplePeriodBytes", "Sample period", "B", nullptr},
    {"socketLimitBytes", "The socket may hold", "B", nullptr},
    {"interfaceMtuBytes", "MTU of the interface", "B", nullptr},
    {"interfaceDrops", "Packets dropped by the interface", "", nullptr},
    {"processorsBusyPercent", "Processors busy", "%", nullptr},
    {"usbLimitBytes", "Memory for USB transfers", "B", nullptr},
    {"usbBufferBytes", "Buffers of this camera", "B", nullptr},
    {"longestBlockMs", "Slowest block", "ms", nullptr},
    {"countersReset", "Counters that began anew", "", nullptr},
    {"keptS", "Kept", "s", nullptr},
    {"runS", "Run", "s", nullptr},
};

bool same(const char* a, const char* b)
{
    return QLatin1String(a) == QLatin1String(b);
}

/// The table's end if there is none.
const FigureName* nameOf(const char* key)
{
    return std::find_if(std::begin(figureNames), std::end(figureNames),
                        [key](const FigureName& name) { return same(name.key, key); });
}

bool isBroken(const Verdict& verdict, const char* key)
{
    return std::any_of(verdict.limits.begin(), verdict.limits.end(), [key](const LimitVerdict& limit) {
        return !limit.kept && same(limit.limit.kind->figure, key);
    });
}

} // namespace

QString figureTitle(const char* key)
{
    const FigureName* name = nameOf(key);
    return QLatin1String(name == std::end(figureNames) ? key : name->title);
}

QString groupedDigits(QString number)
{
    const int point = number.indexOf(QLatin1Char('.'));
    for (int at = (point < 0 ? number.size() : point) - 3; at > 0 && number.at(at - 1).isDigit(); at -= 3)
        number.insert(at, QChar(0x202f)); // narrow, and no line breaks there
    return number;
}

std::vector<ReportFigure> reportFigures(const Figures& figures, const Verdict& verdict)
{
    Figures ordered = figures;
    std::stable_sort(ordered.begin(), ordered.end(),
                     [](const Figure& a, const Figure& b) { return nameOf(a.key) < nameOf(b.key); });
    std::vector<ReportFigure> result;
    for (const Figure& figure : ordered) {
        const FigureName* name = nameOf(figure.key);
        const bool named = name != std::end(figureNames);
        result.push_back({figureTitle(figure.key), figure.value ? groupedDigits(figureText(figure)) : QString(),
                          QLatin1String(named ? name->unit : ""), QLatin1String(named ? name->brief : nullptr),
                          isBroken(verdict, figure.key)});
    }
    return result;
}
