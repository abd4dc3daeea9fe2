// SPDX-License-Identifier: GPL-3.0-or-later
// Figures of groups of 16, 256, 4096... records of a list that grows at its end and shrinks at its front, so that those
// of any range are had from few of them.
#ifndef KESTROVA_FIGURETREE_H
#define KESTROVA_FIGURETREE_H

#include <algorithm>
#include <vector>

#include "Tape.h"

/// `Figures` starts with those of no record and has add(). Records have numbers in the order of their arrival; node n of
/// level k stands for the records from n * 16^(k+1) on. What one record gives stays with its list: every operation that
/// needs it is handed `leaf`, which returns it for a number. Has no lock: it is used under the one of its list.
template<typename Figures>
class FigureTree
{
public:
    /// The next grow() needs no memory.
    void makeRoom(quint64 endNumber)
    {
        quint64 complete = endNumber + 1;
        for (std::size_t level = 0; complete % fanOut == 0; ++level) {
            complete /= fanOut;
            if (level == levels.size())
                levels.emplace_back();
            levels[level].makeRoom();
        }
    }

    /// The record before that number has come.
    template<typename Leaf>
    void grow(quint64 endNumber, Leaf leaf)
    {
        quint64 complete = endNumber;
        for (std::size_t level = 0; complete % fanOut == 0; ++level) {
            complete /= fanOut;
            setNode(level, complete - 1, leaf);
        }
    }

    /// The records before that number, one more than last time, have gone.
    void shrink(quint64 number)
    {
        firstNumber = number;
        for (std::size_t level = 0; number % fanOut == 0; ++level) {
            number /= fanOut;
            levels[level].takeFront();
        }
    }

    /// Of the records begin..end (exclusive).
    template<typename Leaf>
    Figures sum(quint64 begin, quint64 end, Leaf leaf) const
    {
        Figures sum;
        // From the ends to where the next level has whole nodes, then on there.
        for (std::size_t level = 0; begin < end; ++level) {
            while (begin < end && begin % fanOut != 0)
                sum.add(node(level, begin++, leaf));
            while (begin < end && end % fanOut != 0)
                sum.add(node(level, --end, leaf));
            begin /= fanOut;
            end /= fanOut;
        }
        return sum;
    }

    /// The first record of begin..end (exclusive) with has(), `end` if there is none. has() of a sum is true if it is for
    /// one of its records.
    template<typename Leaf, typename Has>
    quint64 first(quint64 begin, quint64 end, Leaf leaf, Has has) const
    {
        while (begin < end) {
            std::size_t level = 0;
            quint64 records = 1; // of a node of that level
            for (; begin % (records * fanOut) == 0 && records * fanOut <= end - begin; ++level)
                records *= fanOut;
            for (; level > 0 && has(node(level, begin / records, leaf)); --level)
                records /= fanOut;
            if (level == 0 && has(leaf(begin)))
                return begin;
            begin += records;
        }
        return end;
    }

    /// The same for the last one.
    template<typename Leaf, typename Has>
    quint64 last(quint64 begin, quint64 end, Leaf leaf, Has has) const
    {
        quint64 rest = end; // what is behind it has none
        while (begin < rest) {
            std::size_t level = 0;
            quint64 records = 1;
            for (; rest % (records * fanOut) == 0 && records * fanOut <= rest - begin; ++level)
                records *= fanOut;
            for (; level > 0 && has(node(level, rest / records - 1, leaf)); --level)
                records /= fanOut;
            if (level == 0 && has(leaf(rest - 1)))
                return rest - 1;
            rest -= records;
        }
        return end;
    }

    /// What leaf() returns for begin..end has changed.
    template<typename Leaf>
    void renew(quint64 begin, quint64 end, Leaf leaf)
    {
        for (std::size_t level = 0; level < levels.size(); ++level) {
            const Nodes& nodes = levels[level];
            begin = std::max(begin / fanOut, nodes.dropped());
            end = (end + fanOut - 1) / fanOut;
            for (quint64 number = begin; number < std::min(end, nodes.dropped() + nodes.size()); ++number)
                setNode(level, number, leaf);
        }
    }

private:
    static constexpr quint64 fanOut = 16;
    using Nodes = Tape<Figures, 64>; // in small chunks, since high levels have few

    /// Level 0 are the records themselves, level k the nodes of levels[k - 1].
    template<typename Leaf>
    Figures node(std::size_t level, quint64 number, Leaf leaf) const
    {
        if (level == 0)
            return leaf(number);
        const Nodes& nodes = levels[level - 1];
        return nodes[number - nodes.dropped()];
    }

    /// A node whose first records are gone is incomplete, but never asked for.
    template<typename Leaf>
    void setNode(std::size_t level, quint64 number, Leaf leaf)
    {
        if (level == levels.size())
            levels.emplace_back();
        Nodes& nodes = levels[level];
        const quint64 first = level == 0 ? firstNumber : levels[level - 1].dropped();
        Figures figures;
        for (quint64 child = std::max(number * fanOut, first); child < (number + 1) * fanOut; ++child)
            figures.add(node(level, child, leaf));
        if (number == nodes.dropped() + nodes.size())
            nodes.push_back(figures);
        else
            nodes[number - nodes.dropped()] = figures;
    }

    quint64 firstNumber = 0; ///< of the records that are there
    std::vector<Nodes> levels;
};

#endif
