// SPDX-License-Identifier: GPL-3.0-or-later
// The camera's pixel formats as values of "imgdataformat". Codes are those of the industry's naming convention.
#ifndef KESTROVA_ARAVIS_PIXELFORMATS_H
#define KESTROVA_ARAVIS_PIXELFORMATS_H

#include <QtCore/QtGlobal>

namespace aravis {

/// The value of a pixel format: the host's own number where it has one, otherwise the code itself.
int formatValue(quint32 code);

/// Significant bits of a pixel.
quint32 bitDepth(quint32 code);

} // namespace aravis

#endif
