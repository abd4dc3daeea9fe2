// SPDX-License-Identifier: GPL-3.0-or-later
// The same in every language of the machine, as the rest of the page is.
#include "TimeText.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <utility>

#include <QtCore/QLocale>

QString timeText(const QDateTime& time)
{
    return QLocale::c().toString(time, QStringLiteral("d MMM yyyy, HH:mm:ss"));
}

QString shortTimeText(const QDateTime& time)
{
    return QLocale::c().toString(time, QStringLiteral("d MMM, HH:mm:ss"));
}

QString zoneText(const QDateTime& time)
{
    const int minutes = time.offsetFromUtc() / 60;
    return QStringLiteral("UTC%1%2:%3")
        .arg(QLatin1Char(minutes < 0 ? '-' : '+'))
        .arg(std::abs(minutes) / 60, 2, 10, QLatin1Char('0'))
        .arg(std::abs(minutes) % 60, 2, 10, QLatin1Char('0'));
}

QString lengthText(double lengthS)
{
    constexpr std::pair<const char*, qint64> parts[] = {{"d", 86400}, {"h", 3600}, {"min", 60}, {"s", 1}};
    if (lengthS < 60.0)
        return QStringLiteral("%1 s").arg(lengthS, 0, 'g', 3);
    const auto whole = qRound64(lengthS);
    const auto* part =
        std::find_if(std::begin(parts), std::end(parts), [whole](const auto& size) { return whole >= size.second; });
    const auto* next = part + 1;
    const auto text = [](qint64 count, const char* unit) {
        return QStringLiteral("%1 %2").arg(QString::number(count), QLatin1String(unit));
    };
    const qint64 rest = whole % part->second / next->second;
    return text(whole / part->second, part->first) +
           (rest > 0 ? QLatin1Char(' ') + text(rest, next->first) : QString());
}
