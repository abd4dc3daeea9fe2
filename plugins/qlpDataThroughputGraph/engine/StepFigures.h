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

/// The steps of a list, which derives from this, befriends it and has firstNumber() and step(number), both private. A
/// step belongs to the later one of its two records; that of the oldest record is what the list makes of it.
template<typename List>
class StepQueries
{
public:
    /// Whether nothing has left since the list was made.
    bool isComplete() const { return first() == 0; }
    /// Of records begin..end (exclusive).
    StepFigures steps(quint64 begin, quint64 end) const
    {
        return stepTree.sum(first() + begin, first() + end, stepLeaf());
    }
    /// The first record of begin..end (exclusive) of whose step has() is true, and the last one; `end` if there is
    /// none.
    template<typename Has>
    quint64 firstStep(quint64 begin, quint64 end, Has has) const
    {
        return stepTree.first(first() + begin, first() + end, stepLeaf(), has) - first();
    }
    template<typename Has>
    quint64 lastStep(quint64 begin, quint64 end, Has has) const
    {
        return stepTree.last(first() + begin, first() + end, stepLeaf(), has) - first();
    }

protected:
    struct StepLeaf
    {
        const List& list;
        StepFigures operator()(quint64 number) const { return list.step(number); }
    };
    StepLeaf stepLeaf() const { return {static_cast<const List&>(*this)}; }

    FigureTree<StepFigures> stepTree;

private:
    quint64 first() const { return static_cast<const List&>(*this).firstNumber(); }
};

/// Frames between two frame numbers of a counter of 32 bits. A step backwards (half the range or more) or on the
/// spot is a counter that started again, not two thousand million lost frames.
inline quint32 framesBetween(quint32 earlier, quint32 later)
{
    const quint32 step = later - earlier;
    return step == 0 || step >= 0x80000000U ? 0 : step - 1;
}

#endif
