// SPDX-License-Identifier: GPL-3.0-or-later
// Ticks and texts.
#include "TimeOfDay.h"

#include <qcustomplot.h>

#include <QtCore/QTime>

#include "../engine/TimeMath.h"

namespace {

constexpr qint64 usPerMs = 1000;
constexpr qint64 msPerDay = 86400000;

class TimeOfDayTicker : public QCPAxisTickerTime
{
public:
    explicit TimeOfDayTicker(std::function<qint64()> now) : nowUs(std::move(now)) {}

protected:
    QVector<double> createTickVector(double tickStep, const QCPRange& range) override
    {
        fine = tickStep < 1.0;
        setTickOrigin(-static_cast<double>(nowUs()) / usPerSecond);
        return QCPAxisTickerTime::createTickVector(tickStep, range);
    }
    QString getTickLabel(double tick, const QLocale&, QChar, int) override
    {
        // Rounded: a tick at a full second may lie a little before it.
        return timeOfDayText(nowUs() + qRound64(tick * usPerSecond) + usPerMs / 2, fine);
    }

private:
    std::function<qint64()> nowUs;
    bool fine = false;
};

} // namespace

QString timeOfDayText(qint64 timeUs, bool milliseconds)
{
    const qint64 ms = ((timeUs / usPerMs) % msPerDay + msPerDay) % msPerDay;
    return QTime::fromMSecsSinceStartOfDay(static_cast<int>(ms))
        .toString(milliseconds ? QStringLiteral("HH:mm:ss.zzz") : QStringLiteral("HH:mm:ss"));
}

QSharedPointer<QCPAxisTicker> timeOfDayTicker(std::function<qint64()> now)
{
    return QSharedPointer<TimeOfDayTicker>::create(std::move(now));
}
