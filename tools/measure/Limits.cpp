// SPDX-License-Identifier: GPL-3.0-or-later
// The table of limits, and which of them holds for a camera.
#include "Limits.h"

#include <algorithm>

#include "NumberText.h"

const std::vector<LimitKind>& limitKinds()
{
    static const std::vector<LimitKind> kinds{
        {"min-throughput", "MB/s", "Least throughput of any block interval.", "minThroughputMBps", "MB/s", true,
         false, true, false},
        {"min-average", "MB/s", "Least average throughput, while frames flow.", "avgThroughputMBps", "MB/s", true,
         false, true, false},
        {"min-delivered", "MB/s", "Least throughput of the whole time, silence included.", "deliveredMBps", "MB/s",
         true, false, true, true},
        {"min-fps", "N", "Least frames per second received.", "framesPerSecond", "1/s", true, false, true, true},
        {"max-gap", "TIME", "Longest time without a frame.", "longestGapMs", "ms", false, true, true, true},
        {"max-losses", "N", "Most losses of the camera.", "losses", "", false, false, true, true},
        {"max-overflows", "N", "Most buffer overflows.", "overflows", "", false, false, true, true},
        {"max-level", "PERCENT", "Highest buffer level.", "maxBufferLevelPercent", "%", false, false, true, false},
        {"max-missing", "N", "Most missing frames (gaps of the frame number).", "missingFrames", "", false, false,
         true, true},
        {"max-skips", "N", "Most frames skipped on the link and in the library (counters mode).", "skips", "", false,
         false, false, true},
    };
    return kinds;
}

QString limitExpectation(const LimitKind& kind)
{
    return kind.isTime ? timeDescription : QStringLiteral("a number of 0 or more");
}

std::optional<double> limitFromText(const LimitKind& kind, const QString& text)
{
    if (!kind.isTime)
        return numberFromText(text);
    const auto time = timeFromText(text);
    return time ? std::optional<double>(static_cast<double>(time->count())) : std::nullopt;
}

QString limitText(const Limit& limit)
{
    return QStringLiteral("--%1 %2%3")
        .arg(QLatin1String(limit.kind->name), QString::number(limit.value, 'g', 10),
             QLatin1String(limit.kind->isTime ? limit.kind->unit : ""));
}

std::vector<Limit> RigLimits::of(const QString& id) const
{
    const std::vector<Limit> own = cameras.value(id);
    std::vector<Limit> limits;
    for (const LimitKind& kind : limitKinds()) {
        for (const auto* source : {&given, &own, &all}) {
            const auto found = std::find_if(source->begin(), source->end(),
                                            [&kind](const Limit& limit) { return limit.kind == &kind; });
            if (found != source->end()) {
                limits.push_back(*found);
                break;
            }
        }
    }
    return limits;
}
