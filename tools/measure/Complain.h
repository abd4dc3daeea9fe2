// SPDX-License-Identifier: GPL-3.0-or-later
// What goes wrong is told on standard error.
#ifndef KESTROVA_MEASURE_COMPLAIN_H
#define KESTROVA_MEASURE_COMPLAIN_H

#include <cstdio>

#include <QtCore/QString>

#include "LineWriter.h"
#include "PlainText.h"

inline void complain(const QString& text)
{
    std::fprintf(stderr, "kestrova-measure: %s\n", text.toLocal8Bit().constData());
}

/// Whether lines were lost, which is told then.
inline bool tellLostLines(const LineWriter& lines)
{
    if (lines.lostLines() > 0)
        complain(QStringLiteral("%1 lost, %2").arg(counted(lines.lostLines(), "line"), lines.error()));
    return lines.lostLines() > 0;
}

#endif
