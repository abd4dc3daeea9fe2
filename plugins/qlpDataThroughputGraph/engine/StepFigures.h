// SPDX-License-Identifier: GPL-3.0-or-later
// What lies between records of a list that follow each other, one by one and of groups.
#ifndef KESTROVA_STEPFIGURES_H
#define KESTROVA_STEPFIGURES_H

#include <algorithm>

#include "FigureTree.h"

/// Of each record: what lies between it and the one before it.
struct StepFigures
{
    quint64 missing = 0;     ///< frames that the frame number leaves out
    qint64 longestGapUs = 0; ///< between the records' times
    quint64 overflows = 0;   ///< of the camera's buffer; of a frame of the throughput mode its own

    void add(const StepFigures& other)
    {
        missing += other.missing;
        longestGapUs = std::max(longestGapUs, other.longestGapUs);
        overflows += other.overflows;
    }
};

/// Frames between two frame numbers of a counter of 32 bits. A step backwards (half the range or more) or on the
/// spot is a counter that started again, not two thousand million lost frames.
inline quint32 framesBetween(quint32 earlier, quint32 later)
{
    const quint32 step = later - earlier;
    return step == 0 || step >= 0x80000000U ? 0 : step - 1;
}

#endif
