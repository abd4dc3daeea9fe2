// SPDX-License-Identifier: GPL-3.0-or-later
// The tool's one widget: the camera table, the plots and the buttons beside them. One .cpp per topic, in the order of
// the sections below. It drives the records of the engine and reaches the host only through its public headers.
#ifndef KESTROVA_DATAGRAPHFORM_H
#define KESTROVA_DATAGRAPHFORM_H

#include <array>
#include <memory>
#include <optional>
#include <vector>

#include <QtCore/QList>
#include <QtCore/QMap>
#include <QtCore/QMutex>
#include <QtCore/QTimer>
#include <QtWidgets/QWidget>

#include <vnCore/vnTypes.h>

#include "PostponedEvents.h"

class AreaMarks;
class AreaPager;
class CxCameraLineData;
class CxCameraParameters;
class QCheckBox;
class QCPAxis;
class QCPAxisRect;
class QCPGraph;
class QCPMarginGroup;
class QCPRange;
class QSettings;
class QTableWidgetItem;
struct Curve;
namespace Ui {
class CxDataGraphForm;
}

/// Owns one record per opened camera and stops its measurement before it deletes it. User interface thread only.
///
/// Cameras come and go whenever events are processed. So nothing of a camera (record, row, widget) is kept as a
/// pointer: rows, cells and plot areas carry the camera's handle and are searched for, and whoever has processed
/// events finds the record again by handle and serial.
class CxDataGraphForm : public QWidget
{
    Q_OBJECT

public:
    explicit CxDataGraphForm(QWidget* parent = nullptr);
    ~CxDataGraphForm() override;

    /// Whatever the present height of the table, which gives way.
    QSize minimumSizeHint() const override;

    /// Both are called inside the plug-in's settings group.
    void loadSettings(QSettings& settings);
    void saveSettings(QSettings& settings) const;

public Q_SLOTS:
    void updateCameraList();
    void updateCameraListRow(VNCORE_HANDLE hCam);
    void removeCameraListRow(VNCORE_HANDLE hCam);
    void updateTableItem(int row, int col, QString val);
    void updateTableCounterItem(VNCORE_HANDLE hCam, int row, int col, VN_COUNTER_SELECTOR sel);

private Q_SLOTS:
    void updateGraph();
    void timerSignal();
    void updateColumnNames();
    void onComboboxFormatChanged(int newSel);
    void onComboboxFormatChangedExt(VNCORE_HANDLE hCam);
    void onBtnMeasure();
    void onBtnCamExportData();
    void onChkCamPlotData(bool state);
    void onChkCamAutoTransport(bool state);
    void onEditCamTransportChanged(QString text);
    void onChkCamAutoVertAxis(bool state);
    void onEditVertScaleMinChanged(QString text);
    void onEditVertScaleMaxChanged(QString text);
    void onBtnExport(int iExportType);
    void on_btnSetup_clicked();
    void on_btnResetZoom_clicked();
    void on_resetPan_clicked();
    void on_refreshGraph_clicked();
    void on_btnStartAll_clicked();
    void on_plotChangeZoom(QCPRange range);

protected:
    /// Of the plot, before it hears of them itself: its size, its drags, and the replot that was left out while it
    /// could not be seen.
    bool eventFilter(QObject* watched, QEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;

private:
    /// A record that may be gone when it is looked for.
    struct CameraKey
    {
        VNCORE_HANDLE hCam;
        quint64 serial;
    };

    // --- shell (DataGraphForm.cpp) ---
    void SetLook();
    void ConnectHost();
    void DeleteRecord(VNCORE_HANDLE hCam);
    CxCameraLineData* FindRecord(const CameraKey& camera) const;
    bool IsAnyMeasuring() const;
    void ReplotPlot();
    void EndDrag();
    void ScrollToCell(const QWidget* before, QWidget* focused);

    // --- keyboard (Actions.cpp) ---
    void AddActions();

    // --- camera table (CameraTable.cpp) ---
    void BuildStandardAcqTable();
    void BuildThroughputTable();
    /// What both builds share.
    template<class Columns, class Curves>
    void BuildTable(const Columns& columns, const Curves& curves);
    CxCameraLineData* RecordOf(VNCORE_HANDLE hCam, const CxCameraParameters& parameters);
    void FillStandardRow(int row, CxCameraLineData& record, CxCameraParameters& parameters);
    void FillThroughputRow(int row, CxCameraLineData& record);
    void AddMeasureButton(int row, int column, const CxCameraLineData& record);
    void AddGraphCell(int row, VNCORE_HANDLE hCam);
    void SetCameraTableHeader(int column, const QString& text, const QString& toolTip);
    void FixTableHeight();

    // --- cell tool tips (CellToolTips.cpp) ---
    QTableWidgetItem* NewFigureItem(VNCORE_HANDLE hCam, int column);
    QString CellToolTip(VNCORE_HANDLE hCam, int column) const;
    QStringList RangeLines(VNCORE_HANDLE hCam) const;
    QStringList RunLines(VNCORE_HANDLE hCam) const;
    QStringList CauseLines(VNCORE_HANDLE hCam) const;

    // --- row editors (RowEditors.cpp) ---
    void AddFormatComboBox(int row, VNCORE_HANDLE hCam, CxCameraParameters& parameters);
    void AddRequiredThroughputCell(int row, CxCameraLineData& record);
    void AddYAxisScalingCell(int row, VNCORE_HANDLE hCam);
    QCPAxis* EditedValueAxis() const;
    void ForgetShownRange(VNCORE_HANDLE hCam);
    void TakeTypedRange(VNCORE_HANDLE hCam);

    // --- measurement control (MeasurementControl.cpp) ---
    void StartAll(const std::vector<CameraKey>& cameras);
    void RollBackStartAll(const std::vector<CameraKey>& cameras);
    void AnnounceStops(const std::vector<CameraKey>& cameras);
    void StopAll(const std::vector<CameraKey>& cameras);
    std::vector<CameraKey> OpenedCameras() const;
    bool StartCamera(CxCameraLineData& record);
    bool ReportFailedStart(const QString& cameraName);
    void UpdateMeasureButtonText(VNCORE_HANDLE hCam, const QString& text);
    void UpdateMeasureControls(VNCORE_HANDLE hCam, bool measuring);
    void ShowEndedMeasurements();
    void UpdateSetupButton();
    void RefreshRequiredThroughput(VNCORE_HANDLE hCam);

    // --- plot construction (PlotConstruction.cpp) ---
    bool AddCameraPlot(VNCORE_HANDLE hCam, int layoutRow, const QString& title);
    void ConfigurePlotAxis(QCPAxisRect* axisRect, int axisType, double lower, double upper, const QString& label);
    void SetTimeTicker(QCPAxis* axis);
    void ShowTimeOfDay(bool on);
    void FitValueAxes(int plotHeight);
    QCPGraph* AddStandardAcqPlot(VNCORE_HANDLE hCam, const QString& curveName, VN_COUNTER_SELECTOR counterSelector,
                                 const QColor& colour);
    QCPGraph* AddThrougputPlot(VNCORE_HANDLE hCam, const QString& curveName, const QColor& colour);
    QCPAxisRect* FindCameraAxisRect(VNCORE_HANDLE hCam) const;
    bool IsPlotChecked(const QString& curveName) const;
    void AutoScaleVertAxis(VNCORE_HANDLE hCam, QCPAxisRect* axisRect);
    void AddPlotCheckRow(int row, const Curve& curve);

    // --- required throughput (RequiredLine.cpp) ---
    void AddRequiredLine(VNCORE_HANDLE hCam, QCPAxisRect* axisRect);
    void PlaceRequiredLines();

    // --- areas in view (PlotAreas.cpp) ---
    QList<VNCORE_HANDLE> PlottedCameras() const;
    void ArrangeAreas();
    void BuildAreas(const QList<VNCORE_HANDLE>& cameras);
    void ClearPlotAreas();
    void TakeAreasOut();
    VNCORE_HANDLE CameraAt(const QPoint& inPlot) const;
    void ToggleAlone(VNCORE_HANDLE hCam);
    void SwitchGraphs(bool on);

    // --- curves of a refresh (AreaCurves.cpp) ---
    bool HasPoints() const;
    bool UpdateThroughputGraph();
    void UpdateStandardGraph();
    /// Both add the curves of an area and fill them up to that time; true if that was possible.
    bool FillThroughputArea(CxCameraLineData& record, QCPAxisRect* axisRect, qint64 nowUs);
    bool FillStandardArea(CxCameraLineData& record, QCPAxisRect* axisRect, qint64 nowUs);
    void FillNewAreas();
    void ShowMarks(const CxCameraLineData& record, const QCPAxisRect& axisRect, qint64 nowUs);
    bool RefreshFigures(CxCameraLineData& record);
    void ScaleCounterAxis(const std::array<QCPGraph*, 5>& graphs, QCPAxisRect* axisRect);
    double MinKeySpacing(const QCPRange& range) const;

    // --- refresh and zoom (GraphRefresh.cpp) ---
    void RefreshStatistics();
    void UpdateReferenceTime();
    double SecondsKept() const;
    void SetTimeAxes(double lower, double upper);
    /// What the curves have at 0 of the time axes.
    qint64 DrawnTime() const { return curvesTime.value_or(referenceTime); }
    /// The visible range in microseconds, at that time.
    qint64 VisibleFromUs(qint64 nowUs) const;
    qint64 VisibleToUs(qint64 nowUs) const;
    void ZoomTime(double factor);
    void PanTime(double share);
    void RebuildPlots();
    void ShowPlotIfWanted();

    // --- exports (GraphExport.cpp) ---
    QImage PictureOfAllAreas();
    void SaveAllAreas();
    void SavePicture(const QImage& picture);
    void WriteReport(CxCameraLineData& record, const QString& fileName);
    void HandlePostponedEvents();

    static constexpr double defaultRangeLower = -20.0; ///< seconds, as timeRangeLower
    static constexpr double defaultRangeUpper = 0.0;
    static constexpr int rowsPerArea = 2; ///< of the plot's layout: title and axes

    std::unique_ptr<Ui::CxDataGraphForm> ui;

public:
    QMap<VNCORE_HANDLE, CxCameraLineData*> lineDataMap; ///< owned
    QList<QCheckBox*> plotCheckBoxes;                   ///< of the plot selection table, which owns them
    int measMode = 0;                                   ///< ExMeasMode
    int samplePeriod = 1024;                            ///< bytes, handed to every start
    int maxSamples = 10000000;                          ///< samples per camera, handed to every start
    QTimer refreshTimer;                                ///< its interval is the refresh period
    double timeRangeLower = defaultRangeLower;          ///< seconds relative to referenceTime, of all time axes
    double timeRangeUpper = defaultRangeUpper;
    qint64 referenceTime; ///< "now" of the time axes: measurementClockUs() while anything measures

private:
    /// Held while curves and plot areas are rebuilt. Not recursive: nothing called under it may call updateGraph(),
    /// onChkCamPlotData() or process events.
    QMutex plotMutex;

    PostponedEvents postponedEvents;                        ///< held while a report is written
    AreaPager* pager;                                       ///< the plot owns it
    AreaMarks* marks;                                       ///< the plot owns it
    QMap<VNCORE_HANDLE, QPair<double, double>> valueRanges; ///< of left axes, while their areas are out of view
    std::optional<qint64> curvesTime;                       ///< the referenceTime of what is drawn, if anything is
    QTimer lateReplot; ///< unless something else replots first, as a plot does that is dragged or zoomed
    QCPMarginGroup* timeAxisMargins; ///< lines up the time axes of all areas; the plot owns it
    int tableMode = 0;               ///< the measMode for which the table was built
    int dispensableHeight = 0;       ///< pixels by which the table can become lower
    bool timeOfDay = false;          ///< on the time axes, instead of seconds from the reference time
    bool unitCaptions = false;       ///< updateColumnNames() has been asked for: rebuilds keep the units
    bool plotDragged = false;        ///< a mouse button went down on the plot and has not come up
    bool replotPending = false;      ///< the plot could not be seen when it should have been replotted
};

#endif
