// SPDX-License-Identifier: GPL-3.0-or-later
// What the camera list says of a camera, in a word, a colour and a symbol.
#ifndef KESTROVA_CAMERASTATE_H
#define KESTROVA_CAMERASTATE_H

#include <chrono>

#include <QtCore/QString>
#include <QtGui/QIcon>

class TakeOvers;

/// As of the moment in which it was asked for.
struct CameraState
{
    /// Each has a colour and a symbol of its own.
    enum Kind
    {
        Closed,
        Open,
        Live,      ///< the host acquires
        Measuring, ///< a plug-in does
        Silent,    ///< somebody acquires, but no image has come for CameraEvents::longestSilence
        Lost
    };

    Kind kind;
    QString text; ///< "silent 12 s"
};

/// Of the device with this index in the registry. User interface thread.
CameraState cameraState(int device, const TakeOvers& takeOvers, std::chrono::steady_clock::time_point now);

/// A shape of its own for each kind, for those who do not see its colour.
QIcon stateIcon(CameraState::Kind kind);

#endif
