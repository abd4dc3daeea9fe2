// SPDX-License-Identifier: GPL-3.0-or-later
// The areas in view. Only these exist: what cannot be seen is not drawn and has no curves.
#include "DataGraphForm.h"

#include <algorithm>

#include <qcustomplot.h>

#include <QtWidgets/QCheckBox>

#include "../engine/CameraLineData.h"
#include "AreaMarks.h"
#include "AreaPager.h"
#include "Columns.h"
#include "RowCells.h"
#include "ui_DataGraphForm.h"

/// In the order of the table.
QList<VNCORE_HANDLE> CxDataGraphForm::PlottedCameras() const
{
    QList<VNCORE_HANDLE> cameras;
    for (int row = 0; row < ui->table->rowCount(); ++row) {
        const QCheckBox* box = CheckBoxCell::at(ui->table, row, graphColumn).box;
        const CxCameraLineData* record = box ? lineDataMap.value(cameraOf(box)) : nullptr;
        if (record && record->plotEnabled)
            cameras.append(record->hCam);
    }
    return cameras;
}

/// After anything that changes which areas there are or how many have room. An area that comes into view has the
/// curves and the scale that it would have, had it been there all the time.
void CxDataGraphForm::ArrangeAreas()
{
    if (measureColumn(measMode) < 0 || postponedEvents.postpone(PostponedEvents::AreasInView))
        return;
    const QList<VNCORE_HANDLE> wanted = pager->inView(PlottedCameras());
    ui->plot->plotLayout()->setMargins(QMargins(0, 0, pager->barWidth(), 0));
    const auto rects = ui->plot->axisRects();
    if (std::equal(wanted.begin(), wanted.end(), rects.begin(), rects.end(),
                   [](VNCORE_HANDLE hCam, const QCPAxisRect* rect) { return hCam == cameraOf(rect); }))
        return;
    BuildAreas(wanted);
    FillNewAreas();
    ReplotPlot();
}

void CxDataGraphForm::BuildAreas(const QList<VNCORE_HANDLE>& cameras)
{
    for (const QCPAxisRect* rect : ui->plot->axisRects()) {
        const QCPRange range = rect->axis(QCPAxis::atLeft)->range();
        valueRanges[cameraOf(rect)] = {range.lower, range.upper};
    }
    TakeAreasOut();
    int layoutRow = 0;
    for (const VNCORE_HANDLE hCam : cameras) {
        AddCameraPlot(hCam, layoutRow, lineDataMap.value(hCam)->cameraName);
        layoutRow += rowsPerArea;
    }
    for (const VNCORE_HANDLE hCam : PlottedCameras()) {
        if (!cameras.contains(hCam))
            ForgetShownRange(hCam);
    }
}

/// For other areas, or for the same ones with axes as in the beginning.
void CxDataGraphForm::ClearPlotAreas()
{
    TakeAreasOut();
    valueRanges.clear();
    curvesTime.reset();
}

/// Curves and lines go before the axes that they refer to.
void CxDataGraphForm::TakeAreasOut()
{
    EndDrag();
    ui->plot->clearGraphs();
    ui->plot->clearItems();
    marks->clear();
    ui->plot->plotLayout()->clear();
    ui->plot->plotLayout()->simplify();
}

/// Of the area there, its title included.
VNCORE_HANDLE CxDataGraphForm::CameraAt(const QPoint& inPlot) const
{
    const auto rects = ui->plot->axisRects();
    const auto found = std::find_if(rects.begin(), rects.end(), [&](const QCPAxisRect* rect) {
        return inPlot.y() <= rect->outerRect().bottom();
    });
    return found != rects.end() ? cameraOf(*found) : nullptr;
}

void CxDataGraphForm::ToggleAlone(VNCORE_HANDLE hCam)
{
    pager->showAlone(pager->isAlone() ? nullptr : hCam);
}

/// The Graph boxes of all rows.
void CxDataGraphForm::SwitchGraphs(bool on)
{
    if (postponedEvents.isHeld())
        return;
    for (int row = 0; row < ui->table->rowCount(); ++row) {
        QCheckBox* box = CheckBoxCell::at(ui->table, row, graphColumn).box;
        CxCameraLineData* record = box ? lineDataMap.value(cameraOf(box)) : nullptr;
        if (record) {
            box->setChecked(on);
            record->plotEnabled = on;
        }
    }
    RebuildPlots();
}
