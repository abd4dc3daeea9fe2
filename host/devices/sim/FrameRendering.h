// SPDX-License-Identifier: GPL-3.0-or-later
// The data of a frame, made when somebody fetches it, and the memory that holds it.
#ifndef KESTROVA_SIM_FRAMERENDERING_H
#define KESTROVA_SIM_FRAMERENDERING_H

#include <memory>

#include "CameraModel.h"

namespace sim {

/// Frame memory that is used again when nobody holds it any more. Any thread; what it handed out may outlive it.
class FramePool
{
public:
    FramePool();
    /// At least that many bytes, aligned for 64-bit words, of any content.
    std::shared_ptr<quint64> take(quint64 bytes);

private:
    struct Shelf;
    std::shared_ptr<Shelf> shelf;
};

/// Writes the counter pattern: what the counter shows when each word leaves.
void renderCounter(const WordTimes& times, quint64* words);

/// Writes what the host receives of a frame: the counter pattern, or a picture that moves from frame to frame.
void render(const Frame& frame, quint64* words);

} // namespace sim

#endif
