// SPDX-License-Identifier: GPL-3.0-or-later
// What happened during a run and when: starts, losses, silences, ends.
#ifndef KESTROVA_MEASURE_RUNEVENTS_H
#define KESTROVA_MEASURE_RUNEVENTS_H

#include <deque>
#include <vector>

#include <QtCore/QDateTime>

struct RunEvent
{
    QDateTime time;
    QString camera; ///< as it is shown; empty: of the whole run
    QString text;
    bool bad = false;
};

/// Bounded: of a run in which something happens again and again the first and the latest are kept.
class RunEvents
{
public:
    static constexpr std::size_t mostFirst = 400;
    static constexpr std::size_t mostLatest = 600;

    void add(RunEvent event);
    /// In the order in which they were added. Where some were left out one says how many.
    std::vector<RunEvent> list() const;

private:
    std::vector<RunEvent> first;
    std::deque<RunEvent> latest;
    quint64 dropped = 0;
};

#endif
