// SPDX-License-Identifier: GPL-3.0-or-later
// What goes wrong is told on standard error.
#ifndef KESTROVA_MEASURE_COMPLAIN_H
#define KESTROVA_MEASURE_COMPLAIN_H

#include <cstdio>

#include <QtCore/QString>

inline void complain(const QString& text)
{
    std::fprintf(stderr, "kestrova-measure: %s\n", text.toLocal8Bit().constData());
}

#endif
