// SPDX-License-Identifier: GPL-3.0-or-later
// The required throughput in the plot.
#include "DataGraphForm.h"

#include <qcustomplot.h>

#include "../engine/CameraLineData.h"
#include "Look.h"
#include "RowCells.h"
#include "ui_DataGraphForm.h"

/// A dashed line across the area, which no axis is scaled for.
void CxDataGraphForm::AddRequiredLine(VNCORE_HANDLE hCam, QCPAxisRect* axisRect)
{
    auto* line = new QCPItemLine(ui->plot);
    setCamera(line, hCam);
    line->setPen(QPen(look::text, 1.0, Qt::DashLine));
    line->setLayer(QStringLiteral("axes")); // above the curves
    line->setClipAxisRect(axisRect);
    for (QCPItemPosition* end : {line->start, line->end}) {
        end->setTypeX(QCPItemPosition::ptAxisRectRatio);
        end->setTypeY(QCPItemPosition::ptPlotCoords);
        end->setAxisRect(axisRect);
        end->setAxes(axisRect->axis(QCPAxis::atBottom), axisRect->axis(QCPAxis::atLeft));
    }
}

/// Before each drawing: the required throughput changes with the camera and with what is typed.
void CxDataGraphForm::PlaceRequiredLines()
{
    for (int i = 0; i < ui->plot->itemCount(); ++i) {
        auto* line = qobject_cast<QCPItemLine*>(ui->plot->item(i));
        const CxCameraLineData* record = line ? lineDataMap.value(cameraOf(line)) : nullptr;
        if (!record)
            continue;
        line->setVisible(record->requiredThroughput > 0);
        line->start->setCoords(0.0, record->requiredThroughput);
        line->end->setCoords(1.0, record->requiredThroughput);
    }
}
