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

constexpr std::chrono::seconds longestTick{1};

/// The next point of a grid from the run's start.
qint64 gridAfter(qint64 nowMs, std::chrono::milliseconds step)
{
    return (nowMs / step.count() + 1) * step.count();
}

} // namespace

MeasureRun::MeasureRun(const Options& options, std::vector<std::unique_ptr<MeasuredCamera>>& cameras, Output& output,
                       IntervalLog* log)
    : runOptions(options),
      allCameras(cameras),
      lineOutput(output),
      intervalLog(log),
      tickLength(std::min<std::chrono::milliseconds>(options.interval, longestTick)),
      course(tickLength)
{
    timer.setSingleShot(true);
    timer.setTimerType(Qt::PreciseTimer);
    connect(&timer, &QTimer::timeout, this, &MeasureRun::wake);
    connect(&CameraRegistry::instance(), &CameraRegistry::cameraLost, this, &MeasureRun::onCameraLost);
    connect(&CameraRegistry::instance(), &CameraRegistry::cameraReturned, this, &MeasureRun::onCameraReturned);
}

void MeasureRun::start()
{
    for (const auto& camera : allCameras) {
        if (camera->start(runOptions)) {
            started.push_back(camera.get());
            course.note(*camera, QStringLiteral("started"));
        } else {
            complain(QStringLiteral("%1 did not start").arg(cameraDisplayName(camera->info())));
            course.note(*camera, QStringLiteral("did not start"), true);
        }
    }
    clock.start();
    nextTickMs = tickLength.count();
    nextLineMs = runOptions.interval.count();
    Q_EMIT updated();
    if (anyLeft())
        armTimer();
    else
        stop();
}

void MeasureRun::stop()
{
    if (std::exchange(over, true))
        return;
    timer.stop();
    for (MeasuredCamera* camera : started)
        camera->announceStop();
    LinkTable links;
    for (MeasuredCamera* camera : started) {
        camera->stop();
        printInterval(*camera, links);
        course.note(*camera, QStringLiteral("stopped"));
    }
    printLinks(links);
    for (const auto& camera : allCameras)
        camera->judge();
    Q_EMIT updated();
    Q_EMIT finished();
}

void MeasureRun::wake()
{
    const qint64 now = clock.elapsed();
    if (runOptions.duration && now >= runOptions.duration->count()) {
        stop();
        return;
    }
    if (now >= nextLineMs) {
        printIntervals();
        nextLineMs = gridAfter(now, runOptions.interval);
        nextTickMs = gridAfter(now, tickLength);
    } else if (now >= nextTickMs) {
        for (MeasuredCamera* camera : started)
            tick(*camera);
        Q_EMIT updated();
        nextTickMs = gridAfter(now, tickLength);
    }
    for (MeasuredCamera* camera : started)
        camera->noteEnd();
    resumeReturned();
    if (lineOutput.lines().readerIsGone() || !anyLeft())
        stop();
    else
        armTimer();
}

void MeasureRun::armTimer()
{
    const qint64 endMs = runOptions.duration ? runOptions.duration->count() : std::numeric_limits<qint64>::max();
    const qint64 sleepMs = std::min({nextTickMs, nextLineMs, endMs}) - clock.elapsed();
    timer.start(static_cast<int>(std::max<qint64>(sleepMs, 0)));
}

void MeasureRun::printIntervals()
{
    LinkTable links;
    for (MeasuredCamera* camera : started)
        printInterval(*camera, links);
    printLinks(links);
    Q_EMIT updated();
}

void MeasureRun::tick(MeasuredCamera& camera)
{
    course.add(camera, camera.takeTick());
    camera.judge();
}

void MeasureRun::printInterval(MeasuredCamera& camera, LinkTable& links)
{
    tick(camera);
    const IntervalLine line{camera.info(), QDateTime::currentDateTimeUtc(), camera.takeInterval()};
    links.add(camera, line.stretch);
    lineOutput.interval(line);
    tellOnce(lineOutput.lines());
    if (intervalLog) {
        intervalLog->append(line);
        tellOnce(intervalLog->lines());
    }
}

void MeasureRun::printLinks(const LinkTable& links)
{
    lineOutput.links({QDateTime::currentDateTimeUtc(), links});
    tellOnce(lineOutput.lines());
}

void MeasureRun::tellOnce(const LineWriter& lines)
{
    if (lines.lostLines() > 0 && told.insert(&lines).second)
        complain(singleLine(lines.error()));
}

/// A lost camera may come back.
bool MeasureRun::anyLeft() const
{
    return std::any_of(started.begin(), started.end(), [this](const auto* camera) {
        return camera->isRunning() || (runOptions.resume && camera->isLost());
    });
}

void MeasureRun::onCameraLost(VNCORE_HANDLE lost)
{
    if (over)
        return;
    for (MeasuredCamera* camera : started) {
        if (camera->handle() == lost) {
            complain(QStringLiteral("%1 was lost").arg(cameraDisplayName(camera->info())));
            course.note(*camera, QStringLiteral("was lost"), true);
            camera->setLost();
        }
    }
    if (!anyLeft())
        stop();
}

void MeasureRun::onCameraReturned(VNCORE_HANDLE returned)
{
    if (over || !runOptions.resume)
        return;
    for (MeasuredCamera* camera : started) {
        if (camera->handle() == returned)
            camera->setReturned();
    }
    resumeReturned();
}

/// At every tick, too: a camera that has just come back may still refuse.
void MeasureRun::resumeReturned()
{
    for (MeasuredCamera* camera : started) {
        if (!camera->resume())
            continue;
        complain(QStringLiteral("%1 is back and measured again").arg(cameraDisplayName(camera->info())));
        course.note(*camera, QStringLiteral("is back and measured again"));
    }
}
