// SPDX-License-Identifier: GPL-3.0-or-later
// The measurement record of one camera: its settings, the samples of its measurements, the figures computed from
// them, and the operations that fill and read it. One .cpp per topic: record, preparation, loops, statistics.
// What draws curves or opens a dialog lies in presentation/, for programs that have windows.
#ifndef KESTROVA_CAMERALINEDATA_H
#define KESTROVA_CAMERALINEDATA_H

#include <array>
#include <atomic>
#include <cfloat>
#include <memory>
#include <optional>
#include <vector>

#include <QtCore/QMutex>
#include <QtCore/QString>
#include <QtCore/QWaitCondition>

#include <vnCore/vnTypes.h>

#include "CsvReportWriter.h"
#include "EventMarks.h"
#include "FrameCounters.h"
#include "FrameList.h"
#include "RunTotals.h"
#include "SampleList.h"

class ClockDrift;
class CxAcquisitionThread;
class QCPGraph;
class QCPRange;
class QWidget;
struct ScanPoint;

enum ExMeasMode : qint32
{
    MeasModeDataThroughput = 0, ///< transport data with time stamps of the camera's counter pattern
    MeasModeStandardAcq = 1,    ///< normal images and the camera's frame counters
};

/// One frame counter of a camera.
struct CounterKind
{
    CounterKind(VN_COUNTER_SELECTOR kind, const QString& counterName) : selector(kind), name(counterName) {}

    VN_COUNTER_SELECTOR selector;
    bool supported = false;       ///< asked of the camera when a standard measurement starts
    std::atomic<qint32> value{0}; ///< last value read; the worker writes it without the mutex
    QString name;
};

/// The ends of a standard acquisition run, whatever its list still keeps; absent before the first frame.
struct RunCounters
{
    std::optional<CounterSample> first;
    std::optional<CounterSample> last;
    /// By selector: it ran backwards, so somebody has reset it or the camera began anew, and its steps are not known.
    std::array<bool, frameCounters.size()> reset{};
};

constexpr qint32 smallestSamplePeriod = 8; ///< bytes, one word of the counter pattern

/// What a measurement was started with.
struct MeasurementPlan
{
    qint32 samplePeriod; ///< bytes, at least smallestSamplePeriod
    qint32 maxSamples;   ///< at least 1
};

/// What calculateStats() was asked for last.
struct FiguresRange
{
    qint64 fromUs;
    qint64 toUs;
    bool anyFrame; ///< its result: without a frame, figures are those of an earlier range
};

/// One camera's record. The user interface thread owns and drives it; while a measurement runs, its one worker
/// thread appends samples. The settings and results are fields, as the form and its table work on them directly.
class CxCameraLineData
{
public:
    CxCameraLineData();
    ~CxCameraLineData();
    CxCameraLineData(const CxCameraLineData&) = delete;
    CxCameraLineData& operator=(const CxCameraLineData&) = delete;

    // --- record (CameraLineData.cpp) ---
    /// Forgets all samples; settings stay. Only while no measurement runs.
    void clearData();
    /// Makes the work arrays hold `count` elements each; nothing in the standard mode. False, and logged, without
    /// memory. With the mutex held while a measurement runs.
    bool AlloCateBuffers(quint32 count);
    bool isMeasuring() const;
    /// Whether frames (throughput mode) are kept.
    bool hasFrames() const;
    qint32 counterValue(VN_COUNTER_SELECTOR kind) const;
    bool isCounterSupported(VN_COUNTER_SELECTOR kind) const;
    /// Totals of the present or last measurement.
    RunTotals runTotals() const;
    /// Totals since the last call or the measurement's start; consecutive ones add up to runTotals().
    RunTotals takeIntervalTotals();
    RunCounters runCounters() const;
    /// When the last measurement ended; none while one runs and before the first.
    std::optional<qint64> lastEndUs() const;
    /// By how much the camera's clock is fast, of the present or last measurement; unknown in its first minutes.
    std::optional<double> clockDriftPpm() const;

    // --- camera preparation and restore (CameraPreparation.cpp), user interface thread; the restore also on a worker
    // that has run out of memory ---
    /// Prepares the camera, starts its acquisition and the worker. `period` in bytes, `capacity` in samples; what is
    /// too small is raised. On false the camera is restored.
    bool startMeasurement(qint32 period, qint32 capacity);
    /// Joins the worker (up to one image wait), stops the acquisition, restores the camera. False if there is nothing
    /// to stop.
    bool stopMeasurement();
    /// Ends the time that counts and lets the loop end. stopMeasurement() has to follow; called for several records
    /// first, they wait for their last images at the same time and not one after the other.
    void announceStop();
    /// Saves and changes the camera's parameters for `measMode`; on false the caller restores.
    bool setupCameraParameters();
    /// Writes back what was saved, for the mode that was set up last.
    void restoreCameraParameters();
    /// Takes `requiredThroughput` from the camera, if it knows one.
    void readDefaultAvgTransportSpeed();
    /// Bytes; 32768 if the camera does not tell.
    qint32 readCameraBufferSize();

    // --- a camera that is lost and comes back (CameraLoss.cpp), user interface thread ---
    /// For a camera that is lost: ends the image wait and joins the worker; the camera, which would not listen, is left
    /// as it is. The run's time goes on. resumeMeasurement() or stopMeasurement() follows. False if nothing measures.
    bool suspendMeasurement();
    /// When the camera is back: gives it its own values, which it may have lost, prepares it again and goes on with the
    /// run. On false it is still suspended and this may be tried again, unless the worker has no memory.
    bool resumeMeasurement();

    // --- measurement loops (MeasureLoops.cpp), worker thread ---
    void runMeasureLoop();
    void runMeasureLoopAcquisition();
    void readCounters();

    // --- statistics (Statistics.cpp, with curves in presentation/), user interface thread ---
    /// Figures of fromUs..toUs (with margins) into the four result fields, and two curves with points more than
    /// `minKeySpacing` milliseconds apart. Graphs and key range may be null. False if no frame was evaluated.
    bool calculateStats(QCPGraph* minGraph, QCPGraph* levelGraph, const QCPRange* keyRange, qint64 fromUs,
                        qint64 toUs, double minKeySpacing);
    /// What happened in fromUs..toUs, of present settings as far as calculateStats() has been asked since they changed.
    /// Events of one kind at most `joinUs` apart are one mark.
    std::vector<EventMark> eventMarks(qint64 fromUs, qint64 toUs, qint64 joinUs) const;
    /// What the aggregates of the frames are to be made for, as the fields are now.
    EvaluationSettings evaluationSettings() const;
    /// Five counter curves; each graph may be null. False only if there are no samples at all.
    bool fillCounterGraphs(QCPGraph* transportSkip, QCPGraph* apiSkip, QCPGraph* missedTrgOverlap,
                           QCPGraph* missedTrgOverflow, QCPGraph* bufferOverflow, const QCPRange& keyRange,
                           qint64 fromUs, qint64 toUs, double minKeySpacing);
    /// Speeds (MB/s), buffer deltas (bytes) and offsets (microseconds) of a frame's block intervals; each array may
    /// be null, else holds blockCount - 1 elements. Returns the number of intervals.
    static qint32 calculateFrameSpeeds(const FrameRecord& frame, quint32 period, double required, double* speeds,
                                       double* deltas, quint64* offsets);

    // --- report (presentation/CsvReport.cpp), user interface thread ---
    /// Writes the intervals of fromUs..toUs to a CSV file behind a progress dialog; nothing in the standard mode.
    /// Processes events, at last with the mutex held: whoever calls it sees to it that nothing reached from there
    /// deletes the record or takes its mutex. Of a report that failed half way `reason` receives why.
    CsvReportResult exportToCsv(const QString& fileName, QWidget* parent, qint64 fromUs, qint64 toUs,
                                QString* reason = nullptr);

    /// Tells this record from every other one of the process, also from a later one with the same handle.
    const quint64 serial;

    VNCORE_HANDLE hCam = nullptr;
    QString cameraName;
    qint32 measMode = MeasModeDataThroughput;

    // Guarded by `mutex` while a measurement runs.
    FrameList frameList;
    SampleList counterSampleList;
    std::vector<MeasuredRun> runs; ///< since clearData(), the oldest of very many left out

    std::vector<std::unique_ptr<CounterKind>> counterList;
    // For the next start, whatever settings hold. Samples that are kept, and a running measurement, have framePlan.
    qint32 samplePeriod = 4096;              ///< bytes
    qint32 maxSamples = 3000000;             ///< capacity, samples
    std::atomic<qint32> cameraBufferSize{0}; ///< bytes
    std::optional<qint32> givenBufferSize;   ///< bytes, for a camera that does not tell; set before a start
    std::atomic<bool> bufferSizeKnown{true}; ///< not an assumption
    bool plotEnabled = true;

    // Work arrays, sized together by calculateStats() under `mutex`. Aggregates have taken over what the statistics
    // kept here; sizing them stays because a range without memory for a frame's intervals counts as not evaluated.
    std::unique_ptr<double[]> linkSpeeds;        ///< MB/s
    std::unique_ptr<double[]> bufferDeltas;      ///< bytes
    std::unique_ptr<quint64[]> blockTimeOffsets; ///< microseconds

    std::atomic<qint32> requiredThroughput{0}; ///< MB/s
    bool autoRequiredThroughput = true;

    // Per-frame times, microseconds. Reset by the worker without the mutex.
    std::atomic<double> avgFrameTime{0.0};
    std::atomic<double> maxFrameTime{DBL_MIN};
    std::atomic<double> minFrameTime{DBL_MAX};
    std::atomic<quint64> frameTimeCount{0};

    quint64 workArrayLength = 0;

    // Camera parameters as they were before the measurement.
    qint32 savedImgDataFormat = 0;
    qint32 savedOutputBitDepth = 0;
    qint32 savedOutputBitPacking = 0;
    qint32 savedBufferPolicy = 0;
    qint32 savedColumnFpnCorrection = 0;
    qint32 savedRowFpnCorrection = 0;
    qint32 savedLutEnable = 0;
    qint32 savedTestPatternGenerator = 0;
    qint32 savedTestPattern = 0;
    bool frameBufferModeChanged = false;
    bool deviceRegisterChanged = false;

    // Results of calculateStats().
    double avgThroughput = 0.0;  ///< MB/s
    double minThroughput = 0.0;  ///< MB/s
    double maxBufferLevel = 0.0; ///< percent
    quint64 bufferOverflowCount = 0;
    std::optional<FiguresRange> figuresRange;

    /// Guards the lists, the runs, the work arrays, `measuring` and the totals. While it is held no signal is emitted; a start
    /// and a stop take locks of the host and of the camera under it, no other operation takes any.
    mutable QMutex mutex;
    bool measuring = false;
    /// Tells the loop to end. Whoever sets it ends the measurement: the user interface thread by joining, or a worker
    /// that is out of memory.
    std::atomic<bool> stopRequested{false};
    std::atomic<bool> stopAnnounced{false};
    QWaitCondition stopAsked; ///< wakes a worker that pauses; with `mutex`, after either flag was set
    std::unique_ptr<CxAcquisitionThread> thread;

private:
    // CameraPreparation.cpp
    bool setupDataThroughput();
    bool setupStandardAcq();
    bool prepareCamera();
    bool startAcquisition();
    bool startWorkerLocked();
    void endRunLocked(qint64 nowUs);
    void finishMeasurementLocked();

    // CameraLoss.cpp
    bool endSuspension();

    // Statistics.cpp
    /// Of the present or last run: a gap that is silence, and can be seen.
    qint64 silenceLimitUsLocked() const;
    /// `points`, which may be null, receives those of the curves, at least `stepUs` apart. Throws without memory.
    bool evaluate(qint64 fromUs, qint64 toUs, qint64 stepUs, std::vector<ScanPoint>* points);

    // presentation/CounterGraphs.cpp
    bool fillGraphs(const std::array<QCPGraph*, 5>& graphs, const QCPRange& keyRange, qint64 fromUs, qint64 toUs,
                    double minKeySpacing);

    // MeasureLoops.cpp
    /// Times of a frame, microseconds on the measurement clock's scale.
    struct FrameTimes
    {
        qint64 arrivalUs;   ///< by the host's clock
        qint64 cameraUs;    ///< by the camera's
        qint64 timestampUs; ///< to be recorded: the camera's, with its drift corrected
        std::optional<double> driftPpm;
    };
    qint64 beginLoop();
    bool goesOn() const { return !stopRequested && !stopAnnounced; }
    static FrameTimes frameTimes(const VN_IMG& image, qint64 baseUs, ClockDrift& drift);
    struct FailedWaits
    {
        std::optional<qint64> loggedUs; ///< when the last one was
        int pauseMs = 0;                ///< after the last one, if it was early
    };
    /// A wait that fails before its limit is followed by a pause, or a host whose waits fail at once would make the
    /// worker spin. Failures are logged once per limit.
    bool waitForImage(VN_IMG& image, const char* where, FailedWaits& failed);
    std::unique_ptr<FrameRecord> makeFrameRecord(const VN_IMG& image, quint32 blockWords, quint64 blockCount,
                                                 qint64 timestampUs) const;
    bool keepFrame(const VN_IMG& image, quint64 blockCount, const FrameTimes& times, const MeasurementPlan& plan,
                   FrameIntervalCounter& intervals);
    bool keepSample(const VN_IMG& image, const FrameTimes& times, qint64 previousUs, quint64 limit);
    void addCountersLocked(const CounterSample& sample);
    void updateFrameTimeLocked(double timeUs);
    void endForLackOfMemory(const VN_IMG& image, const FrameTimes& times);

    /// Of the running measurement, else of the last one since clearData(). Changes only while no worker runs.
    std::optional<MeasurementPlan> framePlan;
    std::optional<qint32> preparedMode; ///< what setupCameraParameters() was called for and is not yet restored
    RunTotalsCounter totals;            ///< guarded by `mutex`
    RunCounters countersOfRun;          ///< guarded by `mutex`
    bool countersBeginAnew = false;     ///< after a loss, guarded by `mutex`
    bool suspended = false;             ///< between loss and return; the user interface thread's
    std::optional<double> driftPpm;     ///< of the run, guarded by `mutex`
};

#endif
