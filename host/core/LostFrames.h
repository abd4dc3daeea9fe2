// SPDX-License-Identifier: GPL-3.0-or-later
// Where frames of a camera were lost.
#ifndef KESTROVA_LOSTFRAMES_H
#define KESTROVA_LOSTFRAMES_H

#include <QtCore/qglobal.h>

/// Frames that a camera has numbered and nobody received whole. Each is counted once, under the first cause in this
/// order that holds.
struct LostFrames
{
    quint64 unknown = 0;         ///< nobody saw whether its packets arrived
    quint64 onTheWay = 0;        ///< a packet never reached this machine: camera, cable, switch
    quint64 socket = 0;          ///< all did, and the socket's buffer was full
    quint64 noBuffer = 0;        ///< all did, and no buffer was free: who reads is too slow
    quint64 late = 0;            ///< all did, but too late
    quint64 notAttributable = 0; ///< all did, and nothing tells more

    quint64 beforeHost() const { return unknown + onTheWay; }
    quint64 onHost() const { return socket + noBuffer + late + notAttributable; }
    quint64 total() const { return beforeHost() + onHost(); }

    LostFrames& operator+=(const LostFrames& more);
    /// What came after `earlier`, a count of the same frames.
    LostFrames since(const LostFrames& earlier) const;
};

using LossCause = quint64 LostFrames::*;

constexpr LossCause lossCauses[] = {&LostFrames::unknown,  &LostFrames::onTheWay, &LostFrames::socket,
                                    &LostFrames::noBuffer, &LostFrames::late,     &LostFrames::notAttributable};

inline LostFrames& LostFrames::operator+=(const LostFrames& more)
{
    for (const LossCause cause : lossCauses)
        this->*cause += more.*cause;
    return *this;
}

inline LostFrames LostFrames::since(const LostFrames& earlier) const
{
    LostFrames difference;
    for (const LossCause cause : lossCauses)
        difference.*cause = this->*cause - earlier.*cause;
    return difference;
}

#endif
