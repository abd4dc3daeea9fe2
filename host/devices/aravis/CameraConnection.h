// SPDX-License-Identifier: GPL-3.0-or-later
// The library's side of one camera, as long as this program has control of it.
#ifndef KESTROVA_ARAVIS_CAMERACONNECTION_H
#define KESTROVA_ARAVIS_CAMERACONNECTION_H

#include <functional>
#include <memory>
#include <vector>

#include "CameraAddress.h"
#include "GlibOwners.h"
#include "MissedTriggers.h"

namespace aravis {

class ImageStream;

/// A camera under this program's control. All operations belong to the camera's worker and may take seconds with a
/// camera that does not answer, the destruction too.
class CameraConnection
{
public:
    struct Format
    {
        quint32 code;
        QString name;
    };
    struct Identity
    {
        QString model;
        QString serial;
        QString userId; ///< the user's own name for it; may be empty
    };

    /// The way to a camera in a network, as addresses.
    struct Route
    {
        std::string camera;
        std::string host;
    };

    /// `onLost` is called once, on a thread of the library, when the camera is gone; it must not end the connection.
    /// On failure null and the reason.
    static std::unique_ptr<CameraConnection> open(const CameraAddress& address, std::function<void()> onLost,
                                                  QString* error);
    ~CameraConnection();
    CameraConnection(const CameraConnection&) = delete;
    CameraConnection& operator=(const CameraConnection&) = delete;

    const Identity& identity() const { return who; }
    const std::optional<Route>& route() const { return way; }
    std::vector<Format> formats();
    quint32 format(); ///< 0 if the camera does not say
    bool setFormat(quint32 code);
    /// What the sensor's frames take, or the limit that the camera sets its link, in MB/s and rounded up; 0 if the
    /// camera does not say.
    int requiredThroughput();
    /// By the camera's own count; none if it has none or does not answer.
    std::optional<int> missedTriggers() const { return triggers.read(); }

    /// `onNews` is called on threads of the stream when there may be a frame to take. With `arrivals` the frames' data
    /// are their times of arrival. Null if the camera refuses, or those times cannot be had, which is logged.
    std::unique_ptr<ImageStream> start(const std::function<void()>& onNews, bool arrivals);
    /// Tells the camera to send no more.
    void stop();

private:
    CameraConnection(Owned<ArvCamera> camera, std::function<void()> onLost);
    std::optional<double> linkLimit();
    std::optional<double> frameRate();

    Owned<ArvCamera> camera;
    MissedTriggers triggers;
    gulong lossHandler = 0;
    Identity who;
    std::optional<Route> way;
};

} // namespace aravis

#endif
