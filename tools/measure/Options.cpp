// SPDX-License-Identifier: GPL-3.0-or-later
// Reads the command line and refuses what cannot be meant.
#include "Options.h"

#include <limits>

#include <QtCore/QCommandLineParser>

#include <vnCore/vnApi.h>

#include "NumberText.h"

namespace {

constexpr std::chrono::milliseconds shortestInterval{10};

const QString badValue = QStringLiteral("%1: \"%2\" is not %3");

/// Reads the parsed options one by one; the first fault is kept.
class Reader
{
public:
    explicit Reader(const QCommandLineParser& parser) : commandLine(parser) {}

    bool isSet(const char* name) const { return commandLine.isSet(QLatin1String(name)); }
    QString value(const char* name) const { return commandLine.value(QLatin1String(name)); }

    /// What is counted stands in `expected`, for the message.
    std::optional<qint32> whole(const char* name, qint32 least, const char* expected)
    {
        constexpr qint32 most = std::numeric_limits<qint32>::max();
        if (!isSet(name))
            return std::nullopt;
        const auto number = wholeNumberFromText(value(name), least, most);
        if (!number)
            refuseValue(name, QStringLiteral("%1 from %2 to %3").arg(QLatin1String(expected)).arg(least).arg(most));
        return number ? std::optional<qint32>(static_cast<qint32>(*number)) : std::nullopt;
    }
    std::optional<std::chrono::milliseconds> time(const char* name, std::chrono::milliseconds least,
                                                  const QString& expected)
    {
        if (!isSet(name))
            return std::nullopt;
        const auto time = timeFromText(value(name), least);
        if (!time)
            refuseValue(name, expected);
        return time;
    }

    void limits(Options& options)
    {
        for (const LimitKind& kind : limitKinds()) {
            if (!isSet(kind.name))
                continue;
            const auto number = limitFromText(kind, value(kind.name));
            if (!number)
                refuseValue(kind.name, limitExpectation(kind));
            if (!kind.exists(options.mode))
                refuse(QStringLiteral("--%1 has no meaning in this mode").arg(QLatin1String(kind.name)));
            options.limits.given.push_back({&kind, number.value_or(0.0)});
        }
    }

    void refuseValue(const char* name, const QString& expected)
    {
        refuse(badValue.arg(QStringLiteral("--") + QLatin1String(name), value(name), expected));
    }
    void refuse(const QString& why)
    {
        if (firstFault.isEmpty())
            firstFault = why;
    }
    const QString& fault() const { return firstFault; }

private:
    const QCommandLineParser& commandLine;
    QString firstFault;
};

void declareOptions(QCommandLineParser& parser)
{
    parser.setApplicationDescription(QStringLiteral(
        "Measures the data throughput of cameras without a window.\n\n"
        "TIME is a number with ms, s, min, h or d, seconds without.\n"
        "Exit code: 0 within the limits; 1 a limit was broken; 2 wrong usage, or a file or the output\n"
        "cannot be written; 3 a camera is missing, was lost, refused to start or sent no frame."));
    const auto add = [&parser](const char* name, const char* help, const char* valueName = "",
                               const char* preset = "") {
        parser.addOption(
            {QLatin1String(name), QString::fromUtf8(help), QLatin1String(valueName), QLatin1String(preset)});
    };
    parser.addOption({{QStringLiteral("h"), QStringLiteral("help")}, QStringLiteral("Print this text and exit.")});
    parser.addOption(
        {{QStringLiteral("v"), QStringLiteral("version")}, QStringLiteral("Print the version and exit.")});
    add("list", "List the cameras and exit.");
    add("search", "Ask on all networks and the USB for cameras, list those that answer and exit.");
    add("cameras", "Take the simulated cameras from this scenario.", "FILE");
    add("camera", "Measure this camera, or the one at this address; may be repeated.", "NAME|ID|ADDRESS");
    add("all", "Measure all cameras.");
    add("mode", "throughput (default) or counters.", "MODE", "throughput");
    add("duration", "How long to measure; without it until stopped.", "TIME");
    add("sample-period", "Bytes of a sample block (4096).", "BYTES");
    add("capacity", "Samples kept per camera, with k, M or G (10M).", "SAMPLES");
    add("required", "Rate that the buffer simulation compares with; auto (default): as the camera tells.",
        "auto|MB/s", "auto");
    add("buffer-size", "Size of the buffer that is simulated, of a camera that does not tell it.", "BYTES");
    add("interval", "Time of one line (1s).", "TIME");
    add("metrics", "Serve the figures to Prometheus at this port; of this machine alone, unless an address is named.",
        "[ADDRESS:]PORT");
    add("csv", "Write all kept frames as a report; with several cameras {camera} in the name.", "FILE");
    add("log", "Append the interval lines to this CSV file, line by line.", "FILE");
    add("report", "Write the run as one HTML page: verdict, figures, graphs, events.", "FILE");
    add("limits", "Take limits from this file, for all cameras or for some.", "FILE");
    add("no-resume", "Do not measure a camera again that was lost and has come back.");
    add("json", "Print JSON, one object per line.");
    for (const LimitKind& limit : limitKinds())
        add(limit.name, limit.help, limit.valueName);
}

void readMeasurement(const QCommandLineParser& parser, Options& options, Reader& read)
{
    const QString mode = read.value("mode");
    if (mode == QLatin1String("counters"))
        options.mode = MeasModeStandardAcq;
    else if (mode != QLatin1String("throughput"))
        read.refuseValue("mode", QStringLiteral("throughput or counters"));

    options.duration = read.time("duration", std::chrono::milliseconds(1), timeDescription);
    if (const auto time =
            read.time("interval", shortestInterval, QStringLiteral("a time from 10ms to 3650d, such as 1s")))
        options.interval = *time;
    if (const auto bytes = read.whole("sample-period", smallestSamplePeriod, "a whole number of bytes"))
        options.samplePeriod = *bytes;
    if (const auto samples = read.whole("capacity", 1, "a whole number of samples"))
        options.capacity = *samples;
    if (read.value("required") != QLatin1String("auto"))
        options.required = read.whole("required", 1, "auto or a whole number of MB/s");
    options.bufferSize = read.whole("buffer-size", 1, "a whole number of bytes");
    read.limits(options);
    if (read.isSet("metrics")) {
        options.metrics = listenAddressFromText(read.value("metrics"));
        if (!options.metrics)
            read.refuseValue("metrics",
                             QStringLiteral("a port, or an IPv4 address and a port, such as 0.0.0.0:9841"));
    }

    if (!options.csvFile.isEmpty() && options.mode != MeasModeDataThroughput)
        read.refuse(QStringLiteral("--csv: there is no report in counters mode"));
    if (options.allCameras && !options.cameras.isEmpty())
        read.refuse(QStringLiteral("--all and --camera exclude each other"));
    if (!options.allCameras && options.cameras.isEmpty())
        read.refuse(QStringLiteral("which cameras? Give --all, --camera or --list"));
    if (!parser.positionalArguments().isEmpty())
        read.refuse(QStringLiteral("unexpected argument \"%1\"").arg(parser.positionalArguments().constFirst()));
}

} // namespace

QString versionText()
{
    int major = 0;
    int minor = 0;
    int revision = 0;
    vnCoreVersion(major, minor, revision);
    return QStringLiteral("kestrova-measure %1.%2.%3").arg(major).arg(minor).arg(revision);
}

QString usageText()
{
    return QStringLiteral("Usage: kestrova-measure --list | --search | --all | --camera NAME|ID|ADDRESS [options]\n"
                          "       kestrova-measure --help explains the options");
}

Options parseOptions(const QStringList& arguments)
{
    QCommandLineParser parser;
    declareOptions(parser);
    Options options;
    const auto end = [&options](Options::Action action, const QString& text) {
        options.action = action;
        options.text = text;
        return options;
    };
    if (!parser.parse(arguments))
        return end(Options::Action::Refuse, parser.errorText());
    Reader read(parser);
    if (read.isSet("help"))
        return end(Options::Action::Help, parser.helpText());
    if (read.isSet("version"))
        return end(Options::Action::Version, versionText());

    options.scenarioFile = read.value("cameras");
    options.cameras = parser.values(QStringLiteral("camera"));
    options.allCameras = read.isSet("all");
    options.csvFile = read.value("csv");
    options.logFile = read.value("log");
    options.reportFile = read.value("report");
    options.limitsFile = read.value("limits");
    options.json = read.isSet("json");
    options.resume = !read.isSet("no-resume");
    for (const char* file : {"cameras", "csv", "log", "report", "limits"}) {
        if (read.isSet(file) && read.value(file).isEmpty())
            read.refuseValue(file, QStringLiteral("a file name"));
    }
    if (read.isSet("list"))
        options.action = Options::Action::List;
    else if (read.isSet("search"))
        options.action = Options::Action::Search;
    else
        readMeasurement(parser, options, read);
    if (!read.fault().isEmpty())
        return end(Options::Action::Refuse, read.fault());
    return options;
}
