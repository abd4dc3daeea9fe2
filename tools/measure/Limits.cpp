// SPDX-License-Identifier: GPL-3.0-or-later
// Judges figures.
#include "Limits.h"

namespace {

/// With enough digits to see by how little a limit was missed.
QString plain(double value)
{
    return QString::number(value, 'g', 10);
}

} // namespace

QStringList brokenLimits(const std::vector<Limit>& limits, const Figures& figures)
{
    QStringList broken;
    for (const Limit& limit : limits) {
        const auto value = figureValue(figures, limit.figure);
        const bool kept = value && (limit.isMinimum ? *value >= limit.value : *value <= limit.value);
        if (!kept)
            broken.append(QStringLiteral("%1 %2: %3")
                              .arg(limit.option, plain(limit.value), value ? plain(*value) : QStringLiteral("n/a")));
    }
    return broken;
}
