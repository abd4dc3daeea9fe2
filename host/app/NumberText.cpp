// SPDX-License-Identifier: GPL-3.0-or-later
// Reads numbers with units.
#include "NumberText.h"

#include <cmath>
#include <initializer_list>

#include <QtCore/QRegularExpression>

namespace {

struct Unit
{
    const char* name; ///< empty: without a unit
    double factor;
};

std::optional<double> scaledNumber(const QString& text, std::initializer_list<Unit> units)
{
    static const QRegularExpression form(QStringLiteral("^([0-9]+(?:\\.[0-9]+)?)([A-Za-z]*)$"));
    const auto match = form.match(text);
    for (const Unit& unit : units) {
        if (match.hasMatch() && match.captured(2) == QLatin1String(unit.name))
            return match.captured(1).toDouble() * unit.factor;
    }
    return std::nullopt;
}

bool isWithin(double value, qint64 least, qint64 most)
{
    return value >= static_cast<double>(least) && value <= static_cast<double>(most);
}

} // namespace

std::optional<double> numberFromText(const QString& text)
{
    return scaledNumber(text, {{"", 1.0}});
}

std::optional<qint64> wholeNumberFromText(const QString& text, qint64 least, qint64 most)
{
    constexpr double exactness = 1e-12; // the fraction that a product of decimals may have
    const auto value = scaledNumber(text, {{"", 1.0}, {"k", 1e3}, {"M", 1e6}, {"G", 1e9}});
    if (!value || !isWithin(*value, least, most) || std::abs(*value - std::round(*value)) > exactness * *value)
        return std::nullopt;
    return std::llround(*value);
}

std::optional<std::chrono::milliseconds> timeFromText(const QString& text, std::chrono::milliseconds least)
{
    constexpr qint64 tenYearsMs = 3650LL * 86400 * 1000;
    const auto ms = scaledNumber(
        text, {{"", 1e3}, {"ms", 1.0}, {"s", 1e3}, {"min", 60e3}, {"m", 60e3}, {"h", 3600e3}, {"d", 86400e3}});
    if (!ms || !isWithin(std::round(*ms), least.count(), tenYearsMs))
        return std::nullopt;
    return std::chrono::milliseconds(std::llround(*ms));
}
