// SPDX-License-Identifier: GPL-3.0-or-later
// How the viewer writes a camera's name.
#ifndef KESTROVA_CAMERANAMES_H
#define KESTROVA_CAMERANAMES_H

#include <QtCore/QString>

#include <vnCore/CxCameraParameters.h>

/// "MODEL (own name)", or "MODEL (serial number)" for a camera without one.
inline QString cameraDisplayName(const SxCameraInfo& info)
{
    return QStringLiteral("%1 (%2)").arg(info.name, info.customId.isEmpty() ? info.id : info.customId);
}

#endif
