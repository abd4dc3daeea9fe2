// SPDX-License-Identifier: GPL-3.0-or-later
// The verdict in one word.
#ifndef KESTROVA_MEASURE_OUTCOME_H
#define KESTROVA_MEASURE_OUTCOME_H

/// Of a camera or of the run.
enum class Outcome
{
    Pass,
    Fail,
    NoLimits, ///< nothing was asked for, and nothing went wrong
};

#endif
