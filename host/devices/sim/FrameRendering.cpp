// SPDX-License-Identifier: GPL-3.0-or-later
// Filling the memory of a frame: counter words or a moving ramp.
#include "FrameRendering.h"

#include <algorithm>
#include <cstring>
#include <mutex>
#include <vector>

namespace sim {

/// Lives as long as the pool or the last frame that has memory from it, whichever is longer. Any thread gives back.
struct FramePool::Shelf
{
    struct Memory
    {
        quint64 words = 0;
        std::unique_ptr<quint64[]> data;
    };
    static constexpr size_t capacity = 4; ///< more than a consumer and a view hold at a time

    Shelf() { unused.reserve(capacity); } // giving back must need no memory
    /// With the lock, so that race checkers see the order of what other threads gave back and its end.
    ~Shelf()
    {
        const std::lock_guard<std::mutex> lock(mutex);
        unused.clear();
    }

    /// Guards `unused`. A leaf: nothing is called while it is held.
    std::mutex mutex;
    std::vector<Memory> unused;
};

FramePool::FramePool() : shelf(std::make_shared<Shelf>()) {}

std::shared_ptr<quint64> FramePool::take(quint64 bytes)
{
    Shelf::Memory memory;
    {
        const std::lock_guard<std::mutex> lock(shelf->mutex);
        if (!shelf->unused.empty()) {
            memory = std::move(shelf->unused.back());
            shelf->unused.pop_back();
        }
    }
    const quint64 words = (bytes + 7) / 8;
    if (memory.words < words || memory.words > words * 2)
        memory = {words, std::unique_ptr<quint64[]>(new quint64[words])}; // not cleared: all of it is written
    quint64* data = memory.data.get();
    auto giveBack = [owner = shelf, kept = std::make_shared<Shelf::Memory>(std::move(memory))](quint64*) {
        const std::lock_guard<std::mutex> lock(owner->mutex);
        if (owner->unused.size() < Shelf::capacity)
            owner->unused.push_back(std::move(*kept));
    };
    return {data, std::move(giveBack)};
}

namespace {

/// One packet. A word is first +- the whole part of its number x step, which is summed up and not multiplied.
template<int direction>
void renderPacket(quint64* words, quint64 count, quint64 first, quint64 step, quint64 mask)
{
    quint64 offset = 0;
    for (quint64 i = 0; i < count; ++i, offset += step) {
        const quint64 ticks = offset >> 32;
        words[i] = (direction > 0 ? first + ticks : direction < 0 ? first - ticks : first) & mask;
    }
}

/// A grey ramp that runs diagonally and moves by a line a frame: each line is the one before, a pixel further.
template<typename Pixel>
void renderRamp(const Frame& frame, Pixel* pixels, int shift)
{
    constexpr quint32 period = 256;
    std::vector<Pixel> ramp(frame.width + period);
    for (size_t i = 0; i < ramp.size(); ++i)
        ramp[i] = static_cast<Pixel>((i % period) << shift);
    for (quint32 y = 0; y < frame.height; ++y, pixels += frame.width)
        std::memcpy(pixels, ramp.data() + (y + frame.index) % period, frame.width * sizeof(Pixel));
}

} // namespace

void renderCounter(const WordTimes& times, quint64* words)
{
    const auto packet = times.direction > 0   ? renderPacket<1>
                        : times.direction < 0 ? renderPacket<-1>
                                              : renderPacket<0>;
    quint64 done = 0;
    for (const quint64 tick : times.packetTicks) {
        const quint64 count = std::min(times.wordsPerPacket, times.words - done);
        packet(words + done, count, times.show(tick), times.step, times.mask);
        done += count;
    }
}

void render(const Frame& frame, quint64* words)
{
    if (frame.counterPattern)
        renderCounter(*frame.times, words);
    else if (frame.imageBytes == quint64{frame.width} * frame.height * 2)
        renderRamp(frame, reinterpret_cast<quint16*>(words), std::max(0, frame.bitDepth - 8));
    else if (frame.imageBytes == quint64{frame.width} * frame.height)
        renderRamp(frame, reinterpret_cast<quint8*>(words), 0);
    else
        std::fill_n(words, (frame.imageBytes + 7) / 8, frame.index * 0x0101010101010101ULL); // packed pixels: grey
}

} // namespace sim
