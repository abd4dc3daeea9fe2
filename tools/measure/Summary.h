// SPDX-License-Identifier: GPL-3.0-or-later
// What there is to say at the end of a run, whatever its form.
#ifndef KESTROVA_MEASURE_SUMMARY_H
#define KESTROVA_MEASURE_SUMMARY_H

#include <optional>

#include <QtCore/QDateTime>

#include "Diagnosis.h"
#include "LineWriter.h"
#include "LinkTotals.h"
#include "MeasuredCamera.h"
#include "Outcome.h"

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
    QDateTime startTime;
    qint32 requiredThroughput = 0;         ///< MB/s; 0: not known
    qint32 bufferSize = 0;                 ///< bytes; 0: not known
    std::optional<double> clockDriftPpm{}; ///< nothing: not known
    std::optional<double> grainBytes{};    ///< that arrived at once, on average; nothing: not known
    QStringList problems{};
    Verdict verdict{};
    std::vector<Finding> findings{}; ///< why it went so
    std::optional<ReportSummary> report{};
};

/// What is said at the end; cameras in the order in which they are known.
struct Summary
{
    const Options& options;
    const LineWriter* log; ///< null without one
    QDateTime startTime;
    QDateTime endTime;
    int exitCode = 0;
    std::vector<CameraSummary> cameras{};
    LinkTable links{};
};

Outcome outcomeOf(const CameraSummary& camera);
/// Passes only with the exit code 0.
Outcome outcomeOf(const Summary& summary);
/// "PASS", "FAIL", or that no limits were set.
QString outcomeText(Outcome outcome);

/// The time of the calendar at which the limit was broken; none if it was not.
std::optional<QDateTime> brokenAt(const LimitVerdict& limit, const CameraSummary& camera);

/// What the limits of this camera do not see: that it sent nothing for more than a second.
QStringList reminders(const CameraSummary& camera);

#endif
