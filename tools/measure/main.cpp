// SPDX-License-Identifier: GPL-3.0-or-later
// kestrova-measure: measures cameras without a window.
#include <unistd.h>

#include <algorithm>
#include <iterator>

#include <QtCore/QCoreApplication>

#include "CameraRegistry.h"
#include "CameraSelection.h"
#include "Complain.h"
#include "DeviceFamilies.h"
#include "ExitCode.h"
#include "LimitsFile.h"
#include "MeasureRun.h"
#include "MetricsServer.h"
#include "PlainText.h"
#include "Report.h"
#include "RunFiles.h"
#include "RunSummary.h"
#include "StopSignals.h"

namespace {

int refuse(ExitCode code, const QString& text)
{
    complain(text);
    return code;
}

/// Makes the cameras known; they are forgotten, and so closed, at the end of the program.
class KnownCameras
{
public:
    ~KnownCameras()
    {
        CameraRegistry::instance().removeAllDevices();
        waitForClosedDevices();
    }

    bool load(const QString& scenarioFile, QString* error)
    {
        auto& registry = CameraRegistry::instance();
        for (auto& device : createDevices(scenarioFile, error))
            registry.addDevice(std::move(device));
        for (int i = 0; i < registry.deviceCount(); ++i)
            infos.push_back(registry.deviceInfo(i));
        return error->isEmpty();
    }

    /// The real one with this address, which is opened for it.
    bool add(const QString& address, QString* error)
    {
        auto& registry = CameraRegistry::instance();
        const auto device = openDevice(address, error);
        if (device)
            infos.push_back(registry.deviceInfo(registry.addDevice(device)));
        return device != nullptr;
    }

    std::vector<SxCameraInfo> infos;
};

/// Reads the limits file. One that names a camera that is not there was written for a rig that lacks it now.
int readLimits(Options& options, const std::vector<SxCameraInfo>& known)
{
    QString error;
    if (options.limitsFile.isEmpty())
        return ExitSuccess;
    if (!readLimitsFile(options.limitsFile, options.mode, options.limits, error))
        return refuse(ExitWrongUsage, error);
    const auto& cameras = options.limits.cameras;
    for (auto camera = cameras.begin(); camera != cameras.end(); ++camera) {
        if (std::none_of(known.begin(), known.end(), [&](const auto& info) { return info.id == camera.key(); }))
            return refuse(ExitCameraFailure, QStringLiteral("%1: there is no camera with the ID \"%2\"")
                                                 .arg(options.limitsFile, singleLine(camera.key())));
    }
    return ExitSuccess;
}

/// Measures the cameras, which are opened for it, and reports.
int measure(const Options& options, const std::vector<int>& selected, Output& output, const StopSignals& signals_)
{
    auto& registry = CameraRegistry::instance();
    std::vector<SxCameraInfo> infos;
    std::transform(selected.begin(), selected.end(), std::back_inserter(infos),
                   [&registry](int index) { return registry.deviceInfo(index); });
    QString error;
    QStringList files;
    if (!options.csvFile.isEmpty()) {
        if (infos.size() > 1 && !options.csvFile.contains(cameraPlaceholder))
            return refuse(ExitWrongUsage, QStringLiteral("--csv: several cameras need {camera} in the file's name"));
        files = reportFiles(options.csvFile, infos);
    }
    if (const QString fault = faultOfFiles(options, files); !fault.isEmpty())
        return refuse(ExitWrongUsage, fault);
    IntervalLog log;
    if (!options.logFile.isEmpty() && !log.open(options.logFile, options.mode))
        return refuse(ExitWrongUsage, log.error());
    MetricsServer metrics;
    if (options.metrics) {
        if (!metrics.listen(*options.metrics, &error))
            return refuse(ExitWrongUsage, error);
        complain(QStringLiteral("metrics at %1").arg(metrics.url()));
    }

    std::vector<std::unique_ptr<MeasuredCamera>> cameras;
    for (size_t i = 0; i < selected.size(); ++i)
        cameras.push_back(std::make_unique<MeasuredCamera>(registry.open(selected[i]), infos[i], options,
                                                           registry.deviceLink(selected[i])));
    MeasureRun run(options, cameras, output, options.logFile.isEmpty() ? nullptr : &log);
    QObject::connect(&signals_, &StopSignals::received, &run, &MeasureRun::stop);
    QObject::connect(&run, &MeasureRun::finished, QCoreApplication::instance(), &QCoreApplication::quit,
                     Qt::QueuedConnection);
    if (options.metrics)
        QObject::connect(&run, &MeasureRun::updated, [&] { metrics.publish(metricsSnapshot(cameras)); });
    run.start();
    QCoreApplication::exec();

    return finishRun(options, cameras, files, options.logFile.isEmpty() ? nullptr : &log, run.recorder(), output);
}

/// Lists the real cameras that answer, by the addresses that open them.
int search(Output& output, const LineWriter& lines)
{
    QString error;
    std::vector<SxCameraInfo> infos;
    for (const FoundCamera& camera : searchDevices(&error))
        infos.push_back({camera.name, camera.address, camera.serial});
    if (!error.isEmpty())
        return refuse(ExitCameraFailure, error);
    output.cameraList(infos);
    return tellLostLines(lines) ? ExitWrongUsage : ExitSuccess;
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("kestrova-measure"));
    const StopSignals stopSignals;
    LineWriter standardOutput(STDOUT_FILENO, QStringLiteral("standard output"), LineWriter::Until::Written);

    Options options = parseOptions(QCoreApplication::arguments());
    switch (options.action) {
    case Options::Action::Help:
    case Options::Action::Version:
        standardOutput.write(options.text.trimmed().toUtf8() + '\n');
        return tellLostLines(standardOutput) ? ExitWrongUsage : ExitSuccess;
    case Options::Action::Refuse:
        return refuse(ExitWrongUsage, options.text + QStringLiteral("\n") + usageText());
    case Options::Action::List:
    case Options::Action::Search:
    case Options::Action::Measure:
        break;
    }

    const auto output = options.json ? makeJsonOutput(standardOutput) : makeTextOutput(standardOutput);
    if (options.action == Options::Action::Search)
        return search(*output, standardOutput);
    KnownCameras known;
    QString error;
    if (!known.load(options.scenarioFile, &error))
        return refuse(ExitWrongUsage, error);
    if (options.action == Options::Action::List) {
        output->cameraList(known.infos);
        return tellLostLines(standardOutput) ? ExitWrongUsage : ExitSuccess;
    }
    QStringList names = options.cameras;
    names.removeDuplicates();
    for (const QString& name : qAsConst(names)) {
        if (isDeviceAddress(name) && !known.add(name, &error))
            return refuse(ExitCameraFailure, error);
    }
    if (const int code = readLimits(options, known.infos))
        return code;
    if (options.allCameras) {
        for (const SxCameraInfo& info : known.infos)
            names.append(info.id);
    }
    const Selection selection = selectCameras(known.infos, names);
    if (selection.fault != Selection::Fault::None)
        return refuse(selection.fault == Selection::Fault::Missing ? ExitCameraFailure : ExitWrongUsage,
                      selection.text);
    if (selection.cameras.empty())
        return refuse(ExitCameraFailure, QStringLiteral("there is no camera"));
    return measure(options, selection.cameras, *output, stopSignals);
}
