// SPDX-License-Identifier: GPL-3.0-or-later
// How a camera's run kept to its limits, and since when it did not.
#ifndef KESTROVA_MEASURE_VERDICT_H
#define KESTROVA_MEASURE_VERDICT_H

#include <QtCore/QStringList>

#include "Figures.h"
#include "Limits.h"

/// One limit over the run so far. A figure that is not known breaks its limit: a check that could not be made must
/// not pass.
struct LimitVerdict
{
    Limit limit;
    std::optional<double> measured{}; ///< in the figure's unit; nothing: not known
    int decimals = 0;                 ///< with which the figure is shown
    bool kept = false;
    /// Seconds after the run's start: the first look since which the figure is beyond the limit. An average may come
    /// back, and then breaks its limit anew or not at all. Nothing while it is kept or not known.
    std::optional<double> brokenAtS{};
};

/// The measured value as the figure is shown, with more digits where it takes them to see that the limit was missed;
/// "n/a" if it is not known.
QString measuredText(const LimitVerdict& verdict);

/// Of one camera.
struct Verdict
{
    Verdict() = default;
    explicit Verdict(const std::vector<Limit>& wanted);

    /// Judges the figures of the whole run up to now; the last call is the verdict.
    void look(const Figures& runSoFar, double elapsedS);
    /// No limit is broken; also without any.
    bool passed() const;
    /// Whether there is a limit of this figure.
    bool judges(const char* figure) const;
    /// Whether there is a limit that a camera which falls silent breaks.
    bool seesSilence() const;
    /// One text for each limit that is broken: "--min-average 350: 212.5".
    QStringList brokenLimits() const;

    std::vector<LimitVerdict> limits;
};

#endif
