// SPDX-License-Identifier: GPL-3.0-or-later
// Memory and duration of a capacity as text.
#include "CapacityHint.h"

#include <algorithm>
#include <cmath>

#include <QtCore/QMutexLocker>
#include <QtCore/QStringList>
#include <QtGui/QTextDocument>

#include "../engine/CameraLineData.h"
#include "../engine/TimeMath.h"
#include "DataGraphSetupDlg.h"

namespace {

constexpr double bytesPerMB = 1e6;

QString memoryText(double bytes)
{
    const double megabytes = bytes / bytesPerMB;
    return megabytes < 1000.0 ? QString::number(megabytes, 'f', 0) + QLatin1String(" MB")
                              : QString::number(megabytes / 1000.0, 'f', 1) + QLatin1String(" GB");
}

/// Two significant places are enough for a plan.
QString durationText(double seconds)
{
    struct Unit
    {
        double seconds;
        const char* name;
    };
    for (const Unit unit : {Unit{86400.0, " d"}, Unit{3600.0, " h"}, Unit{60.0, " min"}}) {
        const double count = seconds / unit.seconds;
        if (count >= 2.0)
            return QString::number(count, 'f', count < 10.0 ? 1 : 0) + QLatin1String(unit.name);
    }
    return QString::number(seconds, 'f', seconds < 10.0 ? 1 : 0) + QLatin1String(" s");
}

bool isRate(double value)
{
    return std::isfinite(value) && value > 0.0;
}

/// MB/s: as measured last, else as the sensor needs it; 0 if neither is known.
double throughputOf(const CxCameraLineData& camera)
{
    if (isRate(camera.avgThroughput))
        return camera.avgThroughput;
    return std::max(0.0, double(camera.requiredThroughput));
}

/// The mean time between frames in microseconds, 0 if this mode has not been measured.
double frameIntervalOf(const CxCameraLineData& camera)
{
    const QMutexLocker lock(&camera.mutex);
    return camera.counterSampleList.empty() ? 0.0 : camera.avgFrameTime.load();
}

} // namespace

double memoryOf(const CapacityPlan& plan)
{
    const double perSample =
        plan.mode == MeasModeStandardAcq ? bytesPerSample : bytesPerBlock + bytesPerFrame / usualBlocksPerFrame;
    return double(plan.samples) * perSample;
}

std::optional<double> lastingSeconds(const CapacityPlan& plan, const CxCameraLineData& camera)
{
    const double perSecond = plan.mode == MeasModeStandardAcq
                                 ? double(usPerSecond) / frameIntervalOf(camera)
                                 : throughputOf(camera) * bytesPerMB / double(plan.samplePeriod);
    if (!isRate(perSecond))
        return std::nullopt;
    return double(plan.samples) / perSecond;
}

QString capacityHint(const CapacityPlan& plan, const QList<CxCameraLineData*>& cameras)
{
    QStringList lines{
        CxDataGraphSetupDlg::tr("Takes up to %1 of memory per camera, then the oldest samples are dropped.")
            .arg(memoryText(memoryOf(plan)))};
    for (const CxCameraLineData* camera : cameras) {
        const auto seconds = lastingSeconds(plan, *camera);
        lines += seconds
                     ? CxDataGraphSetupDlg::tr("%1: lasts %2").arg(camera->cameraName, durationText(*seconds))
                     : CxDataGraphSetupDlg::tr("%1: not known before its first measurement").arg(camera->cameraName);
    }
    return Qt::convertFromPlainText(lines.join(QLatin1Char('\n'))); // names may hold markup
}
