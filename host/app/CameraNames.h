// SPDX-License-Identifier: GPL-3.0-or-later
// How the programs write a camera's name.
#ifndef KESTROVA_CAMERANAMES_H
#define KESTROVA_CAMERANAMES_H

#include <vnCore/CxCameraParameters.h>

#include "PlainText.h"

/// "MODEL (own name)", or "MODEL (ID)" for a camera without one; one line.
inline QString cameraDisplayName(const SxCameraInfo& info)
{
    return singleLine(QStringLiteral("%1 (%2)").arg(info.name, info.customId.isEmpty() ? info.id : info.customId));
}

#endif
