// SPDX-License-Identifier: GPL-3.0-or-later
// How much came from a camera.
#ifndef KESTROVA_DELIVERIES_H
#define KESTROVA_DELIVERIES_H

#include <QtCore/qglobal.h>

/// What a camera has handed out since it was opened, to whomever.
struct Deliveries
{
    quint64 images = 0;
    quint64 bytes = 0;
    quint64 missing = 0; ///< images whose numbers were left out, from an acquisition's first on
};

#endif
