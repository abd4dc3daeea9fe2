// SPDX-License-Identifier: GPL-3.0-or-later
// How the programs tell where frames were lost.
#ifndef KESTROVA_LOSTFRAMESTEXT_H
#define KESTROVA_LOSTFRAMESTEXT_H

#include <QtCore/QString>

#include "LostFrames.h"

/// Each cause with its count, such as "3 on the way, 1 in the socket"; empty if none was lost.
QString lostFramesText(const LostFrames& lost);

#endif
