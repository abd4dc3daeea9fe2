// SPDX-License-Identifier: GPL-3.0-or-later
// The run's clockwork.
#include "MeasureRun.h"

#include <algorithm>
#include <limits>

#include "CameraNames.h"
#include "CameraRegistry.h"
#include "Complain.h"
#include "PlainText.h"

namespace {

constexpr qint64 longestSleepMs = 3600000; ///< a timer takes no more than 24 days

} // namespace

MeasureRun::MeasureRun(const Options& options, std::vector<std::unique_ptr<MeasuredCamera>>& cameras, Output& output,
                       IntervalLog* log)
    : m_options(options), m_cameras(cameras), m_output(output), m_log(log)
{
    m_timer.setSingleShot(true);
    m_timer.setTimerType(Qt::PreciseTimer);
    connect(&m_timer, &QTimer::timeout, this, &MeasureRun::wake);
    connect(&CameraRegistry::instance(), &CameraRegistry::cameraLost, this, &MeasureRun::onCameraLost);
}

void MeasureRun::start()
{
    for (const auto& camera : m_cameras) {
        if (camera->start(m_options))
            m_started.push_back(camera.get());
        else
            complain(QStringLiteral("%1 did not start").arg(cameraDisplayName(camera->info())));
    }
    m_clock.start();
    m_nextLineMs = m_options.interval.count();
    if (anyRunning())
        armTimer();
    else
        stop();
}

void MeasureRun::stop()
{
    if (std::exchange(m_over, true))
        return;
    m_timer.stop();
    for (MeasuredCamera* camera : m_started)
        camera->announceStop();
    for (MeasuredCamera* camera : m_started) {
        camera->stop();
        printInterval(*camera);
    }
    Q_EMIT finished();
}

void MeasureRun::wake()
{
    const qint64 now = m_clock.elapsed();
    if (m_options.duration && now >= m_options.duration->count()) {
        stop();
        return;
    }
    if (now >= m_nextLineMs) {
        printIntervals();
        const qint64 interval = m_options.interval.count();
        m_nextLineMs = (now / interval + 1) * interval;
    }
    for (MeasuredCamera* camera : m_started)
        camera->noteEnd();
    if (m_output.lines().readerIsGone() || !anyRunning())
        stop();
    else
        armTimer();
}

void MeasureRun::armTimer()
{
    const qint64 endMs = m_options.duration ? m_options.duration->count() : std::numeric_limits<qint64>::max();
    const qint64 sleepMs = std::min(m_nextLineMs, endMs) - m_clock.elapsed();
    m_timer.start(static_cast<int>(std::clamp<qint64>(sleepMs, 0, longestSleepMs)));
}

void MeasureRun::printIntervals()
{
    for (MeasuredCamera* camera : m_started)
        printInterval(*camera);
}

void MeasureRun::printInterval(MeasuredCamera& camera)
{
    const IntervalLine line{camera.info(), QDateTime::currentDateTimeUtc(), camera.takeInterval()};
    m_output.interval(line);
    tellOnce(m_output.lines());
    if (m_log) {
        m_log->append(line);
        tellOnce(m_log->lines());
    }
}

void MeasureRun::tellOnce(const LineWriter& lines)
{
    if (lines.lostLines() > 0 && m_told.insert(&lines).second)
        complain(singleLine(lines.error()));
}

bool MeasureRun::anyRunning() const
{
    return std::any_of(m_started.begin(), m_started.end(), [](const auto* camera) { return camera->isRunning(); });
}

void MeasureRun::onCameraLost(VNCORE_HANDLE lost)
{
    for (MeasuredCamera* camera : m_started) {
        if (camera->handle() == lost) {
            complain(QStringLiteral("%1 was lost").arg(cameraDisplayName(camera->info())));
            camera->setLost();
        }
    }
    if (!anyRunning())
        stop();
}
