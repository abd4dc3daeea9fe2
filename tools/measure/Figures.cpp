// SPDX-License-Identifier: GPL-3.0-or-later
// Figures: their keys, units and when one is not known.
#include "Figures.h"

#include <algorithm>
#include <cmath>

namespace {

constexpr double usPerMs = 1e3;
constexpr double usPerS = 1e6;

template<typename Count>
double number(Count count)
{
    return static_cast<double>(count);
}

/// What only frames can tell is not known without one.
std::optional<double> ifAnyFrame(const RunTotals& totals, quint64 count)
{
    return totals.frames > 0 ? std::optional<double>(number(count)) : std::nullopt;
}

std::optional<double> longestGapMs(const RunTotals& totals)
{
    const bool started = totals.frames > 0 || totals.longestGapUs > 0;
    return started ? std::optional<double>(number(totals.longestGapUs) / usPerMs) : std::nullopt;
}

std::optional<double> sum(const std::optional<double>& a, const std::optional<double>& b)
{
    return a || b ? std::optional<double>(a.value_or(0.0) + b.value_or(0.0)) : std::nullopt;
}

/// What both modes tell of the time that passed.
Figures figuresOverTime(const RunTotals& totals)
{
    const bool started = totals.elapsedUs > 0;
    return {
        {"longestGapMs", "gap ms", 1, longestGapMs(totals)},
        {"silentMs", "silent ms", 0, started ? std::optional(number(totals.silentUs) / usPerMs) : std::nullopt},
        {"deliveredMBps", "delivered", 2, totals.deliveredThroughput()},
        {"framesPerSecond", "frames/s", 2, totals.framesPerSecond()},
        {"losses", nullptr, 0, number(totals.losses)},
        {"lostS", nullptr, 3, number(totals.lostUs) / usPerS},
        {"failedWaits", nullptr, 0, number(totals.failedWaits)},
    };
}

Figures lossFigures(const KnownLosses& lost)
{
    const auto count = [&lost](LossCause cause) {
        return lost ? std::optional<double>(number((*lost).*cause)) : std::nullopt;
    };
    return {{"lostUnknown", nullptr, 0, count(&LostFrames::unknown)},
            {"lostOnTheWay", nullptr, 0, count(&LostFrames::onTheWay)},
            {"lostInSocket", nullptr, 0, count(&LostFrames::socket)},
            {"lostNoBuffer", nullptr, 0, count(&LostFrames::noBuffer)},
            {"lostLate", nullptr, 0, count(&LostFrames::late)},
            {"lostNotAttributable", nullptr, 0, count(&LostFrames::notAttributable)}};
}

Figures operator+(Figures figures, const Figures& more)
{
    figures.insert(figures.end(), more.begin(), more.end());
    return figures;
}

} // namespace

Figures throughputFigures(const RunTotals& totals, quint32 samplePeriod, bool bufferKnown, const KnownLosses& lost)
{
    const auto quantile = [&](double share) { return totals.throughputQuantile(share, samplePeriod); };
    const bool simulated = bufferKnown && totals.maxBufferLevel.has_value();
    const Figures figures{
        {"frames", "frames", 0, number(totals.frames)},
        {"missingFrames", "missing", 0, ifAnyFrame(totals, totals.missingFrames)},
        {"avgThroughputMBps", "avg MB/s", 2, totals.avgThroughput()},
        {"minThroughputMBps", "min MB/s", 2, totals.minThroughput},
        {"maxBufferLevelPercent", "level %", 1, simulated ? totals.maxBufferLevel : std::nullopt},
        {"overflows", "overflows", 0, simulated ? ifAnyFrame(totals, totals.overflows) : std::nullopt},
    };
    const Figures blocks{
        {"blocks", nullptr, 0, number(totals.blocks)},
        {"skippedFrames", nullptr, 0, number(totals.skippedFrames)},
        {"throughputP0_1MBps", nullptr, 2, quantile(0.001)},
        {"throughputP1MBps", nullptr, 2, quantile(0.01)},
        {"throughputP10MBps", nullptr, 2, quantile(0.1)},
        {"throughputP50MBps", nullptr, 2, quantile(0.5)},
    };
    return figures + figuresOverTime(totals) + blocks + lossFigures(lost);
}

Figures counterFigures(const RunTotals& totals, const CounterDifferences& counters, const KnownLosses& lost)
{
    const Figures figures{
        {"frames", "frames", 0, number(totals.frames)},
        {"missingFrames", "missing", 0, ifAnyFrame(totals, totals.missingFrames)},
        {"transportSkips", "link skips", 0, counters[VN_COUNTER_TRANSPORT_SKIP]},
        {"apiSkips", "API skips", 0, counters[VN_COUNTER_API_SKIP]},
        {"skips", "skips", 0, sum(counters[VN_COUNTER_TRANSPORT_SKIP], counters[VN_COUNTER_API_SKIP])},
        {"missedTriggersOverlap", "overlap", 0, counters[VN_COUNTER_MISSED_TRG_OVERLAP]},
        {"missedTriggersOverflow", "full", 0, counters[VN_COUNTER_MISSED_TRG_OVERFLOW]},
        {"overflows", "overflows", 0, counters[VN_COUNTER_BUFFER_OVERFLOW]},
    };
    return figures + figuresOverTime(totals) + lossFigures(lost);
}

const Figure* findFigure(const Figures& figures, const QString& key)
{
    const auto found = std::find_if(figures.begin(), figures.end(),
                                    [&key](const Figure& figure) { return key == QLatin1String(figure.key); });
    return found == figures.end() ? nullptr : &*found;
}

std::optional<double> figureValue(const Figures& figures, const QString& key)
{
    const Figure* figure = findFigure(figures, key);
    return figure != nullptr ? figure->value : std::nullopt;
}

QString figureText(const Figure& figure)
{
    if (!figure.value || !std::isfinite(*figure.value))
        return QStringLiteral("n/a");
    return QString::number(*figure.value, 'f', figure.decimals);
}
