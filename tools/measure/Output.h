// SPDX-License-Identifier: GPL-3.0-or-later
// What a run says on standard output: a line per camera and interval, and a summary.
#ifndef KESTROVA_MEASURE_OUTPUT_H
#define KESTROVA_MEASURE_OUTPUT_H

#include <memory>

#include "LineWriter.h"
#include "Summary.h"

/// One line: a camera's interval, at a time of the calendar.
struct IntervalLine
{
    const SxCameraInfo& camera;
    QDateTime time;
    Stretch stretch;
};

/// The links of an interval.
struct LinkLine
{
    QDateTime time;
    const LinkTable& table;
};

/// On the thread of the event loop. Each line has left the program when a call returns.
class Output
{
public:
    virtual ~Output() = default;
    virtual void interval(const IntervalLine& line) = 0;
    /// After the intervals of all cameras. Links of a single camera, and a single camera, need no line.
    virtual void links(const LinkLine& line) = 0;
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
