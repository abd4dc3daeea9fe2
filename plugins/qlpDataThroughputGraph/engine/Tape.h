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

template<typename T>
class Tape
{
public:
    Tape() = default;
    Tape(Tape&&) noexcept = default;
    Tape& operator=(Tape&&) noexcept = default;

    bool empty() const { return m_size == 0; }
    quint64 size() const { return m_size; }
    /// How many items have left at the front since the tape was made.
    quint64 dropped() const { return m_dropped; }

    T& operator[](quint64 index) { return at(m_dropped % chunkItems + index); }
    const T& operator[](quint64 index) const { return const_cast<Tape*>(this)->at(m_dropped % chunkItems + index); }

    /// The next push_back() needs no memory.
    void makeRoom()
    {
        if (m_goneChunks + endPlace() / chunkItems == m_chunks.size())
            m_chunks.push_back(std::make_unique<T[]>(chunkItems));
    }

    void push_back(T item)
    {
        makeRoom();
        at(endPlace()) = std::move(item);
        ++m_size;
    }

    /// Moves the oldest item out.
    T takeFront()
    {
        T item = std::exchange((*this)[0], T());
        ++m_dropped;
        --m_size;
        if (m_dropped % chunkItems == 0)
            dropChunk();
        return item;
    }

private:
    static constexpr quint64 chunkItems = 512;

    quint64 endPlace() const { return m_dropped % chunkItems + m_size; }
    T& at(quint64 place) { return m_chunks[m_goneChunks + place / chunkItems][place % chunkItems]; }

    void dropChunk()
    {
        m_chunks[m_goneChunks++].reset();
        if (m_goneChunks * 2 > m_chunks.size()) {
            const auto first = m_chunks.begin();
            m_chunks.erase(first, first + static_cast<std::ptrdiff_t>(m_goneChunks));
            m_goneChunks = 0;
        }
    }

    std::vector<std::unique_ptr<T[]>> m_chunks; ///< a deque would take memory even to be moved
    std::size_t m_goneChunks = 0;               ///< at the front of these
    quint64 m_size = 0;
    quint64 m_dropped = 0;
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

    SubscriptIterator(const List& list, quint64 index) : m_list(&list), m_index(index) {}
    reference operator*() const { return (*m_list)[m_index]; }
    SubscriptIterator& operator++()
    {
        ++m_index;
        return *this;
    }
    SubscriptIterator operator++(int)
    {
        const SubscriptIterator former = *this;
        ++m_index;
        return former;
    }
    bool operator==(const SubscriptIterator& other) const { return m_index == other.m_index; }
    bool operator!=(const SubscriptIterator& other) const { return m_index != other.m_index; }

private:
    const List* m_list;
    quint64 m_index;
};

#endif
