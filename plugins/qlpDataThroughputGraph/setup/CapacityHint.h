// SPDX-License-Identifier: GPL-3.0-or-later
// What a capacity means: the memory that it takes and how long it lasts, for the setup dialog's tool tip.
#ifndef KESTROVA_CAPACITYHINT_H
#define KESTROVA_CAPACITYHINT_H

#include <optional>

#include <QtCore/QList>
#include <QtCore/QString>

class CxCameraLineData;

// Most memory that is kept, list and allocator included, in bytes. Measured: the setup test fails when these are no
// longer true.
constexpr double bytesPerBlock = 8.0;
constexpr double bytesPerFrame = 144.0; ///< throughput mode, beside its blocks
constexpr double bytesPerSample = 68.0; ///< a frame of the standard mode
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
/// A tool tip (rich text) with both for all cameras. None of them measures.
QString capacityHint(const CapacityPlan& plan, const QList<CxCameraLineData*>& cameras);

#endif
