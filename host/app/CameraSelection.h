// SPDX-License-Identifier: GPL-3.0-or-later
// Which cameras the user means.
#ifndef KESTROVA_CAMERASELECTION_H
#define KESTROVA_CAMERASELECTION_H

#include <vector>

#include <QtCore/QStringList>

#include <vnCore/CxCameraParameters.h>

/// Places in the list of known cameras, in its order and each once.
struct Selection
{
    enum class Fault
    {
        None,
        Missing,
        Ambiguous
    };

    std::vector<int> cameras;
    Fault fault = Fault::None;
    QString text; ///< of the fault, in the program's language; names the candidates if there are several
};

/// Looks for each name among the IDs, then the users' own names, then the model names.
Selection selectCameras(const std::vector<SxCameraInfo>& known, const QStringList& names);

#endif
