// SPDX-License-Identifier: GPL-3.0-or-later
// Times of the records of a list, side by side, so that looking for one does not chase a pointer per record. Knows
// whether they increase, which makes looking logarithmic; otherwise it walks.
#ifndef KESTROVA_TIMEINDEX_H
#define KESTROVA_TIMEINDEX_H

#include "Tape.h"

/// Has no lock: it is used under the one of its list.
class TimeIndex
{
public:
    quint64 size() const { return times.size(); }
    qint64 operator[](quint64 index) const { return times[index]; }
    /// No time is earlier than the one before it.
    bool isOrdered() const { return stepsBack == 0; }

    void makeRoom() { times.makeRoom(); }
    void push_back(qint64 timeUs);
    void pop_front();
    /// The first index from `from` on with at least this time; size() if there is none. An ordered index costs the
    /// logarithm of the distance.
    quint64 find(quint64 from, qint64 timeUs) const;

private:
    Tape<qint64> times;
    quint64 stepsBack = 0; ///< neighbours of which the later record has the earlier time
};

#endif
