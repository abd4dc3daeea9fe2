// SPDX-License-Identifier: GPL-3.0-or-later
// One camera of a run: its record, its times, and what went wrong with it.
#ifndef KESTROVA_MEASURE_MEASUREDCAMERA_H
#define KESTROVA_MEASURE_MEASUREDCAMERA_H

#include <QtCore/QDateTime>
#include <QtCore/QStringList>

#include <vnCore/CxCameraParameters.h>

#include "CameraDevice.h"
#include "Figures.h"
#include "Options.h"
#include "Verdict.h"

/// A stretch of a camera's run with its figures.
struct Stretch
{
    double endS = 0.0; ///< after the run's start
    double lengthS = 0.0;
    Figures figures;
    quint64 bytes = 0;    ///< of all frames received
    qint64 elapsedUs = 0; ///< by the clock of the totals
    KnownLosses lost{};
};

/// All on the thread of the event loop.
class MeasuredCamera
{
public:
    MeasuredCamera(VNCORE_HANDLE camera, SxCameraInfo info, const Options& options, CameraLink link = {});

    const SxCameraInfo& info() const { return cameraInfo; }
    const CameraLink& link() const { return cameraLink; }
    VNCORE_HANDLE handle() const { return data.hCam; }
    const CxCameraLineData& record() const { return data; }
    /// Of the calendar, in local time.
    QDateTime startTime() const { return startedAt; }

    /// False if the camera refuses or could not be opened.
    bool start(const Options& options);
    /// stop() follows: cameras that send nothing then wait for their images at the same time.
    void announceStop();
    /// Ends the measurement and restores the camera; takes up to one image wait if the camera sends nothing.
    void stop();
    /// Measures, as far as is known: not lost, not out of memory.
    bool isRunning() const { return data.isMeasuring(); }

    /// The camera is gone; its run's time goes on until it is measured again.
    void setLost();
    bool isLost() const { return presence != Presence::There; }
    /// The camera is there again: resume() may be tried, and again if it was refused.
    void setReturned();
    /// True if a lost camera is measured again.
    bool resume();
    /// Notes a measurement that ended by itself.
    void noteEnd();
    /// What makes the run of this camera worthless; after stop().
    QStringList problems() const;

    /// What came since the last tick. Each frame is in exactly one.
    Stretch takeTick();
    /// The ticks since the last call as one stretch.
    Stretch takeInterval();
    Stretch wholeRun() const;
    /// Behind the figures of the whole run.
    RunTotals totals() const { return data.runTotals(); }
    /// Looks at the whole run up to now.
    void judge();
    /// As of the last look.
    const Verdict& verdict() const { return runVerdict; }
    /// The run up to the last tick, and what has no place in lines: whether it measures, its present silence, the
    /// required throughput, the link's rate, the bytes received.
    Figures figuresUntilTick() const;
    /// What may explain lost frames, as of now.
    StreamConditions conditions() const;
    std::optional<double> clockDriftPpm() const { return data.clockDriftPpm(); }

private:
    Stretch stretch(double beginS, double endS, const RunTotals& totals, const KnownLosses& lost) const;
    Figures figures(const RunTotals& totals, const KnownLosses& lost) const;
    KnownLosses lostInRun() const;
    double elapsedS() const;

    const SxCameraInfo cameraInfo;
    const CameraLink cameraLink;
    CxCameraLineData data;
    qint64 startUs = 0; ///< by the measurement clock
    QDateTime startedAt;
    Verdict runVerdict;
    double tickEndS = 0.0;    ///< of the last one
    RunTotals ticks;          ///< since the last interval
    RunTotals untilTick;      ///< the run up to the last one
    LostFrames lostBefore;    ///< the run
    LostFrames lostUntilTick; ///< in the run
    LostFrames lostUntilInterval;
    double intervalEndS = 0.0;      ///< of the last one
    std::optional<double> endedAtS; ///< of a measurement that is over
    bool started = false;
    enum class Presence
    {
        There,
        Lost,
        Returned ///< and not yet measured again
    };
    Presence presence = Presence::There;
    bool endedItself = false;
};

#endif
