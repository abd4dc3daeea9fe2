// SPDX-License-Identifier: GPL-3.0-or-later
// What the codes do not say by themselves.
#include "PixelFormats.h"

#include <vnCore/vnTypes.h>

namespace aravis {

namespace {

constexpr quint32 mono8 = 0x01080001;
constexpr quint32 mono16 = 0x01100007;

} // namespace

int formatValue(quint32 code)
{
    switch (code) {
    case mono8:
        return VN_FRM_MONO8;
    case mono16:
        return VN_FRM_MONO16;
    default:
        return static_cast<int>(code);
    }
}

quint32 bitDepth(quint32 code)
{
    switch (code) {  // those of fewer significant bits than they take
    case 0x01100003: // Mono10
    case 0x0110000C: // Bayer of 10 bits: GR, RG, GB, BG
    case 0x0110000D:
    case 0x0110000E:
    case 0x0110000F:
        return 10;
    case 0x01100005: // Mono12
    case 0x01100010: // Bayer of 12 bits
    case 0x01100011:
    case 0x01100012:
    case 0x01100013:
        return 12;
    case 0x01100025: // Mono14
        return 14;
    case 0x02180014: // RGB8, BGR8: of each colour
    case 0x02180015:
        return 8;
    default:
        return code >> 16 & 0xff;
    }
}

} // namespace aravis
