// SPDX-License-Identifier: GPL-3.0-or-later
// Joins ticks to cells and cells to columns.
#include "RunHistory.h"

#include <algorithm>

namespace {

constexpr double shortestCellS = 0.1; ///< a shorter one would tell single frames from the time between them
constexpr double lateTick = 1.5;      ///< a tick's length may be so many times what it is meant to be

template<typename Pick>
void merge(std::optional<double>& into, const std::optional<double>& value, Pick pick)
{
    if (value)
        into = into ? pick(*into, *value) : *value;
}

/// Appends to the last column if both together are short enough.
void joinOrAppend(std::vector<HistoryColumn>& columns, const HistoryColumn& next, double longestS)
{
    if (!columns.empty() && columns.back().lengthS() + next.lengthS() <= longestS)
        columns.back() += next;
    else
        columns.push_back(next);
}

} // namespace

double HistoryColumn::delivered() const
{
    return endS > beginS ? megabytes / lengthS() : 0.0;
}

HistoryColumn& HistoryColumn::operator+=(const HistoryColumn& later)
{
    endS = later.endS;
    megabytes += later.megabytes;
    missingFrames += later.missingFrames;
    overflows += later.overflows;
    skips += later.skips;
    losses += later.losses;
    if (later.isLost()) {
        lostFromS = isLost() ? lostFromS : later.lostFromS;
        lostToS = later.lostToS;
    }
    longestGapMs = std::max(longestGapMs, later.longestGapMs);
    merge(minThroughput, later.minThroughput, [](double a, double b) { return std::min(a, b); });
    merge(maxBufferLevel, later.maxBufferLevel, [](double a, double b) { return std::max(a, b); });
    leastDelivered = std::min(leastDelivered, later.leastDelivered);
    mostDelivered = std::max(mostDelivered, later.mostDelivered);
    return *this;
}

RunHistory::RunHistory(double tickS)
    : longestCellS(std::max(tickS * lateTick, shortestCellS)), longestColumnS(longestCellS)
{
}

void RunHistory::add(const HistoryColumn& tick)
{
    if (openCell && openCell->lengthS() + tick.lengthS() > longestCellS) {
        append(*openCell);
        openCell.reset();
    }
    if (openCell)
        *openCell += tick;
    else
        openCell = tick;
    openCell->leastDelivered = openCell->mostDelivered = openCell->delivered();
}

std::vector<HistoryColumn> RunHistory::columns() const
{
    std::vector<HistoryColumn> all = closed;
    if (!openCell)
        return all;
    HistoryColumn last = *openCell;
    if (!all.empty() && last.lengthS() < longestCellS / 2.0) {
        // The run ended in it: too short to tell what was delivered.
        last.leastDelivered = all.back().leastDelivered;
        last.mostDelivered = all.back().mostDelivered;
        all.back() += last;
    } else {
        all.push_back(last);
    }
    return all;
}

void RunHistory::append(const HistoryColumn& cell)
{
    joinOrAppend(closed, cell, longestColumnS);
    while (closed.size() > mostColumns) {
        longestColumnS *= 2.0;
        std::vector<HistoryColumn> joined;
        for (const HistoryColumn& column : closed)
            joinOrAppend(joined, column, longestColumnS);
        closed = std::move(joined);
    }
}
