// SPDX-License-Identifier: GPL-3.0-or-later
// A host for tests of the form: a delegate that remembers what it was told, hand-driven cameras, a clock that stands
// still, and finders for what a person would look at or press.
#ifndef KESTROVA_TESTS_FORMBENCH_H
#define KESTROVA_TESTS_FORMBENCH_H

#include <atomic>
#include <functional>
#include <memory>
#include <vector>

#include <qcustomplot.h>

#include <QtTest/QtTest>
#include <QtWidgets/QtWidgets>

#include "AppDelegate.h"
#include "CameraRegistry.h"
#include "engine/CameraLineData.h"
#include "form/Columns.h"
#include "form/DataGraphForm.h"
#include "HandDrivenCamera.h"
#include "ItemTexts.h"
#include "LogCapture.h"

constexpr qint64 second = 1000000; // microseconds

/// The delegate while it lives. Owns the widget that the plug-in hands over.
class FakeHost : public IxAppDelegate
{
public:
    FakeHost() { setAppDelegate(this); }
    ~FakeHost() override { setAppDelegate(nullptr); }
    SxApplicationOptions applicationOptions() override { return options; }
    QString lastDirectory() override { return directory; }
    void setLastDirectory(const QString& last) override { directory = last; }
    void addPluginWidget(QWidget* added, int, int, bool) override { widget.reset(added); }
    void setCameraControlEnabled(VNCORE_HANDLE camera, bool enabled) override { control.append({camera, enabled}); }
    void registerPlot(QCustomPlot*) override {}

    SxApplicationOptions options;
    QString directory;                         ///< of the file dialogs
    QList<QPair<VNCORE_HANDLE, bool>> control; ///< calls of setCameraControlEnabled()
    std::unique_ptr<QWidget> widget;
};

/// One per test: everything starts afresh, and in the end no camera may have kept what a measurement changed.
class FormBench
{
public:
    /// Camera names are A, B, C...; their ids 1, 2, 3...
    explicit FormBench(int cameraCount = 0, int mode = MeasModeDataThroughput);
    ~FormBench();

    /// Adds a camera and opens it.
    void addCamera(const std::function<void(sim::CameraScenario&)>& change = {});
    void open(int index);
    void close(int index) { CameraRegistry::instance().close(handle(index)); }
    /// Of the n-th camera; it keeps it when it is closed.
    VNCORE_HANDLE handle(int index) const { return handles[size_t(index)]; }
    CxCameraLineData& record(int index) const { return *form->lineDataMap[handle(index)]; }
    /// Lets that many image waits of a measurement succeed; all others fail at once.
    void deliverFrames(int index, int frames) { gates[size_t(index)]->frames += frames; }
    void failStarts(int index) { gates[size_t(index)]->failing = sim::Call::Start; }
    void failReads(int index) { gates[size_t(index)]->failing = sim::Call::Get; }
    void loadMode(int mode);
    void tick() { invoke("timerSignal"); }
    void invoke(const char* slot);

    template<class Widget = QWidget>
    Widget* child(const char* name) const
    {
        return form->findChild<Widget*>(QLatin1String(name));
    }
    QTableWidget* table() const { return child<QTableWidget>("table"); }
    QCustomPlot* plot() const { return child<QCustomPlot>("plot"); }
    void press(const char* buttonName);
    QToolButton* measureButton(int row) const;
    QToolButton* exportButton(int row) const;
    QString cell(int row, int column) const;
    QString status(int row) const { return cell(row, 1); }
    /// What tells of measurements: "Testing Stop|Stopped Start export|Start All setup" with what can be pressed.
    QString look() const;
    QStringList columnTexts(int column) const { return ::columnTexts(*table()->model(), column); }
    QStringList captions() const;
    QCheckBox* curveBox(int row) const; ///< in the curve table
    template<class Widget>
    Widget* inCell(int row, int column, int number = 0) const
    {
        const QWidget* widget = table()->cellWidget(row, column);
        return widget ? widget->findChildren<Widget*>().value(number) : nullptr;
    }
    QCheckBox* graphBox(int row) const { return inCell<QCheckBox>(row, graphColumn); }
    /// "title:lower..upper" of the time axis of every plot area, from the top.
    QStringList areas() const;
    QCPAxisRect* area(int index) const;
    QStringList curveNames() const;
    QString hostControl() const; ///< as "1- 1+": given up, returned

    /// What a camera's host calls, the worker's waits among them, depend on.
    struct Gate
    {
        std::atomic<int> frames{0};
        std::atomic<sim::Call> failing{sim::Call::Wait};
        bool pass(sim::Call call);
    };

    FakeHost host;
    std::atomic<qint64> nowUs{36000000000}; ///< ten o'clock; workers ask, too
    std::vector<std::shared_ptr<sim::HandDrivenCamera>> cameras;
    std::vector<std::shared_ptr<Gate>> gates;
    std::vector<VNCORE_HANDLE> handles;
    std::unique_ptr<CxDataGraphForm> form;
};

/// "lower..upper" of an axis.
QString rangeText(const QCPAxis* axis);

/// Named steps of a story, in their order.
using Steps = std::vector<std::pair<const char*, std::function<void()>>>;

QImage pictureAfterReplot(QCustomPlot& plot);

/// Appends frames of two blocks, one every `stepUs` up to `lastUs`: 4096 bytes in the given number of ticks.
void addFrames(CxCameraLineData& record, qint64 firstUs, qint64 lastUs, qint64 stepUs, quint64 ticks);
/// Appends counter samples that all hold `value`.
void addSample(CxCameraLineData& record, qint64 timeUs, qint32 value);

/// What went to the log as critical lines.
using CriticalLines = LogCapture;

#endif
