// SPDX-License-Identifier: GPL-3.0-or-later
// The course of one camera's run, for graphs: as many columns as a graph is wide, however long the run.
#ifndef KESTROVA_MEASURE_RUNHISTORY_H
#define KESTROVA_MEASURE_RUNHISTORY_H

#include <optional>
#include <vector>

#include <QtCore/QtGlobal>

/// A stretch of a run with the worst of it.
struct HistoryColumn
{
    double beginS = 0.0; ///< after the camera's start
    double endS = 0.0;
    double megabytes = 0.0; ///< of all frames received; 1,000,000 bytes each
    quint64 missingFrames = 0;
    quint64 overflows = 0;
    quint64 skips = 0;      ///< by the camera's counters
    quint64 losses = 0;     ///< of the camera itself
    double lostFromS = 0.0; ///< the first time in it at which the camera was away
    double lostToS = 0.0;   ///< the last one; both are equal if there was none
    double longestGapMs = 0.0;
    std::optional<double> minThroughput;  ///< MB/s, of any block interval
    std::optional<double> maxBufferLevel; ///< percent
    double leastDelivered = 0.0;          ///< MB/s over the time that passed, of any cell; set by RunHistory
    double mostDelivered = 0.0;           ///< the same

    double lengthS() const { return endS - beginS; }
    bool isLost() const { return lostToS > lostFromS; }
    /// MB/s over the time that passed.
    double delivered() const;
    /// Joins what came next. Nothing bad is lost: extremes stay extremes and counts add up.
    HistoryColumn& operator+=(const HistoryColumn& later);
};

/// Ticks become cells of about one length, cells are joined to columns whenever there are too many: memory is bounded.
class RunHistory
{
public:
    static constexpr std::size_t mostColumns = 1024;

    /// `tickS`: how long a tick is meant to be; a cell is as long as that, or as several that are very short.
    explicit RunHistory(double tickS);

    /// Each begins where the one before ended. Its delivered throughputs are not looked at.
    void add(const HistoryColumn& tick);
    /// Of the run so far, without gaps; at most one more than mostColumns.
    std::vector<HistoryColumn> columns() const;

private:
    void append(const HistoryColumn& cell);

    const double longestCellS;
    double longestColumnS;
    std::optional<HistoryColumn> openCell;
    std::vector<HistoryColumn> closed;
};

#endif
