// SPDX-License-Identifier: GPL-3.0-or-later
// Why a frame was lost.
#ifndef KESTROVA_ARAVIS_LOSSJUDGEMENT_H
#define KESTROVA_ARAVIS_LOSSJUDGEMENT_H

#include <optional>

#include "ArrivalBook.h"
#include "DropSamples.h"
#include "LostFrames.h"

namespace aravis {

/// The cause, from how its packets arrived and what the host dropped at that time. None if that is not known yet,
/// which `atOnce` takes for never.
std::optional<LossCause> lossCause(const ArrivalBook::Passage& passage, const DropSamples& drops, bool atOnce);

} // namespace aravis

#endif
