// SPDX-License-Identifier: GPL-3.0-or-later
// Chooses steps.
#include "GraphScale.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include <QtCore/QLocale>

namespace {

constexpr double mostTimeTicks = 8.0;
constexpr qint64 msPerS = 1000;
constexpr qint64 minuteS = 60;
constexpr qint64 hourS = 3600;
constexpr qint64 dayS = 86400;
constexpr qint64 timeSteps[] = {1,          2,           5,           10,           15,           30,
                                minuteS,    2 * minuteS, 5 * minuteS, 10 * minuteS, 15 * minuteS, 30 * minuteS,
                                hourS,      2 * hourS,   3 * hourS,   6 * hourS,    12 * hourS,   dayS,
                                2 * dayS,   5 * dayS,    10 * dayS,   30 * dayS,    100 * dayS,   365 * dayS,
                                1000 * dayS};

QString timeLabel(const QDateTime& time, qint64 stepS)
{
    const bool midnight = time.time().msecsSinceStartOfDay() == 0;
    const char* format = stepS >= dayS || (midnight && stepS >= hourS) ? "d MMM"
                         : stepS < minuteS                             ? "HH:mm:ss"
                                                                       : "HH:mm";
    return QLocale::c().toString(time, QLatin1String(format));
}

} // namespace

ValueScale valueScale(double highest, int mostSteps)
{
    if (!(highest > 0.0) || !std::isfinite(highest))
        highest = 1.0;
    const double power = std::pow(10.0, std::floor(std::log10(highest / mostSteps)));
    double step = power;
    for (const double factor : {1.0, 2.0, 5.0, 10.0}) {
        step = power * factor;
        if (highest / step <= mostSteps)
            break;
    }
    ValueScale scale{step * std::ceil(highest / step - 1e-9), {}};
    const int count = static_cast<int>(std::lround(scale.most / step));
    const int decimals = std::max(0, static_cast<int>(-std::floor(std::log10(step) + 1e-9)));
    for (int i = 0; i <= count; ++i)
        scale.ticks.push_back({double(i) / count, QString::number(i * step, 'f', decimals)});
    return scale;
}

std::vector<GraphTick> timeTicks(const QDateTime& start, double lengthS)
{
    const auto* found = std::find_if(std::begin(timeSteps), std::end(timeSteps), [lengthS](qint64 step) {
        return lengthS <= mostTimeTicks * static_cast<double>(step);
    });
    const qint64 stepS = found == std::end(timeSteps) ? timeSteps[std::size(timeSteps) - 1] : *found;
    // Counted from midnight by the clock on the wall, so that ticks stay round when summer time ends.
    const qint64 sinceMidnightS = start.time().msecsSinceStartOfDay() / msPerS;
    std::vector<GraphTick> ticks;
    for (qint64 n = sinceMidnightS / stepS;; ++n) {
        const qint64 wallS = n * stepS;
        const QDateTime time(start.date().addDays(wallS / dayS),
                             QTime::fromMSecsSinceStartOfDay(static_cast<int>(wallS % dayS * msPerS)), Qt::LocalTime);
        const double at = static_cast<double>(start.msecsTo(time)) / double(msPerS) / lengthS;
        if (at > 1.0 || !(lengthS > 0.0))
            return ticks;
        if (at >= 0.0)
            ticks.push_back({at, timeLabel(time, stepS)});
    }
}
