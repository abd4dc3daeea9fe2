// SPDX-License-Identifier: GPL-3.0-or-later
// The interval lines as a CSV file that survives a power cut but for its last line.
#ifndef KESTROVA_MEASURE_INTERVALLOG_H
#define KESTROVA_MEASURE_INTERVALLOG_H

#include <memory>

#include <QtCore/QFile>

#include "Output.h"

/// Owns the open file. On the thread of the event loop.
class IntervalLog
{
public:
    /// Opens the file to append to it: a rig that starts again after a power cut keeps what it had. False if that
    /// fails or the file holds something else; see error().
    bool open(const QString& fileName, ExMeasMode mode);
    /// Writes a line and brings it to the disk. False if that failed, which is no reason to give up; see lines().
    bool append(const IntervalLine& line);
    /// Why open() failed.
    QString error() const { return fault; }
    /// How writing went since open().
    const LineWriter& lines() const { return *writer; }

private:
    QFile file;
    std::unique_ptr<LineWriter> writer; ///< of an open file
    QString fault;
};

#endif
