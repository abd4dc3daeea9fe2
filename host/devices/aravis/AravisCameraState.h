// SPDX-License-Identifier: GPL-3.0-or-later
// What a camera's device, its worker and the library's threads share.
#ifndef KESTROVA_ARAVIS_ARAVISCAMERASTATE_H
#define KESTROVA_ARAVIS_ARAVISCAMERASTATE_H

#include <mutex>

#include <QtCore/QCoreApplication>

#include "AravisCamera.h"
#include "CameraConnection.h"
#include "HostParameters.h"
#include "HostWatch.h"
#include "ImageStream.h"
#include "LossNotifier.h"
#include "MonotonicCondition.h"

namespace aravis {

/// The context of the device's texts in translations.
struct Text
{
    Q_DECLARE_TR_FUNCTIONS(AravisCamera)
};

enum class Acquisition
{
    Idle,
    Running,
    Cut, ///< the camera was lost meanwhile; waits last until somebody stops or starts
};

struct AravisCamera::State : std::enable_shared_from_this<State>
{
    CameraAddress address;
    // Known since the camera was opened; never changed.
    SxCameraInfo info;
    QString serial;
    std::vector<CameraConnection::Format> formats;
    std::optional<CameraConnection::Route> route; ///< of a camera in a network
    CameraLink link; ///< the interface through which a camera in a network is reached; the USB tells none
    std::weak_ptr<CameraWorker> worker;

    /// The worker's alone.
    std::unique_ptr<CameraConnection> connection;

    /// Guards all below. Under it only queues of the library are looked into and the notifier's lock is taken.
    std::mutex mutex;
    MonotonicCondition changed; ///< a frame arrived, or a wait is over
    Acquisition acquisition = Acquisition::Idle;
    quint64 waitEpoch = 0;               ///< a wait that began in an earlier one is over
    std::shared_ptr<ImageStream> stream; ///< of the running acquisition; destroyed by the worker
    bool finishing = false;              ///< the worker judges the last frames of a stream that is none any more
    std::chrono::steady_clock::time_point endExpectedBy; ///< after the newest stop
    FrameTally tally;                                    ///< of the newest acquisition, when that is over
    LostFrames lostEarlier;                              ///< in acquisitions before
    StreamConditions conditions;                         ///< of the newest acquisition, when that is over
    HostWatch watch;                                     ///< since it began
    HostParameters parameters;
    quint32 format = 0;    ///< code; the camera's
    bool arrivals = false; ///< data are times of arrival, whatever the camera's format
    bool lost = false;
    bool lostAgain = false; ///< while an attempt to reach the lost camera was under way
    bool closing = false;   ///< nobody has the device any more

    LossNotifier notifier; ///< has a lock of its own; told without `mutex`

    const CameraConnection::Format* knownFormat(int value) const; ///< null if it has none of that value

    /// What "imgdataformat" is.
    int formatLocked() const;
    bool canSetFormat(int value);
    /// Whether frames lost at the end of an acquisition that was stopped are still to be counted; under the lock.
    bool isEnding() const { return acquisition == Acquisition::Idle && (stream || finishing); }
    QString arrivalsFault() const;

    // --- the worker's tasks ---
    bool connect(QString* error);
    bool start();
    void endStream(bool tellCamera);
    void watchTriggers(int before);
    void clearAfterLoss();
    void reopen();
    void close();
    // --- any thread ---
    void setLost();
    void reopenLater();
};

} // namespace aravis

#endif
