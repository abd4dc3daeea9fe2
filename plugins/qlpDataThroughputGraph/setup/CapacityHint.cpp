// SPDX-License-Identifier: GPL-3.0-or-later
// Memory and duration of a capacity as text.
#include "CapacityHint.h"

#include <algorithm>
#include <cmath>
#include <utility>
#include <vector>

#include <QtCore/QLocale>
#include <QtCore/QMutexLocker>
#include <QtCore/QStringList>
#include <QtGui/QTextDocument>

#include "../engine/CameraLineData.h"
#include "../engine/TimeMath.h"
#include "DataGraphSetupDlg.h"

namespace {

constexpr double bytesPerMB = 1e6;
constexpr std::size_t mostCameras = 12; ///< that the tool tip has room for

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

QString countText(qint64 count)
{
    QLocale locale;
    locale.setNumberOptions(locale.numberOptions() & ~QLocale::OmitGroupSeparator); // which the C locale has
    return locale.toString(count);
}

/// Without the time in which no frame came, unless the camera is slow.
double perSecondOfFrames(double amount, const RunTotals& run)
{
    const bool slow = isLongestGapUsual(static_cast<double>(run.longestGapUs), static_cast<double>(run.elapsedUs),
                                        static_cast<double>(run.frames));
    return amount * double(usPerSecond) / static_cast<double>(run.elapsedUs - (slow ? 0 : run.silentUs));
}

bool isMeasured(const CxCameraLineData& camera, int mode)
{
    const QMutexLocker lock(&camera.mutex);
    return mode == MeasModeStandardAcq ? !camera.counterSampleList.empty() : !camera.frameList.empty();
}

/// Samples per second: in the present or last measurement of this mode, else as the sensor needs it.
double sampleRateOf(const CxCameraLineData& camera, const CapacityPlan& plan)
{
    const bool standard = plan.mode == MeasModeStandardAcq;
    const RunTotals run = camera.runTotals();
    if (!isMeasured(camera, plan.mode))
        return standard ? 0.0 : double(camera.requiredThroughput) * bytesPerMB / plan.samplePeriod;
    return standard ? perSecondOfFrames(static_cast<double>(run.frames), run)
                    : perSecondOfFrames(static_cast<double>(run.bytes), run) / plan.samplePeriod;
}

QString lastingLine(const CapacityPlan& plan, const CxCameraLineData& camera, const std::optional<double>& seconds)
{
    if (!seconds)
        return CxDataGraphSetupDlg::tr("%1: not known before its first measurement").arg(camera.cameraName);
    const QString text = isMeasured(camera, plan.mode)
                             ? CxDataGraphSetupDlg::tr("%1: the last %2 at the present rate")
                             : CxDataGraphSetupDlg::tr("%1: the last %2 at the required throughput");
    return text.arg(camera.cameraName, durationText(*seconds));
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
    const double seconds = static_cast<double>(plan.samples) / sampleRateOf(camera, plan);
    return std::isfinite(seconds) && seconds > 0.0 ? std::optional(seconds) : std::nullopt;
}

QString historyHint(const CapacityPlan& plan, const CxCameraLineData& camera)
{
    const auto seconds = lastingSeconds(plan, camera);
    return seconds ? CxDataGraphSetupDlg::tr("Kept are the last %1 at the present rate: capacity %2 samples.")
                         .arg(durationText(*seconds), countText(plan.samples))
                   : CxDataGraphSetupDlg::tr("Kept are the last %1 samples.").arg(countText(plan.samples));
}

QString capacityHint(const CapacityPlan& plan, const QList<CxCameraLineData*>& cameras)
{
    QStringList lines{CxDataGraphSetupDlg::tr("%1 samples take up to %2 of memory per camera, then the oldest are "
                                              "dropped.")
                          .arg(countText(plan.samples), memoryText(memoryOf(plan)))};
    std::vector<std::pair<std::optional<double>, const CxCameraLineData*>> kept;
    for (const CxCameraLineData* camera : cameras)
        kept.emplace_back(lastingSeconds(plan, *camera), camera);
    std::stable_sort(kept.begin(), kept.end(), [](const auto& one, const auto& other) {
        return one.first.value_or(HUGE_VAL) < other.first.value_or(HUGE_VAL);
    });
    for (std::size_t i = 0; i < std::min(kept.size(), mostCameras); ++i)
        lines += lastingLine(plan, *kept[i].second, kept[i].first);
    if (kept.size() > mostCameras)
        lines += CxDataGraphSetupDlg::tr("and %1 other cameras").arg(kept.size() - mostCameras);
    return Qt::convertFromPlainText(lines.join(QLatin1Char('\n'))); // names may hold markup
}
