// SPDX-License-Identifier: GPL-3.0-or-later
// What the cells of the camera table tell about themselves: what a figure is, which frames it covers, and whether
// frames are missing.
#include "DataGraphForm.h"

#include <qcustomplot.h>

#include <QtGui/QTextDocument>

#include "../engine/CameraLineData.h"
#include "../engine/RunDiagnosis.h"
#include "../engine/TimeMath.h"
#include "../setup/CapacityHint.h"
#include "Columns.h"
#include "RowCells.h"
#include "ToolTipItem.h"
#include "ui_DataGraphForm.h"

namespace {

struct Definition
{
    int column;
    const char* text;
};

constexpr const char* statusDefinition = QT_TRANSLATE_NOOP(
    "CxDataGraphForm", "Testing: this tool measures the camera. Acq: the viewer itself acquires from it.");

constexpr std::array<Definition, 5> throughputDefinitions{{
    {ThroughputColumn::AvgThroughput,
     QT_TRANSLATE_NOOP("CxDataGraphForm", "Mean of the frames' throughputs, all frames weighing the same. A frame's "
                                          "throughput: its bytes by the time from its first to its last block.")},
    {ThroughputColumn::MinThroughput,
     QT_TRANSLATE_NOOP("CxDataGraphForm",
                       "The slowest block of all frames: sample period by the time between two blocks.")},
    {ThroughputColumn::MaxBufferLevel,
     QT_TRANSLATE_NOOP("CxDataGraphForm",
                       "Highest level of the camera's buffer, simulated: it is filled at the required throughput, "
                       "emptied at the link's, and empty when a frame begins.")},
    {ThroughputColumn::BufferOverflowCount,
     QT_TRANSLATE_NOOP("CxDataGraphForm", "Frames in which the simulated buffer of the camera was full.")},
    {ThroughputColumn::CameraBufferSize,
     QT_TRANSLATE_NOOP("CxDataGraphForm",
                       "As the camera tells, in kB of 1000 bytes; 32768 bytes are assumed if it does not.")},
}};

constexpr std::array<Definition, 6> counterDefinitions{{
    {StandardColumn::Transferred, QT_TRANSLATE_NOOP("CxDataGraphForm", "Frames that reached the viewer.")},
    {StandardColumn::TransportSkip, QT_TRANSLATE_NOOP("CxDataGraphForm", "Frames lost on the link.")},
    {StandardColumn::ApiSkip, QT_TRANSLATE_NOOP("CxDataGraphForm", "Frames dropped as they were fetched too late.")},
    {StandardColumn::MissedTrgOverlap,
     QT_TRANSLATE_NOOP("CxDataGraphForm", "Triggers that came while the sensor was busy.")},
    {StandardColumn::MissedTrgOverflow,
     QT_TRANSLATE_NOOP("CxDataGraphForm", "Triggers that found the frame buffer full.")},
    {StandardColumn::BufferOverflow, QT_TRANSLATE_NOOP("CxDataGraphForm", "Overflows of the frame buffer.")},
}};

template<class Definitions>
const char* definitionOf(int column, const Definitions& definitions)
{
    const auto found = std::find_if(definitions.begin(), definitions.end(),
                                    [column](const Definition& entry) { return entry.column == column; });
    return found == definitions.end() ? statusDefinition : found->text;
}

QString secondsText(double us)
{
    return QString::number(us / double(usPerSecond), 'g', 6);
}

} // namespace

QTableWidgetItem* CxDataGraphForm::NewFigureItem(VNCORE_HANDLE hCam, int column)
{
    return new ToolTipItem([this, hCam, column] { return CellToolTip(hCam, column); });
}

/// Rich text, so that it is wrapped.
QString CxDataGraphForm::CellToolTip(VNCORE_HANDLE hCam, int column) const
{
    QStringList lines;
    if (measMode == MeasModeStandardAcq) {
        lines += tr(definitionOf(column, counterDefinitions));
        if (column != statusColumn)
            lines += tr("The camera's count at its last frame, whatever the graph shows.");
    } else {
        lines += tr(definitionOf(column, throughputDefinitions));
        if (column != statusColumn && column != ThroughputColumn::CameraBufferSize)
            lines += RangeLines(hCam);
        const CxCameraLineData* record = lineDataMap.value(hCam);
        if (column == ThroughputColumn::CameraBufferSize && record && !record->bufferSizeKnown)
            lines += tr("This camera does not tell: %1 bytes are assumed.").arg(record->cameraBufferSize.load());
        if (column == ThroughputColumn::MinThroughput && record)
            lines += tr("Blocks of %1 bytes, the sample period: the shorter they are, the lower the minimum can be.")
                         .arg(record->samplePeriod);
    }
    lines += RunLines(hCam);
    if (column == statusColumn)
        lines += CauseLines(hCam);
    return Qt::convertFromPlainText(lines.join(QLatin1Char('\n')), Qt::WhiteSpaceNormal);
}

/// Which frames the figures of a throughput row are about, in seconds of the time axis.
QStringList CxDataGraphForm::RangeLines(VNCORE_HANDLE hCam) const
{
    const CxCameraLineData* record = lineDataMap.value(hCam);
    if (!record || !record->figuresRange)
        return {};
    const auto& [fromUs, toUs, anyFrame] = *record->figuresRange;
    const double from = double(fromUs - referenceTime);
    const double to = double(toUs - referenceTime);
    const double frameTime = record->avgFrameTime;
    const double margin = frameTime * 2.0 > to - from ? frameTime : to - from;
    QStringList lines{tr("Frames from %1 s to %2 s: the visible %3 s to %4 s and a margin of %5 s on either side.")
                          .arg(secondsText(from - margin), secondsText(to + margin), secondsText(from),
                               secondsText(to), secondsText(margin))};
    if (!anyFrame)
        lines += tr("no frame in this range");
    return lines;
}

/// How the present or last measurement has gone so far.
QStringList CxDataGraphForm::RunLines(VNCORE_HANDLE hCam) const
{
    const CxCameraLineData* record = lineDataMap.value(hCam);
    if (!record || postponedEvents.isHeld()) // then a mutex must not be taken
        return {};
    const RunTotals run = record->runTotals();
    if (run.frames == 0 && run.longestGapUs == 0)
        return {};
    QStringList lines{tr("This measurement: %1 missing frames, longest time without a frame %2 s.")
                          .arg(QString::number(run.missingFrames), secondsText(double(run.longestGapUs)))};
    if (const auto drift = record->clockDriftPpm())
        lines += tr("The camera's clock is %1 ppm fast against this computer's.").arg(*drift, 0, 'f', 1);
    const qint64 silentSeconds = run.presentGapUs / usPerSecond; // 0 when nothing is measured
    if (silentSeconds > 0)
        lines += tr("no frame for %1 s").arg(silentSeconds);
    return lines;
}

/// Possible causes of that, and for how long what happened is kept.
QStringList CxDataGraphForm::CauseLines(VNCORE_HANDLE hCam) const
{
    const CxCameraLineData* record = lineDataMap.value(hCam);
    QStringList lines;
    if (!record || postponedEvents.isHeld()) // then a mutex must not be taken
        return lines;
    const RunTotals run = record->runTotals();
    for (const Finding& finding : diagnose(diagnosisInput(*record, run)))
        lines += finding.sentence;
    if (run.frames > 0)
        lines += historyHint({record->measMode, record->maxSamples, record->samplePeriod}, *record);
    return lines;
}
