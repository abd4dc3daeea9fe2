// SPDX-License-Identifier: GPL-3.0-or-later
// The frames of one acquisition.
#ifndef KESTROVA_ARAVIS_IMAGESTREAM_H
#define KESTROVA_ARAVIS_IMAGESTREAM_H

#include <memory>
#include <optional>

#include "CameraDevice.h"
#include "FrameTally.h"
#include "GlibOwners.h"

namespace aravis {

/// Owns the library's stream and its buffers. Made and destroyed by the camera's worker; the rest may be called from
/// any thread, one at a time. Buffers that somebody still looks at go back to the stream, or when that is gone to the
/// system.
class ImageStream
{
public:
    /// Allocates the buffers and touches them, lest the system does it while frames arrive. May throw std::bad_alloc.
    ImageStream(Owned<ArvStream> stream, size_t payload);
    ~ImageStream();
    ImageStream(const ImageStream&) = delete;
    ImageStream& operator=(const ImageStream&) = delete;

    /// The next whole frame that has arrived, if there is one. Never waits.
    std::optional<DeviceImage> take();
    const FrameTally& tally() const { return frames; }

private:
    class BufferReturn;

    std::optional<quint32> numberOf(ArvBuffer* buffer);
    DeviceImage imageOf(Owned<ArvBuffer> buffer, quint32 number);

    ArvStream* stream; ///< `buffers` owns it
    std::shared_ptr<BufferReturn> buffers;
    FrameTally frames;
    std::optional<quint64> firstStampNs;
};

} // namespace aravis

#endif
