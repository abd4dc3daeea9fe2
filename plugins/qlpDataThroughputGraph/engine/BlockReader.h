// SPDX-License-Identifier: GPL-3.0-or-later
// Taking the time stamps out of the transport data of a frame.
#ifndef KESTROVA_BLOCKREADER_H
#define KESTROVA_BLOCKREADER_H

#include <cstring>

#include <QtCore/QtGlobal>

constexpr quint32 wordBytes = sizeof(quint64);

/// Copies the first word of every block. The words lie pages apart, so each is fetched ahead of its turn.
inline void copyBlockTicks(const void* data, quint32 blockWords, quint64 count, quint64* ticks)
{
    constexpr quint64 ahead = 24;
    const auto* block = static_cast<const char*>(data);
    const quint64 stride = static_cast<quint64>(blockWords) * wordBytes;
    quint64 i = 0;
    for (; i + ahead < count; ++i, block += stride) {
        __builtin_prefetch(block + ahead * stride);
        std::memcpy(ticks + i, block, wordBytes);
    }
    for (; i < count; ++i, block += stride)
        std::memcpy(ticks + i, block, wordBytes);
}

#endif
