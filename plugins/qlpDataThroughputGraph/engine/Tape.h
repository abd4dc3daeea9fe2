// SPDX-License-Identifier: GPL-3.0-or-later
// A sequence that grows at its end and shrinks at its front, both at the same price whatever it holds: items lie in
// chunks that never move. Chosen over std::deque for its longer runs of contiguous items and cheaper subscripts.
#ifndef KESTROVA_TAPE_H
#define KESTROVA_TAPE_H

#include <cstddef>
#include <iterator>
#include <memory>
#include <utility>
#include <vector>

#include <QtCore/QtGlobal>

/// Owns the items. Has no lock: its owner calls it under its own.
template<typename T, quint64 chunkItems = 512>
class Tape
{
public:
    Tape() = default;
    Tape(Tape&&) noexcept = default;
    Tape& operator=(Tape&&) noexcept = default;

    bool empty() const { return itemCount == 0; }
    quint64 size() const { return itemCount; }
    /// How many items have left at the front since the tape was made.
    quint64 dropped() const { return droppedItems; }

    T& operator[](quint64 index) { return at(droppedItems % chunkItems + index); }
    const T& operator[](quint64 index) const
    {
        return const_cast<Tape*>(this)->at(droppedItems % chunkItems + index);
    }

    /// The next push_back() needs no memory.
    void makeRoom()
    {
        if (goneChunks + endPlace() / chunkItems == chunks.size())
            chunks.push_back(std::make_unique<T[]>(chunkItems));
    }

    void push_back(T item)
    {
        makeRoom();
        at(endPlace()) = std::move(item);
        ++itemCount;
    }

    /// Moves the oldest item out.
    T takeFront()
    {
        T item = std::exchange((*this)[0], T());
        ++droppedItems;
        --itemCount;
        if (droppedItems % chunkItems == 0)
            dropChunk();
        return item;
    }

private:
    quint64 endPlace() const { return droppedItems % chunkItems + itemCount; }
    T& at(quint64 place) { return chunks[goneChunks + place / chunkItems][place % chunkItems]; }

    void dropChunk()
    {
        chunks[goneChunks++].reset();
        if (goneChunks * 2 > chunks.size()) {
            const auto first = chunks.begin();
            chunks.erase(first, first + static_cast<std::ptrdiff_t>(goneChunks));
            goneChunks = 0;
        }
    }

    std::vector<std::unique_ptr<T[]>> chunks; ///< a deque would take memory even to be moved
    std::size_t goneChunks = 0;               ///< at the front of these
    quint64 itemCount = 0;
    quint64 droppedItems = 0;
};

/// Walks a list by its subscripts.
template<typename List>
class SubscriptIterator
{
public:
    using iterator_category = std::forward_iterator_tag;
    using reference = decltype(std::declval<const List&>()[0]);
    using value_type = std::remove_reference_t<reference>;
    using pointer = value_type*;
    using difference_type = std::ptrdiff_t;

    SubscriptIterator(const List& list, quint64 index) : sequence(&list), position(index) {}
    reference operator*() const { return (*sequence)[position]; }
    SubscriptIterator& operator++()
    {
        ++position;
        return *this;
    }
    SubscriptIterator operator++(int)
    {
        const SubscriptIterator former = *this;
        ++position;
        return former;
    }
    bool operator==(const SubscriptIterator& other) const { return position == other.position; }
    bool operator!=(const SubscriptIterator& other) const { return position != other.position; }

private:
    const List* sequence;
    quint64 position;
};

#endif
