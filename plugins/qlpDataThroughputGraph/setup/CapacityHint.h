// SPDX-License-Identifier: GPL-3.0-or-later
// What a capacity means: the memory that it takes and how long it lasts, for the setup dialog's tool tip.
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
/// Seconds until the capacity is used up; none while the camera's rate is not known.
std::optional<double> lastingSeconds(const CapacityPlan& plan, const CxCameraLineData& camera);
/// A tool tip (rich text) with both for all cameras.
QString capacityHint(const CapacityPlan& plan, const QList<CxCameraLineData*>& cameras);

#endif
