// SPDX-License-Identifier: GPL-3.0-or-later
// Which loop a mode runs.
#include "AcquisitionThread.h"

#include "CameraLineData.h"
#include "LogLine.h"

CxAcquisitionThread::CxAcquisitionThread(CxCameraLineData* data, qint32 mode) : lineData(data), measMode(mode) {}

void CxAcquisitionThread::run()
{
    switch (measMode) {
    case MeasModeDataThroughput:
        lineData->runMeasureLoop();
        break;
    case MeasModeStandardAcq:
        lineData->runMeasureLoopAcquisition();
        break;
    default:
        LOG_FAILURE("CxAcquisitionThread::run", "Unknown measurement mode selected");
    }
}
