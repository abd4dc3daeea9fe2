// SPDX-License-Identifier: GPL-3.0-or-later
// What a run says as JSON objects. The fields are described in docs/kestrova-measure.md.
#ifndef KESTROVA_MEASURE_JSONOBJECTS_H
#define KESTROVA_MEASURE_JSONOBJECTS_H

#include <QtCore/QJsonObject>

#include "Output.h"

QJsonObject cameraObject(const SxCameraInfo& camera);
/// What is not known, or not finite, is null.
void addFigures(QJsonObject& object, const Figures& figures);
QJsonObject linkObject(const LinkTotals& link);
QJsonObject summaryObject(const Summary& summary);

#endif
