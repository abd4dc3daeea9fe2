// SPDX-License-Identifier: GPL-3.0-or-later
// Numbers of the report as text, byte for byte as QString::number() writes them, but several times faster.
#ifndef KESTROVA_CSVNUMBER_H
#define KESTROVA_CSVNUMBER_H

#include <QtCore/QtGlobal>

/// Room that the text of any number needs.
constexpr int csvNumberRoom = 24;

// Each writes to `out` (with that room) and returns the end of the text.
char* writeCsvNumber(char* out, quint64 value);
char* writeCsvNumber(char* out, qint32 value);
/// As format 'g' with precision 6: exact ties away from zero, "nan" and zero without a sign.
char* writeCsvNumber(char* out, double value);

#endif
