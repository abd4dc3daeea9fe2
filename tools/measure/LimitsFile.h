// SPDX-License-Identifier: GPL-3.0-or-later
// The limits of a rig from a file. Its format is described in docs/kestrova-measure.md.
#ifndef KESTROVA_MEASURE_LIMITSFILE_H
#define KESTROVA_MEASURE_LIMITSFILE_H

#include "Limits.h"

/// Reads the file into `all` and `cameras` of the limits, strictly: what it does not know or cannot use is an error.
/// On false `error` tells file, place and reason: "rig.json: cameras[1].max-gap: must be a time such as ...".
bool readLimitsFile(const QString& fileName, ExMeasMode mode, RigLimits& limits, QString& error);

#endif
