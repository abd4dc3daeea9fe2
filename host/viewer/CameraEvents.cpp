// SPDX-License-Identifier: GPL-3.0-or-later
// One line per event, and the watch over measured cameras.
#include "CameraEvents.h"

#include <vnCore/CxCameraManager.h>

#include "CameraNames.h"
#include "CameraRegistry.h"
#include "EventLog.h"
#include "LostFramesText.h"
#include "TakeOvers.h"

namespace {

constexpr int watchIntervalMs = 1000;
constexpr std::chrono::seconds lossInterval{10}; ///< between two lines of a camera

QString nameOf(VNCORE_HANDLE camera)
{
    const CxCameraParameters* parameters = CxCameraManager::instance()->cameraParameters(camera);
    return parameters ? cameraDisplayName(parameters->cameraInfo()) : CameraEvents::tr("A camera");
}

} // namespace

CameraEvents::CameraEvents(EventLog& log, TakeOvers& takeOvers, QObject* parent) : QObject(parent), eventLog(log)
{
    using Severity = EventLog::Severity;
    auto* manager = CxCameraManager::instance();
    connect(manager, &CxCameraManager::cameraOpened, this, [this](VNCORE_HANDLE camera) {
        eventLog.append(Severity::Information, tr("%1 opened").arg(nameOf(camera)));
        if (const auto before = CameraRegistry::instance().lostFrames(camera))
            lost[camera] = {*before, {}};
    });
    connect(manager, &CxCameraManager::cameraClosed, this, [this](VNCORE_HANDLE camera) {
        eventLog.append(Severity::Information, tr("%1 closed").arg(nameOf(camera)));
        lost.erase(camera);
    });
    auto* registry = &CameraRegistry::instance();
    connect(registry, &CameraRegistry::cameraLost, this,
            [this](VNCORE_HANDLE camera) { eventLog.append(Severity::Critical, tr("%1 lost").arg(nameOf(camera))); });
    connect(registry, &CameraRegistry::cameraReturned, this, [this](VNCORE_HANDLE camera) {
        eventLog.append(Severity::Information, tr("%1 is back").arg(nameOf(camera)));
    });
    connect(&takeOvers, &TakeOvers::changed, this, &CameraEvents::onTakenOver);

    connect(&timer, &QTimer::timeout, this, [this] {
        const auto now = std::chrono::steady_clock::now();
        checkFrames(now);
        checkLosses(now);
    });
    timer.start(watchIntervalMs);
}

void CameraEvents::onTakenOver(VNCORE_HANDLE camera, bool takenOver)
{
    if (takenOver) {
        measured.emplace(camera, false);
        eventLog.append(EventLog::Severity::Information, tr("%1 taken over by a plug-in").arg(nameOf(camera)));
    } else {
        measured.erase(camera);
        eventLog.append(EventLog::Severity::Information, tr("%1 given back").arg(nameOf(camera)));
    }
}

void CameraEvents::checkFrames(TimePoint now)
{
    for (auto& [camera, told] : measured) {
        const auto since = CameraRegistry::instance().silentSince(camera);
        const bool silent = since && now - *since >= longestSilence;
        if (!since || silent == told)
            continue; // nobody acquires, or nothing new
        told = silent;
        if (silent) {
            eventLog.append(EventLog::Severity::Warning,
                            tr("%1 is measured but has sent no frame for %2 s")
                                .arg(nameOf(camera), QString::number(longestSilence.count())));
        } else {
            eventLog.append(EventLog::Severity::Information, tr("%1 sends frames again").arg(nameOf(camera)));
        }
    }
}

void CameraEvents::checkLosses(TimePoint now)
{
    for (VNCORE_HANDLE camera : CameraRegistry::instance().openedCameras()) {
        const auto frames = CameraRegistry::instance().lostFrames(camera);
        if (!frames)
            continue;
        ToldLosses& told = lost.try_emplace(camera, ToldLosses{*frames}).first->second;
        const LostFrames more = frames->since(told.frames);
        if (more.total() == 0 || now < told.tellNext)
            continue;
        told = {*frames, now + lossInterval};
        eventLog.append(EventLog::Severity::Warning,
                        tr("%1 lost frames: %2").arg(nameOf(camera), lostFramesText(more)));
    }
}
