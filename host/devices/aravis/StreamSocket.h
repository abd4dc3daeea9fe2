// SPDX-License-Identifier: GPL-3.0-or-later
// The socket through which a GigE Vision stream arrives.
#ifndef KESTROVA_ARAVIS_STREAMSOCKET_H
#define KESTROVA_ARAVIS_STREAMSOCKET_H

#include <cstddef>
#include <functional>
#include <optional>
#include <string>

#include <arv.h>

#include "DropSamples.h"

namespace aravis {

/// `host` is the address of this host that the stream comes to, here and below.
/// Makes room for a frame at least, before the first one comes; logs if the system grants less. How many bytes the
/// socket may hold now; none if that is not known.
std::optional<double> enlargeSocketBuffer(ArvGvStream* stream, const std::string& host, size_t payload);

/// Looks at what the stream and its socket have dropped so far. To be called while the stream lives. Empty if the
/// socket cannot be looked at.
std::function<DropSample()> dropProbe(ArvGvStream* stream, const std::string& host);

} // namespace aravis

#endif
