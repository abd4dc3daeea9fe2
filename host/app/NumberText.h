// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers with units, as somebody types them.
#ifndef KESTROVA_NUMBERTEXT_H
#define KESTROVA_NUMBERTEXT_H

#include <optional>
#include <vector>

#include <QtCore/QString>

/// "<number><unit>" with the factor of the unit; a number without one has the factor of the empty unit.
struct Unit
{
    const char* name;
    double factor;
};

extern const std::vector<Unit> noUnit;
extern const std::vector<Unit> multiples;
extern const std::vector<Unit> times; ///< in ms

std::optional<double> scaledNumber(const QString& text, const std::vector<Unit>& units);
std::optional<qint64> wholeNumber(const QString& text, const std::vector<Unit>& units, qint64 least, qint64 most);

#endif
