// SPDX-License-Identifier: GPL-3.0-or-later
// The setup dialog and what an accepted change means for records and table.
#include "DataGraphForm.h"

#include <qcustomplot.h>

#include "../engine/CameraLineData.h"
#include "../setup/DataGraphSetupDlg.h"

void CxDataGraphForm::on_btnSetup_clicked()
{
    if (postponedEvents.isHeld())
        return;
    const int formerPeriod = samplePeriod;
    const int formerMode = measMode;
    if (CxDataGraphSetupDlg(this, parentWidget()).exec() != QDialog::Accepted)
        return;

    if (IsAnyMeasuring()) { // started by a program while the dialog was open: its samples must stay
        samplePeriod = formerPeriod;
        measMode = formerMode;
    }
    if (samplePeriod != formerPeriod) {
        for (CxCameraLineData* record : qAsConst(lineDataMap))
            record->clearData();
    }
    if (measMode != formerMode) {
        for (CxCameraLineData* record : qAsConst(lineDataMap)) {
            record->clearData();
            record->measMode = measMode;
        }
        updateCameraList();
    }
    updateColumnNames();
}
