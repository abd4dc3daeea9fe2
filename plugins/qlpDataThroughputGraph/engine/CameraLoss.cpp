// SPDX-License-Identifier: GPL-3.0-or-later
// A camera that is lost while it is measured, and measured again when it is back: one run with a gap.
#include "CameraLineData.h"

#include <iterator>

#include <QtCore/QMutexLocker>

#include <vnCore/vnApi.h>

#include "AcquisitionThread.h"
#include "CameraSteps.h"
#include "MeasurementClock.h"

namespace {

using steps::Record;

/// What a measurement has to restore, kept while a camera is prepared again that may be lost half way: what is read
/// of it then is not to be trusted.
class OwnValues
{
public:
    explicit OwnValues(Record& camera)
        : record(camera), bufferMode(camera.frameBufferModeChanged), deviceRegister(camera.deviceRegisterChanged)
    {
        for (std::size_t i = 0; i < values.size(); ++i)
            values[i] = isSaved(i) ? camera.*steps::throughputSteps[i].saved : 0;
    }
    ~OwnValues()
    {
        for (std::size_t i = 0; i < values.size(); ++i) {
            if (isSaved(i))
                record.*steps::throughputSteps[i].saved = values[i];
        }
        record.frameBufferModeChanged |= bufferMode;
        record.deviceRegisterChanged |= deviceRegister;
    }
    OwnValues(const OwnValues&) = delete;
    OwnValues& operator=(const OwnValues&) = delete;

private:
    static bool isSaved(std::size_t i) { return steps::throughputSteps[i].kind == steps::Step::Save; }

    Record& record;
    const bool bufferMode;
    const bool deviceRegister;
    std::array<qint32, std::size(steps::throughputSteps)> values; ///< by step; the other mode saves one of them
};

} // namespace

bool CxCameraLineData::suspendMeasurement()
{
    if (!isMeasuring() || stopRequested.exchange(true))
        return false;
    {
        const qint64 nowUs = measurementClockUs();
        const QMutexLocker lock(&mutex);
        totals.lose(nowUs);
        stopAsked.wakeAll();
    }
    vnApi_StopAcquisition(hCam); // else the worker's wait would last
    thread->wait();              // without the mutex: the worker takes it for its last frame
    thread.reset();
    const QMutexLocker lock(&mutex);
    measuring = false;
    suspended = true;
    return true;
}

bool CxCameraLineData::resumeMeasurement()
{
    const QMutexLocker lock(&mutex);
    if (!suspended)
        return false;
    {
        const OwnValues own(*this);
        restoreCameraParameters();
        if (!prepareCamera() || !startAcquisition()) {
            preparedMode = measMode;
            return false;
        }
    }
    totals.resume(measurementClockUs());
    countersBeginAnew = true;
    suspended = false;
    if (startWorkerLocked())
        return true;
    endRunLocked(measurementClockUs());
    return false;
}

/// The stop of a run whose camera is lost, or back and not yet measured again.
bool CxCameraLineData::endSuspension()
{
    announceStop();
    const QMutexLocker lock(&mutex);
    suspended = false;
    restoreCameraParameters();
    return true;
}
