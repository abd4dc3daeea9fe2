// SPDX-License-Identifier: GPL-3.0-or-later
// The report: a million lines to a file.
#include <benchmark/benchmark.h>

#include <QtCore/QFile>
#include <QtCore/QTemporaryDir>
#include <QtCore/QTextStream>

#include "BenchData.h"
#include "CsvReportWriter.h"

namespace {

constexpr quint64 framesForMillion = 391; ///< of 2,559 intervals
constexpr qint64 allUs = 1'000'000'000'000;

CxCameraLineData& store()
{
    static FrameSource source;
    static CxCameraLineData data;
    if (data.frameList.empty())
        fillRecord(data, source, framesForMillion);
    return data;
}

/// One line that is built and written per interval.
void writeNaive(const CxCameraLineData& data, const QString& fileName)
{
    QFile file(fileName);
    file.open(QIODevice::WriteOnly | QIODevice::Truncate);
    QTextStream stream(&file);
    stream << "Frame number,Frame Time [ns], Offset [B], Data Time Stamp [ns], Req. throughput [MB/s], "
              "Link throughput [MB/s], Buffer filled [B], Max buffer level [%]\n";
    const double bufferSize = data.cameraBufferSize;
    double occupancy = 0.0;
    QString line;
    for (const auto& frame : data.frameList) {
        const quint64* ticks = frame->blockTicks.get();
        for (quint64 i = 1; i < frame->blockCount; ++i) {
            const double dt = static_cast<double>(ticks[i] - ticks[i - 1]) / 250.0;
            const double speed = data.samplePeriod / dt;
            occupancy += (data.requiredThroughput - speed) * dt;
            occupancy = occupancy < 0 ? 0 : occupancy > bufferSize ? bufferSize : occupancy;
            line.resize(0);
            line += QString::number(frame->frameNumber);
            line += QLatin1Char(',');
            line += QString::number((ticks[i] - ticks[0]) / 250);
            line += QLatin1Char(',');
            line += QString::number(data.samplePeriod);
            line += QLatin1Char(',');
            line += QString::number(ticks[i] * 4);
            line += QLatin1Char(',');
            line += QString::number(data.requiredThroughput);
            line += QLatin1Char(',');
            line += QString::number(speed, 'g', 6);
            line += QLatin1Char(',');
            line += QString::number(occupancy, 'g', 6);
            line += QLatin1Char(',');
            line += QString::number(occupancy / bufferSize * 100.0, 'g', 6);
            line += QLatin1Char('\n');
            stream << line;
        }
    }
}

void writeEngine(const CxCameraLineData& data, const QString& fileName)
{
    QFile file(fileName);
    file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered);
    CsvReportWriter writer([&file](const char* text, std::size_t size) {
        return file.write(text, static_cast<qint64>(size)) == static_cast<qint64>(size);
    });
    writer.write(data, 0, allUs);
}

QByteArray contents(const QString& fileName)
{
    QFile file(fileName);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void naive(benchmark::State& state)
{
    const QTemporaryDir folder;
    for (auto _ : state)
        writeNaive(store(), folder.filePath(QStringLiteral("report.csv")));
}

void engine(benchmark::State& state)
{
    const QTemporaryDir folder;
    const QString fileName = folder.filePath(QStringLiteral("report.csv"));
    for (auto _ : state)
        writeEngine(store(), fileName);
    const QString naiveName = folder.filePath(QStringLiteral("naive.csv"));
    writeNaive(store(), naiveName);
    const QByteArray text = contents(fileName);
    if (text.count('\n') < 1'000'000 || text != contents(naiveName))
        state.SkipWithError("not the bytes of the naive report");
}

} // namespace

void registerReportBenchmarks()
{
    benchmark::RegisterBenchmark("report/naive", naive)->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("report/engine", engine)->Unit(benchmark::kMillisecond);
}
