// SPDX-License-Identifier: GPL-3.0-or-later
#include "FormBench.h"

#include "engine/MeasurementClock.h"
#include "RandomRecord.h"
#include "Scenarios.h"

FormBench::FormBench(int cameraCount, int mode)
{
    setMeasurementClock([this] { return nowUs.load(); });
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
    sim::CameraScenario scenario = smallCamera();
    scenario.name = QChar('A' + int(cameras.size()));
    scenario.id = QString::number(cameras.size() + 1);
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

void FormBench::invoke(const char* slot)
{
    QVERIFY(QMetaObject::invokeMethod(form.get(), slot));
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

QString FormBench::look() const
{
    QString text;
    for (int row = 0; row < table()->rowCount(); ++row) {
        const bool exports = exportButton(row) && exportButton(row)->isEnabled();
        text +=
            status(row) + QLatin1Char(' ') + measureButton(row)->text() + QLatin1String(exports ? " export|" : "|");
    }
    return text + child<QPushButton>("btnStartAll")->text() +
           QLatin1String(child("btnSetup")->isEnabled() ? " setup" : "");
}

QStringList FormBench::captions() const
{
    QStringList texts;
    for (int column = 0; column < table()->columnCount(); ++column)
        texts.append(table()->horizontalHeaderItem(column)->text());
    return texts;
}

QCheckBox* FormBench::curveBox(int row) const
{
    return child<QTableWidget>("tablePlotCheck")->cellWidget(row, 0)->findChild<QCheckBox*>();
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
    for (const auto& [hCam, enabled] : host.control) {
        const auto index = std::find(handles.begin(), handles.end(), hCam) - handles.begin();
        calls.append(QString::number(index + 1) + QLatin1Char(enabled ? '+' : '-'));
    }
    return calls.join(QLatin1Char(' '));
}

QImage pictureAfterReplot(QCustomPlot& plot)
{
    plot.replot(QCustomPlot::rpImmediateRefresh);
    return plot.grab().toImage();
}

QString rangeText(const QCPAxis* axis)
{
    return QStringLiteral("%1..%2").arg(axis->range().lower).arg(axis->range().upper);
}

void addFrames(CxCameraLineData& record, qint64 firstUs, qint64 lastUs, qint64 stepUs, quint64 ticks)
{
    record.samplePeriod = 4096;
    for (qint64 time = firstUs; time <= lastUs; time += stepUs)
        appendFrame(record, time, {0, ticks});
}

void addSample(CxCameraLineData& record, qint64 timeUs, qint32 value)
{
    appendSample(record, {0, timeUs, value, value, value, value, value});
}
