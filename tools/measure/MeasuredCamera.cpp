// SPDX-License-Identifier: GPL-3.0-or-later
// A camera's run from start to figures.
#include "MeasuredCamera.h"

#include <utility>

MeasuredCamera::MeasuredCamera(VNCORE_HANDLE camera, SxCameraInfo info, const Options& options)
    : m_info(std::move(info))
{
    m_record.hCam = camera;
    m_record.cameraName = m_info.name;
    m_record.measMode = options.mode;
    m_record.autoRequiredThroughput = !options.required.has_value();
    m_record.requiredThroughput = options.required.value_or(0);
}

bool MeasuredCamera::start(const Options& options)
{
    m_startTime = QDateTime::currentDateTime();
    m_started = m_record.startMeasurement(options.samplePeriod, options.capacity);
    m_clock.start();
    return m_started;
}

void MeasuredCamera::announceStop()
{
    noteEnd();
    m_record.announceStop();
    if (m_started && !m_endS)
        m_endS = elapsedS();
}

void MeasuredCamera::stop()
{
    announceStop();
    m_record.stopMeasurement();
}

void MeasuredCamera::setLost()
{
    m_lost = m_started;
}

void MeasuredCamera::noteEnd()
{
    if (m_started && !m_endS && !m_record.isMeasuring()) {
        m_endedItself = true;
        m_endS = elapsedS();
    }
}

QStringList MeasuredCamera::problems() const
{
    if (!m_started)
        return {QStringLiteral("did not start")};
    QStringList problems;
    if (m_lost)
        problems.append(QStringLiteral("was lost"));
    if (m_endedItself)
        problems.append(QStringLiteral("measurement ended for lack of memory"));
    const RunTotals totals = m_record.runTotals();
    if (totals.frames == 0)
        problems.append(QStringLiteral("sent no frame"));
    else if (totals.skippedFrames == totals.frames)
        problems.append(QStringLiteral("no frame held a whole sample block"));
    return problems;
}

Stretch MeasuredCamera::takeInterval()
{
    const double endS = elapsedS();
    const double beginS = std::exchange(m_intervalBeginS, endS);
    return {endS, endS - beginS, figures(m_record.takeIntervalTotals())};
}

Stretch MeasuredCamera::wholeRun() const
{
    const double endS = elapsedS();
    return {endS, endS, figures(m_record.runTotals())};
}

Figures MeasuredCamera::figures(const RunTotals& totals) const
{
    if (m_record.measMode == MeasModeStandardAcq)
        return counterFigures(totals, counterDifferences(m_record));
    return throughputFigures(totals, m_record.requiredThroughput > 0);
}

double MeasuredCamera::elapsedS() const
{
    if (!m_started)
        return 0.0;
    return m_endS ? *m_endS : static_cast<double>(m_clock.nsecsElapsed()) / 1e9;
}
