// SPDX-License-Identifier: GPL-3.0-or-later
// What a capacity means: the memory that it takes and the history that is kept, for tool tips.
#ifndef KESTROVA_CAPACITYHINT_H
#define KESTROVA_CAPACITYHINT_H

#include <optional>

#include <QtCore/QList>
#include <QtCore/QString>

class CxCameraLineData;

// Memory that is kept, list and allocator included, in bytes: as the allocator of the C library counts it.
constexpr double bytesPerBlock = 8.0;
constexpr double bytesPerFrame = 143.6; ///< throughput mode, beside its blocks; of large frames a little more
constexpr double bytesPerSample = 65.6; ///< a frame of the standard mode
constexpr int usualBlocksPerFrame = 256;

struct CapacityPlan
{
    int mode; ///< ExMeasMode
    qint64 samples;
    int samplePeriod; ///< bytes
};

/// Bytes per camera.
double memoryOf(const CapacityPlan& plan);
/// How much of a camera's history is kept, in seconds; none while the camera's rate is not known. Takes the record's
/// mutex, as the two below.
std::optional<double> lastingSeconds(const CapacityPlan& plan, const CxCameraLineData& camera);
/// A sentence with that.
QString historyHint(const CapacityPlan& plan, const CxCameraLineData& camera);
/// A tool tip (rich text) with memory and history of the cameras, the shortest histories first.
QString capacityHint(const CapacityPlan& plan, const QList<CxCameraLineData*>& cameras);

#endif
