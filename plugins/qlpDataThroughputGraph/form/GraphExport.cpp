// SPDX-License-Identifier: GPL-3.0-or-later
// Exports of the graph and of a camera's data: the buttons are there, what they do is not yet.
#include "DataGraphForm.h"

void CxDataGraphForm::onBtnExport(int) {}

void CxDataGraphForm::onBtnCamExportData() {}
