// SPDX-License-Identifier: GPL-3.0-or-later
// The one place that knows which families of cameras there are.
#ifndef KESTROVA_DEVICEFAMILIES_H
#define KESTROVA_DEVICEFAMILIES_H

#include <memory>
#include <vector>

#include <QtCore/QString>

#include "CameraDevice.h"

/// Creates the devices of all families. `file` describes the simulated ones (a scenario, see docs/scenarios.md);
/// empty takes the built-in default. On failure returns an empty list and a reason that names file, key and fault.
std::vector<std::shared_ptr<CameraDevice>> createDevices(const QString& file, QString* error);

#endif
