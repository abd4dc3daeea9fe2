// SPDX-License-Identifier: GPL-3.0-or-later
// What the cameras of a link deliver together, and all cameras of a run.
#ifndef KESTROVA_MEASURE_LINKTOTALS_H
#define KESTROVA_MEASURE_LINKTOTALS_H

#include <optional>
#include <vector>

#include "CameraDevice.h"
#include "MeasuredCamera.h"

/// Of one stretch of a run. The cameras must outlive it.
struct LinkTotals
{
    QString name;                                 ///< empty: all cameras, whatever their links
    std::vector<const MeasuredCamera*> cameras{}; ///< on it
    std::optional<double> rate{};                 ///< MB/s that the link can carry; nothing: not known
    double busiest = 0.0;                         ///< MB/s of the camera that delivered most
    double endS = 0.0;                            ///< after the run's start
    quint64 bytes = 0;
    qint64 elapsedUs = 0; ///< of the camera that was measured longest

    void add(const MeasuredCamera& camera, const Stretch& stretch);
    /// Bytes received by the time that passed, MB/s.
    std::optional<double> delivered() const;
    /// Of the link's rate.
    std::optional<double> sharePercent() const;
};

/// Every camera is added once.
struct LinkTable
{
    std::vector<LinkTotals> links; ///< those with a name, in the order of their first cameras
    LinkTotals all;

    void add(const MeasuredCamera& camera, const Stretch& stretch);
    /// Null for a link without a name.
    const LinkTotals* find(const CameraLink& link) const;
};

#endif
