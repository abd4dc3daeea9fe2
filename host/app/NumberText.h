// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers, sizes and times, as somebody types them on a command line.
#ifndef KESTROVA_NUMBERTEXT_H
#define KESTROVA_NUMBERTEXT_H

#include <chrono>
#include <optional>

#include <QtCore/QString>

/// "12" or "1.5": a number of 0 or more without a unit.
std::optional<double> numberFromText(const QString& text);

/// "2500", "2.5k", "10M" or "1G", multiples of 1000: a whole number from `least` to `most`.
std::optional<qint64> wholeNumberFromText(const QString& text, qint64 least, qint64 most);

/// "250ms", "10s", "5min" or "5m", "2h", "1d"; seconds without a unit. Rounded to ms; from `least` to ten years.
std::optional<std::chrono::milliseconds> timeFromText(const QString& text,
                                                      std::chrono::milliseconds least = std::chrono::milliseconds(1));

/// What timeFromText() takes, for messages.
inline const QString timeDescription = QStringLiteral("a time from 1ms to 3650d, such as 10s");

#endif
