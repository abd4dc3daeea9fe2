// SPDX-License-Identifier: GPL-3.0-or-later
#include "FormBench.h"

#include <qcustomplot.h>

#include <QtCore/QMutex>
#include <QtCore/QPointer>
#include <QtCore/QSettings>
#include <QtCore/QTemporaryDir>
#include <QtCore/QThread>
#include <QtCore/QTimer>
#include <QtTest/QTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QMessageBox>
#include <QtWidgets/QToolButton>

#include "AppDelegate.h"
#include "CameraRegistry.h"
#include "engine/MeasurementClock.h"
#include "form/Columns.h"

FakeHost::FakeHost()
{
    setAppDelegate(this);
}

FakeHost::~FakeHost()
{
    setAppDelegate(nullptr);
}

void FakeHost::addPluginWidget(QWidget* newWidget, int area, int allowedAreas, bool floating)
{
    widget.reset(newWidget);
    widgets.append(QStringLiteral("%1 %2 %3").arg(area).arg(allowedAreas).arg(floating));
}

void FakeHost::setCameraControlEnabled(VNCORE_HANDLE camera, bool enabled)
{
    control.append({camera, enabled});
}

FormBench::FormBench(int cameraCount, int mode)
{
    setMeasurementClock([this] { return nowUs; });
    for (int i = 0; i < cameraCount; ++i)
        addCamera();
    form = std::make_unique<CxDataGraphForm>();
    form->refreshTimer.stop(); // the tests tick
    loadMode(mode);
    form->show();
}

FormBench::~FormBench()
{
    form.reset();
    CameraRegistry::instance().removeAllDevices();
    setMeasurementClock({});
}

void FormBench::addCamera(const std::function<void(sim::CameraScenario&)>& change)
{
    sim::CameraScenario scenario;
    scenario.name = QChar('A' + int(cameras.size()));
    scenario.id = QString::number(cameras.size() + 1);
    scenario.sensor.width = 64;
    scenario.sensor.height = 64;
    if (change)
        change(scenario);
    auto camera = std::make_shared<sim::HandDrivenCamera>(scenario);
    const auto gate = std::make_shared<Gate>();
    camera->setHook([gate](const sim::HostCall& call) { return gate->pass(call.kind); });
    gates.push_back(gate);
    const int device = CameraRegistry::instance().addDevice(camera);
    cameras.push_back(camera);
    handles.push_back(nullptr);
    open(device);
}

void FormBench::open(int index)
{
    if (const VNCORE_HANDLE hCam = CameraRegistry::instance().open(index))
        handles[size_t(index)] = hCam;
}

void FormBench::close(int index)
{
    CameraRegistry::instance().close(handle(index));
}

QString FormBench::cameraId(VNCORE_HANDLE hCam) const
{
    const auto found = std::find(handles.begin(), handles.end(), hCam);
    return cameras[size_t(found - handles.begin())]->info().id;
}

bool FormBench::Gate::pass(sim::Call call)
{
    if (call != sim::Call::Wait)
        return call != failing;
    if (frames > 0) {
        --frames;
        return true;
    }
    QThread::msleep(1); // instead of the time limit: a wait that failed at once would keep a core busy
    return false;
}

void FormBench::loadMode(int mode)
{
    const QTemporaryDir dir;
    QSettings settings(dir.filePath(QStringLiteral("settings.ini")), QSettings::IniFormat);
    settings.setValue(QStringLiteral("DTGTMeasMode"), mode);
    form->loadSettings(settings);
}

void FormBench::tick()
{
    invoke("timerSignal");
}

void FormBench::invoke(const char* slot)
{
    QVERIFY(QMetaObject::invokeMethod(form.get(), slot));
}

QTableWidget* FormBench::table() const
{
    return child<QTableWidget>("table");
}

QTableWidget* FormBench::curveTable() const
{
    return child<QTableWidget>("tablePlotCheck");
}

QCustomPlot* FormBench::plot() const
{
    return child<QCustomPlot>("plot");
}

void FormBench::press(const char* buttonName)
{
    QTest::mouseClick(child(buttonName), Qt::LeftButton);
}

QToolButton* FormBench::measureButton(int row) const
{
    return qobject_cast<QToolButton*>(table()->cellWidget(row, measureColumn(form->measMode)));
}

QToolButton* FormBench::exportButton(int row) const
{
    return qobject_cast<QToolButton*>(table()->cellWidget(row, ThroughputColumn::ExportData));
}

QString FormBench::cell(int row, int column) const
{
    const auto* item = table()->item(row, column);
    return item ? item->text() : QStringLiteral("none");
}

QStringList FormBench::columnTexts(int column) const
{
    QStringList texts;
    for (int row = 0; row < table()->rowCount(); ++row)
        texts.append(cell(row, column));
    return texts;
}

QStringList FormBench::captions() const
{
    QStringList texts;
    for (int column = 0; column < table()->columnCount(); ++column)
        texts.append(table()->horizontalHeaderItem(column)->text());
    return texts;
}

QCheckBox* FormBench::graphBox(int row) const
{
    return inCell<QCheckBox>(row, graphColumn);
}

QCheckBox* FormBench::curveBox(int row) const
{
    return curveTable()->cellWidget(row, 0)->findChild<QCheckBox*>();
}

QStringList FormBench::areas() const
{
    QStringList texts;
    const QCPLayoutGrid* layout = plot()->plotLayout();
    for (int row = 0; row + 1 < layout->rowCount(); row += 2) {
        const auto* title = qobject_cast<QCPTextElement*>(layout->element(row, 0));
        const auto* rect = qobject_cast<QCPAxisRect*>(layout->element(row + 1, 0));
        texts.append(title->text() + QLatin1Char(':') + rangeText(rect->axis(QCPAxis::atBottom)));
    }
    return texts;
}

QCPAxisRect* FormBench::area(int index) const
{
    return plot()->axisRect(index);
}

QStringList FormBench::curveNames() const
{
    QStringList names;
    for (int i = 0; i < plot()->graphCount(); ++i)
        names.append(plot()->graph(i)->name());
    return names;
}

QString FormBench::hostControl() const
{
    QStringList calls;
    for (const auto& [hCam, enabled] : host.control)
        calls.append(cameraId(hCam) + QLatin1Char(enabled ? '+' : '-'));
    return calls.join(QLatin1Char(' '));
}

QString rangeText(const QCPAxis* axis)
{
    return QStringLiteral("%1..%2").arg(axis->range().lower).arg(axis->range().upper);
}

void addFrames(CxCameraLineData& record, qint64 firstUs, qint64 lastUs, qint64 stepUs, quint64 ticks)
{
    record.samplePeriod = 4096;
    for (qint64 time = firstUs; time <= lastUs; time += stepUs) {
        auto frame = std::make_unique<FrameRecord>();
        frame->timestampUs = time;
        frame->blockCount = 2;
        frame->blockTicks = std::make_unique<quint64[]>(2);
        frame->blockTicks[1] = ticks;
        frame->durationTicks = ticks;
        record.frameList.push_back(std::move(frame));
    }
}

void addSample(CxCameraLineData& record, qint64 timeUs, qint32 value)
{
    auto sample = std::make_unique<CounterSample>();
    sample->timestampUs = timeUs;
    sample->transportSkip = sample->apiSkip = sample->missedTrgOverlap = value;
    sample->missedTrgOverflow = sample->bufferOverflow = value;
    record.counterSampleList.push_back(std::move(sample));
}

DialogAnswerer::DialogAnswerer(std::function<void()> inside) : m_inside(std::move(inside))
{
    answerSoon();
}

void DialogAnswerer::answerSoon()
{
    // A timer of its own each time: one that repeats does not fire in the loop of a box that opens meanwhile.
    QTimer::singleShot(1, this, [this] {
        answerSoon();
        const QPointer<QMessageBox> box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget());
        if (!box)
            return;
        texts.append(box->windowTitle() + QLatin1Char('|') + box->text());
        if (m_inside)
            m_inside();
        if (box)
            box->button(QMessageBox::Ok)->click();
    });
}

namespace {

QMutex criticalMutex; // guards the list below; nothing is called under it
QStringList criticalLines;

void keepCritical(QtMsgType type, const QMessageLogContext&, const QString& text)
{
    if (type != QtCriticalMsg)
        return;
    const QMutexLocker lock(&criticalMutex);
    criticalLines.append(text.section(QLatin1Char('"'), 1, 1));
}

} // namespace

CriticalLines::CriticalLines() : m_former(qInstallMessageHandler(keepCritical))
{
    take();
}

CriticalLines::~CriticalLines()
{
    qInstallMessageHandler(m_former);
}

QStringList CriticalLines::take()
{
    const QMutexLocker lock(&criticalMutex);
    return std::exchange(criticalLines, {});
}
