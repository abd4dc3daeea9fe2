// SPDX-License-Identifier: GPL-3.0-or-later
// The family of simulated cameras, free-running, as a scenario file describes them.
#ifndef KESTROVA_SIM_SIMCAMERAS_H
#define KESTROVA_SIM_SIMCAMERAS_H

#include <memory>
#include <vector>

#include <QtCore/QString>

#include "CameraDevice.h"

namespace sim {

/// The cameras of a scenario file, or of the built-in one if `file` is empty, in the file's order. On failure
/// returns none, and `error` (may be null) tells file, key and reason.
std::vector<std::shared_ptr<CameraDevice>> createCameras(const QString& file, QString* error);

} // namespace sim

#endif
