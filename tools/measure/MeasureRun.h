// SPDX-License-Identifier: GPL-3.0-or-later
// A run: starts the cameras, prints their intervals on the event loop, stops them.
#ifndef KESTROVA_MEASURE_MEASURERUN_H
#define KESTROVA_MEASURE_MEASURERUN_H

#include <set>

#include <QtCore/QObject>
#include <QtCore/QTimer>

#include "IntervalLog.h"
#include "MeasuredCamera.h"
#include "Output.h"
#include "RunRecorder.h"

/// Intervals lie on a grid from the run's start; the last one ends with the run and may be shorter. Ticks, at least one
/// a second, add up to intervals: long lines do not keep history and verdict waiting.
class MeasureRun : public QObject
{
    Q_OBJECT

public:
    /// `log` may be null. All must outlive the run.
    MeasureRun(const Options& options, std::vector<std::unique_ptr<MeasuredCamera>>& cameras, Output& output,
               IntervalLog* log);

    /// Starts what can be started. If nothing can, the run is over at once.
    void start();
    /// Stops and restores the cameras and prints what came since the last line; the first call counts.
    void stop();
    /// Prints a line for every camera.
    void printIntervals();
    bool isOver() const { return over; }
    /// Its course so far.
    const RunRecorder& recorder() const { return course; }

Q_SIGNALS:
    /// Figures of all cameras are new; also with the first and the last ones of the run.
    void updated();
    void finished();

private:
    void wake();
    void armTimer();
    bool anyLeft() const;
    void onCameraLost(VNCORE_HANDLE camera);
    void onCameraReturned(VNCORE_HANDLE camera);
    void resumeReturned();
    void tick(MeasuredCamera& camera);
    void printInterval(MeasuredCamera& camera, LinkTable& links);
    void printLinks(const LinkTable& links);
    void tellOnce(const LineWriter& lines);

    const Options& runOptions;
    std::vector<std::unique_ptr<MeasuredCamera>>& allCameras;
    std::vector<MeasuredCamera*> started;
    Output& lineOutput;
    IntervalLog* const intervalLog;
    const std::chrono::milliseconds tickLength;
    RunRecorder course;
    std::set<const LineWriter*> told; ///< whose failure was told
    QTimer timer;
    QElapsedTimer clock;
    qint64 nextTickMs = 0;
    qint64 nextLineMs = 0;
    bool over = false;
};

#endif
