// SPDX-License-Identifier: GPL-3.0-or-later
// Judges figures.
#include "Verdict.h"

#include <algorithm>
#include <cmath>

Verdict::Verdict(const std::vector<Limit>& wanted)
{
    for (const Limit& limit : wanted)
        limits.push_back({limit});
}

void Verdict::look(const Figures& runSoFar, double elapsedS)
{
    for (LimitVerdict& verdict : limits) {
        const Limit& limit = verdict.limit;
        verdict.measured = figureValue(runSoFar, QLatin1String(limit.kind->figure));
        if (verdict.measured && !std::isfinite(*verdict.measured))
            verdict.measured.reset();
        verdict.kept = verdict.measured &&
                       (limit.kind->isMinimum ? *verdict.measured >= limit.value : *verdict.measured <= limit.value);
        if (verdict.kept || !verdict.measured)
            verdict.brokenAtS.reset();
        else if (!verdict.brokenAtS)
            verdict.brokenAtS = elapsedS;
    }
}

bool Verdict::passed() const
{
    return std::all_of(limits.begin(), limits.end(), [](const LimitVerdict& verdict) { return verdict.kept; });
}

bool Verdict::judges(const char* figure) const
{
    return std::any_of(limits.begin(), limits.end(), [figure](const LimitVerdict& verdict) {
        return QLatin1String(verdict.limit.kind->figure) == QLatin1String(figure);
    });
}

bool Verdict::seesSilence() const
{
    return std::any_of(limits.begin(), limits.end(), [](const LimitVerdict& verdict) {
        const QLatin1String figure(verdict.limit.kind->figure);
        return figure == QLatin1String("longestGapMs") || figure == QLatin1String("deliveredMBps") ||
               figure == QLatin1String("framesPerSecond");
    });
}

QStringList Verdict::brokenLimits() const
{
    QStringList broken;
    for (const LimitVerdict& verdict : limits) {
        if (!verdict.kept)
            broken.append(QStringLiteral("--%1 %2: %3")
                              .arg(QLatin1String(verdict.limit.kind->name), limitValueText(verdict.limit.value),
                                   limitValueText(verdict.measured)));
    }
    return broken;
}
