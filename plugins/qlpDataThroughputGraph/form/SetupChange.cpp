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
    if (CxDataGraphSetupDlg(this, parentWidget()).exec() != QDialog::Accepted)
        return;

    if (IsAnyMeasuring()) { // started by a program while the dialog was open: its samples must stay
        samplePeriod = formerPeriod;
        measMode = tableMode;
    }
    if (samplePeriod != formerPeriod) {
        for (CxCameraLineData* record : qAsConst(lineDataMap))
            record->clearData();
    }
    if (measMode != tableMode) { // which may have changed, too, while the dialog was open
        for (CxCameraLineData* record : qAsConst(lineDataMap)) {
            record->clearData();
            record->measMode = measMode;
        }
        updateCameraList();
    }
    updateColumnNames();
}
