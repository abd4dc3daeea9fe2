// SPDX-License-Identifier: GPL-3.0-or-later
// What can be asked of a report before it is written.
#ifndef KESTROVA_CSVREPORT_H
#define KESTROVA_CSVREPORT_H

#include <QtCore/qglobal.h>

class CxCameraLineData;

/// Whether the report of that range would have a line. Takes the record's mutex.
bool reportHasLines(const CxCameraLineData& data, qint64 fromUs, qint64 toUs);

#endif
