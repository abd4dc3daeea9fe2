// SPDX-License-Identifier: GPL-3.0-or-later
// The form's shell: construction, connections to the host, settings, destruction.
#include "DataGraphForm.h"

#include <algorithm>

#include <qcustomplot.h>

#include <QtCore/QSettings>

#include <vnCore/CxCameraManager.h>
#include <vnCore/IxAppDelegate.h>

#include "../engine/CameraLineData.h"
#include "../engine/MeasurementClock.h"
#include "AreaMarks.h"
#include "AreaPager.h"
#include "Look.h"
#include "Tracer.h"
#include "ui_DataGraphForm.h"

namespace {

constexpr int refreshPeriodMs = 1000;
constexpr int formMargin = 9;      // pixels; with more the first size would be too narrow
constexpr int plotAreaSpacing = 1; // pixels between a title and its axes

// Keys of the settings; all values are integers.
const QLatin1String samplePeriodKey("DTGTSamplePeriod");
const QLatin1String maxSamplesKey("DTGTMaxSamples");
const QLatin1String exportTypeKey("DTGTExportType");
const QLatin1String measModeKey("DTGTMeasMode");
const QLatin1String liveGraphKey("DTGTLiveGraph");

} // namespace

CxDataGraphForm::CxDataGraphForm(QWidget* parent)
    : QWidget(parent), ui(std::make_unique<Ui::CxDataGraphForm>()), referenceTime(measurementClockUs())
{
    ui->setupUi(this);
    timeAxisMargins = new QCPMarginGroup(ui->plot);
    pager = new AreaPager(ui->plot);
    marks = new AreaMarks(ui->plot, ui->labelMarks);
    new Tracer(ui->plot, marks, [this] { return DrawnTime(); }); // the plot owns it
    connect(pager, &AreaPager::moved, this, &CxDataGraphForm::ArrangeAreas);

    IxAppDelegate::instance()->registerPlot(ui->plot);
    SetLook();
    ui->plot->setInteractions(QCP::iRangeDrag | QCP::iRangeZoom);
    ui->plot->setNoAntialiasingOnDrag(true);
    ui->plot->installEventFilter(this);
    ui->plot->setFocusPolicy(Qt::StrongFocus);
    ui->table->setFocusPolicy(Qt::NoFocus);
    for (QTableWidget* table : {ui->table, ui->tablePlotCheck}) {
        table->setEditTriggers(QAbstractItemView::NoEditTriggers);
        table->setSelectionMode(QAbstractItemView::NoSelection);
        table->setTabKeyNavigation(false); // the key goes on to the widgets in the rows and behind the table
    }
    ui->btnExport->addSupportedExportType(ExportToClipboard);
    ui->btnExport->addSupportedExportType(ExportToFile);
    ui->btnExport->setExportType(ExportToClipboard);

    lateReplot.setSingleShot(true);
    connect(&lateReplot, &QTimer::timeout, this, &CxDataGraphForm::ReplotPlot);
    connect(ui->plot, &QCustomPlot::afterReplot, &lateReplot, &QTimer::stop);

    connect(qApp, &QApplication::focusChanged, this, &CxDataGraphForm::ScrollToCell);
    AddActions();
    updateCameraList();
    ConnectHost();
    refreshTimer.start(refreshPeriodMs);
}

CxDataGraphForm::~CxDataGraphForm()
{
    disconnect(qApp, nullptr, this, nullptr); // the focus still leaves a window when only its QWidget is left
    for (CxCameraLineData* record : qAsConst(lineDataMap))
        record->announceStop();
    for (const VNCORE_HANDLE hCam : lineDataMap.keys())
        DeleteRecord(hCam);
}

/// After the host's look: what is drawn here is white, so its ground is dark in every host.
void CxDataGraphForm::SetLook()
{
    look::limitFont(this);
    ui->plot->setBackground(look::background);
    ui->gridLayout->setContentsMargins(formMargin, formMargin, formMargin, formMargin);
    ui->gridLayout->setSizeConstraint(QLayout::SetNoConstraint); // the present height of the table would hold it
    ui->gridLayout->setRowStretch(1, 1);                         // the plot takes what the table leaves
    ui->verticalLayout_2->setStretchFactor(ui->labelMarks, 1);   // the legend takes what the buttons leave
    ui->gridLayout->setAlignment(ui->verticalLayout, Qt::AlignTop);
    ui->gridLayout->setAlignment(ui->table, Qt::AlignTop);
    ui->plot->plotLayout()->setRowSpacing(plotAreaSpacing);
    for (QTableWidget* table : {ui->table, ui->tablePlotCheck})
        look::makeDark(table);
    ui->table->setHorizontalScrollMode(QAbstractItemView::ScrollPerPixel);
}

void CxDataGraphForm::ConnectHost()
{
    const auto* cameras = CxCameraManager::instance();
    connect(ui->btnExport, &CxExportToolButton::exportClicked, this, &CxDataGraphForm::onBtnExport);
    connect(cameras, &CxCameraManager::cameraOpened, this, &CxDataGraphForm::updateCameraList);
    connect(cameras, &CxCameraManager::cameraClosed, this, &CxDataGraphForm::removeCameraListRow);
    connect(cameras, &CxCameraManager::acquisitionStarted, this, &CxDataGraphForm::updateCameraListRow);
    connect(cameras, &CxCameraManager::acquisitionFinished, this, &CxDataGraphForm::updateCameraListRow);
    connect(cameras, &CxCameraManager::imageFormatChanged, this, &CxDataGraphForm::onComboboxFormatChangedExt);
    connect(&refreshTimer, &QTimer::timeout, this, &CxDataGraphForm::timerSignal);
}

void CxDataGraphForm::loadSettings(QSettings& settings)
{
    const auto load = [&settings](QLatin1String key, int fallback) { return settings.value(key, fallback).toInt(); };

    samplePeriod = load(samplePeriodKey, samplePeriod);
    maxSamples = load(maxSamplesKey, maxSamples);
    ui->btnExport->setExportType(static_cast<ExExportType>(load(exportTypeKey, ui->btnExport->exportType())));
    measMode = load(measModeKey, MeasModeDataThroughput);
    ui->checkBoxLiveGraph->setChecked(load(liveGraphKey, 1) != 0);

    for (CxCameraLineData* record : qAsConst(lineDataMap)) {
        record->samplePeriod = samplePeriod;
        record->maxSamples = maxSamples;
    }
    updateCameraList();
    updateColumnNames();
}

void CxDataGraphForm::saveSettings(QSettings& settings) const
{
    settings.setValue(samplePeriodKey, samplePeriod);
    settings.setValue(maxSamplesKey, maxSamples);
    settings.setValue(exportTypeKey, static_cast<int>(ui->btnExport->exportType()));
    settings.setValue(measModeKey, measMode);
    settings.setValue(liveGraphKey, ui->checkBoxLiveGraph->isChecked() ? 1 : 0);
}

/// Stops the camera's measurement, if there is one: the camera has its former parameters when the record goes.
void CxDataGraphForm::DeleteRecord(VNCORE_HANDLE hCam)
{
    std::unique_ptr<CxCameraLineData> record(lineDataMap.value(hCam));
    record->stopMeasurement();
    lineDataMap.remove(hCam);
}

CxCameraLineData* CxDataGraphForm::FindRecord(const CameraKey& camera) const
{
    CxCameraLineData* record = lineDataMap.value(camera.hCam);
    return record && record->serial == camera.serial ? record : nullptr;
}

bool CxDataGraphForm::IsAnyMeasuring() const
{
    return std::any_of(lineDataMap.cbegin(), lineDataMap.cend(),
                       [](const CxCameraLineData* record) { return record->isMeasuring(); });
}

void CxDataGraphForm::ReplotPlot()
{
    FitValueAxes(ui->plot->height());
    PlaceRequiredLines();
    replotPending = !ui->plot->isVisible() || window()->isMinimized();
    if (!replotPending)
        ui->plot->replot(QCustomPlot::rpRefreshHint);
}

bool CxDataGraphForm::eventFilter(QObject* watched, QEvent* event)
{
    if (watched != ui->plot)
        return QWidget::eventFilter(watched, event);
    switch (event->type()) {
    case QEvent::Resize:
        ArrangeAreas();
        FitValueAxes(static_cast<QResizeEvent*>(event)->size().height());
        break;
    case QEvent::Wheel:
        if (auto* wheel = static_cast<QWheelEvent*>(event); wheel->modifiers().testFlag(Qt::ControlModifier)) {
            pager->scroll(*wheel);
            return true;
        }
        break;
    case QEvent::MouseButtonDblClick:
        ToggleAlone(CameraAt(static_cast<QMouseEvent*>(event)->pos()));
        return true;
    case QEvent::Show:
        if (replotPending)
            ReplotPlot();
        break;
    case QEvent::Hide:
        EndDrag();
        break;
    case QEvent::MouseButtonPress:
        EndDrag();
        plotDragged = static_cast<QMouseEvent*>(event)->buttons().testFlag(Qt::LeftButton);
        break;
    case QEvent::MouseMove:
        if (!static_cast<QMouseEvent*>(event)->buttons().testFlag(Qt::LeftButton))
            EndDrag();
        break;
    case QEvent::MouseButtonRelease:
        plotDragged = false;
        break;
    default:
        break;
    }
    return QWidget::eventFilter(watched, event);
}

/// Keys reach the widgets of cells that are out of view, too.
void CxDataGraphForm::ScrollToCell(const QWidget* /*before*/, QWidget* focused)
{
    if (!focused || !ui->table->viewport()->isAncestorOf(focused))
        return;
    const QPoint inTable = focused->mapTo(ui->table->viewport(), focused->rect().center());
    ui->table->scrollTo(ui->table->indexAt(inTable));
}

QSize CxDataGraphForm::minimumSizeHint() const
{
    const QSize present = QWidget::minimumSizeHint();
    return {present.width(), present.height() - dispensableHeight};
}

void CxDataGraphForm::resizeEvent(QResizeEvent* event)
{
    QWidget::resizeEvent(event);
    FixTableHeight();
}

/// The plot has antialiasing again when its area hears of the release. This is for one that goes before, and for a
/// release that went elsewhere.
void CxDataGraphForm::EndDrag()
{
    if (!plotDragged)
        return;
    plotDragged = false;
    QMouseEvent release(QEvent::MouseButtonRelease, QPointF(), Qt::LeftButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(ui->plot, &release);
}

// Needs QCustomPlot's declarations, which the form's header leaves out.
#include "moc_DataGraphForm.cpp" // NOLINT(bugprone-suspicious-include): generated
