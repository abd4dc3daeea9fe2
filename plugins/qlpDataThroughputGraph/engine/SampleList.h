// SPDX-License-Identifier: GPL-3.0-or-later
// The counter samples of a record, oldest first, with their times side by side.
#ifndef KESTROVA_SAMPLELIST_H
#define KESTROVA_SAMPLELIST_H

#include "SampleRecords.h"
#include "StepFigures.h"
#include "TimeIndex.h"
#include "TimeMath.h"

/// Owns the samples. Has no lock: its owner calls it under the one that guards it. As many times as samples, in their
/// order.
class SampleList : public StepQueries<SampleList>
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
        stepTree.makeRoom(endNumber());
    }
    void push_back(std::unique_ptr<CounterSample> sample)
    {
        sampleTimes.push_back(sample->timestampUs);
        samples.push_back(std::move(sample));
        stepTree.grow(endNumber(), stepLeaf());
    }
    /// Unlinks the oldest sample; the caller frees it when it has left the lock.
    std::unique_ptr<CounterSample> takeFront()
    {
        sampleTimes.pop_front();
        std::unique_ptr<CounterSample> sample = samples.takeFront();
        stepTree.shrink(firstNumber());
        return sample;
    }
    void pop_front() { takeFront(); }
    void clear() { *this = SampleList(); }

private:
    friend class StepQueries<SampleList>;
    quint64 firstNumber() const { return samples.dropped(); }
    quint64 endNumber() const { return firstNumber() + size(); }
    /// The oldest sample has none.
    StepFigures step(quint64 number) const
    {
        const quint64 index = number - firstNumber();
        return index > 0 ? stepBetween(*samples[index - 1], *samples[index]) : StepFigures();
    }
    static StepFigures stepBetween(const CounterSample& earlier, const CounterSample& later)
    {
        const qint64 overflows = qint64{later.bufferOverflow} - earlier.bufferOverflow;
        return {framesBetween(static_cast<quint32>(earlier.frameNumber), static_cast<quint32>(later.frameNumber)),
                saturatingSub(later.timestampUs, earlier.timestampUs),
                static_cast<quint64>(std::max<qint64>(overflows, 0))};
    }

    Tape<std::unique_ptr<CounterSample>> samples;
    TimeIndex sampleTimes;
};

#endif
