// SPDX-License-Identifier: GPL-3.0-or-later
// What a run must keep to: the kinds of limits, and those that a user has set.
#ifndef KESTROVA_MEASURE_LIMITS_H
#define KESTROVA_MEASURE_LIMITS_H

#include <vector>

#include <QtCore/QMap>
#include <QtCore/QString>

#include "CameraLineData.h"

/// A bound that can be set, and the figure that it judges.
struct LimitKind
{
    const char* name;      ///< of the option without its dashes, and of the key of a limits file
    const char* valueName; ///< in the help
    const char* help;
    const char* figure; ///< its key
    const char* unit;   ///< of the figure; empty for a count
    bool isMinimum;
    bool isTime;       ///< set as a time, of which the figure has milliseconds
    bool inThroughput; ///< the modes in which there is such a figure
    bool inCounters;

    bool exists(ExMeasMode mode) const { return mode == MeasModeDataThroughput ? inThroughput : inCounters; }
};

/// What the user may write for a limit, for messages.
QString limitExpectation(const LimitKind& kind);
/// "350", or "1s" where it is a time; nothing if it cannot be meant.
std::optional<double> limitFromText(const LimitKind& kind, const QString& text);

/// In the order of the help.
const std::vector<LimitKind>& limitKinds();

/// A bound of one figure of the run of a camera.
struct Limit
{
    const LimitKind* kind; ///< one of limitKinds(), or of a longer life than the limit
    double value;          ///< in the figure's unit; itself within the limit
};

/// "--min-average 350", "--max-gap 2000ms": as it may be typed.
QString limitText(const Limit& limit);

/// The limits of several cameras.
struct RigLimits
{
    std::vector<Limit> given;                  ///< on the command line: for every camera, before those of a file
    std::vector<Limit> all;                    ///< of the file, for cameras that have none of that kind
    QMap<QString, std::vector<Limit>> cameras; ///< of the file, by ID

    /// Each kind at most once, in the order of limitKinds().
    std::vector<Limit> of(const QString& id) const;
};

#endif
