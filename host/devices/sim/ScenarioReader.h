// SPDX-License-Identifier: GPL-3.0-or-later
// Reads scenarios from JSON, strictly: what it does not know or cannot use is an error. Format: docs/scenarios.md.
#ifndef KESTROVA_SIM_SCENARIOREADER_H
#define KESTROVA_SIM_SCENARIOREADER_H

#include "Scenario.h"

namespace sim {

/// The cameras in the file's order, none on failure. `error` then tells place and reason, without the file's name:
/// "cameras[1].sensor.width: must be a whole number from 8 to 65535".
std::vector<CameraScenario> readScenario(const QByteArray& json, QString& error);

} // namespace sim

#endif
