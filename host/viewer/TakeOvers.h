// SPDX-License-Identifier: GPL-3.0-or-later
// Which cameras plug-ins measure with.
#ifndef KESTROVA_TAKEOVERS_H
#define KESTROVA_TAKEOVERS_H

#include <QtCore/QObject>
#include <QtCore/QSet>

#include <vnCore/vnTypes.h>

/// A take-over lasts until the plug-in gives the camera back, the camera closes or forgetAll(). User interface
/// thread only.
class TakeOvers : public QObject
{
    Q_OBJECT

public:
    explicit TakeOvers(QObject* parent = nullptr);

    /// Taking over a camera that is not open does nothing.
    void setTakenOver(VNCORE_HANDLE camera, bool takenOver);
    bool isTakenOver(VNCORE_HANDLE camera) const { return takenCameras.contains(camera); }

    /// For the death of a plug-in's widget. Whose take-over was whose is not known; should another plug-in measure
    /// as well, the registry still refuses the host's own acquisition.
    void forgetAll();

Q_SIGNALS:
    void changed(VNCORE_HANDLE camera, bool takenOver);

private:
    QSet<VNCORE_HANDLE> takenCameras;
};

#endif
