// SPDX-License-Identifier: GPL-3.0-or-later
// The counter samples of a record, oldest first, with their times side by side.
#ifndef KESTROVA_SAMPLELIST_H
#define KESTROVA_SAMPLELIST_H

#include "SampleRecords.h"
#include "TimeIndex.h"

/// Owns the samples. Has no lock: its owner calls it under the one that guards it. As many times as samples, in their
/// order.
class SampleList
{
public:
    using const_iterator = SubscriptIterator<SampleList>;

    bool empty() const { return samples.empty(); }
    quint64 size() const { return samples.size(); }
    const std::unique_ptr<CounterSample>& operator[](quint64 index) const { return samples[index]; }
    const std::unique_ptr<CounterSample>& front() const { return samples[0]; }
    const std::unique_ptr<CounterSample>& back() const { return samples[size() - 1]; }
    const_iterator begin() const { return {*this, 0}; }
    const_iterator end() const { return {*this, size()}; }
    const TimeIndex& times() const { return sampleTimes; }

    /// Afterwards push_back() needs no memory; takeFront() never does.
    void makeRoom(quint64 /*leaving*/)
    {
        sampleTimes.makeRoom();
        samples.makeRoom();
    }
    void push_back(std::unique_ptr<CounterSample> sample)
    {
        sampleTimes.push_back(sample->timestampUs);
        samples.push_back(std::move(sample));
    }
    /// Unlinks the oldest sample; the caller frees it when it has left the lock.
    std::unique_ptr<CounterSample> takeFront()
    {
        sampleTimes.pop_front();
        return samples.takeFront();
    }
    void pop_front() { takeFront(); }
    void clear() { *this = SampleList(); }

private:
    Tape<std::unique_ptr<CounterSample>> samples;
    TimeIndex sampleTimes;
};

#endif
