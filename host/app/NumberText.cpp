// SPDX-License-Identifier: GPL-3.0-or-later
// Reads numbers with units.
#include "NumberText.h"

#include <cmath>

#include <QtCore/QRegularExpression>

const std::vector<Unit> noUnit{{"", 1.0}};
const std::vector<Unit> multiples{{"", 1.0}, {"k", 1e3}, {"M", 1e6}, {"G", 1e9}};
const std::vector<Unit> times{{"", 1e3},   {"ms", 1.0},   {"s", 1e3},    {"min", 60e3},
                              {"m", 60e3}, {"h", 3600e3}, {"d", 86400e3}};

std::optional<double> scaledNumber(const QString& text, const std::vector<Unit>& units)
{
    static const QRegularExpression form(QStringLiteral("^([0-9]+(?:\\.[0-9]+)?)([A-Za-z]*)$"));
    const auto match = form.match(text);
    if (!match.hasMatch())
        return std::nullopt;
    for (const Unit& unit : units) {
        if (match.captured(2) == QLatin1String(unit.name))
            return match.captured(1).toDouble() * unit.factor;
    }
    return std::nullopt;
}

std::optional<qint64> wholeNumber(const QString& text, const std::vector<Unit>& units, qint64 least, qint64 most)
{
    const auto value = scaledNumber(text, units);
    if (!value || *value < static_cast<double>(least) || *value > static_cast<double>(most) ||
        *value != std::floor(*value))
        return std::nullopt;
    return static_cast<qint64>(*value);
}
