// SPDX-License-Identifier: GPL-3.0-or-later
// The text of the report of a throughput measurement. Knows no file and no dialog: it hands its text to a sink and
// asks all the time whether to go on.
#ifndef KESTROVA_CSVREPORTWRITER_H
#define KESTROVA_CSVREPORTWRITER_H

#include <cstddef>
#include <functional>

#include <QtCore/QtGlobal>

class CxCameraLineData;

/// The first line. What the columns hold, and in which units, is in docs/measurements.md.
constexpr char csvReportHeader[] =
    "Frame number,Frame Time [ns], Offset [B], Data Time Stamp [ns], Req. throughput [MB/s], "
    "Link throughput [MB/s], Buffer filled [B], Max buffer level [%]\n";

/// How a report ended.
enum class CsvReportResult
{
    Written,
    Cancelled, ///< by the go-on question; what was written so far stays
    Failed,    ///< the sink refused; logged
    NotOpened, ///< there was no file to write to
    NoReport,  ///< the mode has no report
};

/// Keeps nothing from one report to the next. On the thread of whoever calls write().
class CsvReportWriter
{
public:
    /// Takes a piece of text; false if it could not be written, which ends the report.
    using Sink = std::function<bool(const char* text, std::size_t size)>;
    /// Asked before every frame, and every few milliseconds within a large one, with the number of frames visited so
    /// far; false ends the report.
    using GoOn = std::function<bool(qint32 visited)>;

    explicit CsvReportWriter(Sink sink, GoOn goOn = {});

    /// Writes the block intervals whose time lies in fromUs..toUs. Holds the record's mutex all the time: both
    /// callbacks run under it and must not use an operation that takes it.
    CsvReportResult write(const CxCameraLineData& data, qint64 fromUs, qint64 toUs);

private:
    Sink output;
    GoOn mayGoOn;
};

#endif
