// SPDX-License-Identifier: GPL-3.0-or-later
// What the host tells about its opened cameras.
#ifndef VNCORE_CXCAMERAMANAGER_H
#define VNCORE_CXCAMERAMANAGER_H

#include <QtCore/QList>
#include <QtCore/QObject>

#include <vnCore/vnTypes.h>

class CxCameraParameters;

/// The one list of opened cameras. Lives in, is used from and emits on the user interface thread, and holds no lock
/// while a signal is out.
class VNCORE_EXPORT CxCameraManager : public QObject
{
    Q_OBJECT

public:
    static CxCameraManager* instance();

    /// The opened cameras in the order of opening.
    QList<VNCORE_HANDLE> openedCameras() const;

    /// Whether the host itself acquires from the camera; an acquisition through vnApi_StartAcquisition() does not
    /// count. False for an unknown camera.
    bool isCameraRunning(VNCORE_HANDLE camera) const;

    /// The camera's parameter set, owned by the host and valid until the camera's cameraClosed() has returned; null
    /// for an unknown camera.
    CxCameraParameters* cameraParameters(VNCORE_HANDLE camera) const;

Q_SIGNALS:
    /// The camera is in openedCameras() and can be used.
    void cameraOpened(VNCORE_HANDLE camera);

    /// The camera has left openedCameras(), but every call on its handle works until all slots have returned.
    void cameraClosed(VNCORE_HANDLE camera);

    /// The host's own acquisition has begun. One that a plug-in started is not announced.
    void acquisitionStarted(VNCORE_HANDLE camera);

    /// The host's own acquisition has ended.
    void acquisitionFinished(VNCORE_HANDLE camera);

    /// The camera's "imgdataformat" has changed, whoever changed it. Never emitted from inside a camera function.
    void imageFormatChanged(VNCORE_HANDLE camera);

private:
    friend class CameraRegistry;
    CxCameraManager();
};

#endif
