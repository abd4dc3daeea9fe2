// SPDX-License-Identifier: GPL-3.0-or-later
// What a run must keep to.
#ifndef KESTROVA_MEASURE_LIMITS_H
#define KESTROVA_MEASURE_LIMITS_H

#include <vector>

#include <QtCore/QStringList>

#include "Figures.h"

/// A bound of one figure of the run of a camera.
struct Limit
{
    QString option; ///< as the user gave it, "--min-average"
    QString figure; ///< key of the figure that it judges
    bool isMinimum;
    double value; ///< in the figure's unit; itself within the limit
};

/// One text for each limit that is broken. A figure that is not known breaks its limit: a check that could not be
/// made must not pass.
QStringList brokenLimits(const std::vector<Limit>& limits, const Figures& figures);

#endif
