// SPDX-License-Identifier: GPL-3.0-or-later
// Judges figures.
#include "Verdict.h"

#include <algorithm>
#include <cmath>

QString measuredText(const LimitVerdict& verdict)
{
    constexpr int mostDecimals = 9;
    if (!verdict.measured)
        return QStringLiteral("n/a");
    const double bound = verdict.limit.value;
    const auto misses = [&](const QString& text) {
        return verdict.limit.kind->isMinimum ? text.toDouble() < bound : text.toDouble() > bound;
    };
    int decimals = verdict.decimals;
    QString text = QString::number(*verdict.measured, 'f', decimals);
    while (!verdict.kept && !misses(text) && ++decimals <= mostDecimals)
        text = QString::number(*verdict.measured, 'f', decimals);
    return text;
}

Verdict::Verdict(const std::vector<Limit>& wanted)
{
    for (const Limit& limit : wanted)
        limits.push_back({limit});
}

void Verdict::look(const Figures& runSoFar, double elapsedS)
{
    for (LimitVerdict& verdict : limits) {
        const Limit& limit = verdict.limit;
        const Figure* figure = findFigure(runSoFar, QLatin1String(limit.kind->figure));
        verdict.measured = figure != nullptr ? figure->value : std::nullopt;
        verdict.decimals = figure != nullptr ? figure->decimals : 0;
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
            broken.append(limitText(verdict.limit) + QStringLiteral(": ") + measuredText(verdict));
    }
    return broken;
}
