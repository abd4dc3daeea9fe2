// SPDX-License-Identifier: GPL-3.0-or-later
// What a run says on standard output: a line per camera and interval, and a summary.
#ifndef KESTROVA_MEASURE_OUTPUT_H
#define KESTROVA_MEASURE_OUTPUT_H

#include <memory>
#include <optional>

#include <QtCore/QDateTime>

#include "Diagnosis.h"
#include "LineWriter.h"
#include "MeasuredCamera.h"

/// One line: a camera's interval, at a time of the calendar.
struct IntervalLine
{
    const SxCameraInfo& camera;
    QDateTime time;
    Stretch stretch;
};

/// A written report.
struct ReportSummary
{
    QString file;
    quint64 frames = 0;        ///< kept, and so in the report
    quint64 droppedFrames = 0; ///< by the capacity
    qint64 fromUs = 0;         ///< time stamps of the first and the last frame
    qint64 toUs = 0;
};

/// What is said of one camera at the end.
struct CameraSummary
{
    SxCameraInfo camera;
    Stretch run;
    std::optional<double> clockDriftPpm; ///< nothing: not known
    QStringList problems;
    Verdict verdict;
    std::vector<Finding> findings; ///< why it went so
    std::optional<ReportSummary> report;
};

/// What is said at the end; cameras in the order in which they are known.
struct Summary
{
    ExMeasMode mode;
    int exitCode;
    const LineWriter* log; ///< null without one
    std::vector<CameraSummary> cameras;
};

/// On the thread of the event loop. Each line has left the program when a call returns.
class Output
{
public:
    virtual ~Output() = default;
    virtual void interval(const IntervalLine& line) = 0;
    virtual void summary(const Summary& summary) = 0;
    virtual void cameraList(const std::vector<SxCameraInfo>& cameras) = 0;

    /// Where the lines went, and whether they did.
    const LineWriter& lines() const { return writer; }

protected:
    explicit Output(LineWriter& lines) : writer(lines) {}
    /// Writes a line at once: whoever reads wants to see it now.
    void writeLine(const QString& text) { writer.write((text + QLatin1Char('\n')).toUtf8()); }

private:
    LineWriter& writer;
};

/// The writer must outlive them.
std::unique_ptr<Output> makeTextOutput(LineWriter& lines);
std::unique_ptr<Output> makeJsonOutput(LineWriter& lines);

#endif
