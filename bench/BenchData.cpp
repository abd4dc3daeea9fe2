// SPDX-License-Identifier: GPL-3.0-or-later
// Making records.
#include "BenchData.h"

#include <QtCore/QFile>

std::unique_ptr<FrameRecord> FrameSource::next(quint64 blocks)
{
    constexpr quint64 blocksPerPacket = 16;
    auto frame = std::make_unique<FrameRecord>();
    frame->frameNumber = frameNumber += frameNumber % 40 == 0 ? 3 : 1;
    frame->timestampUs = timeUs();
    frame->blockCount = blocks;
    frame->blockTicks.reset(new quint64[blocks]);
    for (quint64 i = 0; i < blocks; ++i) {
        frame->blockTicks[i] = tick;
        tick += 880 + random() % 32;
        if (i % blocksPerPacket == 0)
            tick += 1500 + random() % 1000;
        if (random() % 5000 == 0)
            tick += random() % 200000;
    }
    frame->durationTicks = frame->blockTicks[blocks - 1] - frame->blockTicks[0];
    return frame;
}

void fillRecord(CxCameraLineData& data, FrameSource& source, quint64 frames)
{
    data.samplePeriod = benchPeriod;
    data.requiredThroughput = 1000;
    data.cameraBufferSize = 1'000'000;
    data.avgFrameTime = 10'000.0;
    const EvaluationSettings settings = data.evaluationSettings();
    for (quint64 i = 0; i < frames; ++i) {
        std::unique_ptr<FrameRecord> frame = source.next();
        FrameAggregates aggregates = makeAggregates(*frame, settings);
        data.frameList.push_back(std::move(frame), std::move(aggregates), settings);
    }
    data.runs = {{0, source.timeUs(), 15'000}};
}

void fillSamples(CxCameraLineData& data, int samples)
{
    data.measMode = MeasModeStandardAcq;
    data.avgFrameTime = 100.0;
    for (int i = 0; i < samples; ++i) {
        auto sample = std::make_unique<CounterSample>();
        sample->frameNumber = static_cast<quint64>(i) + static_cast<quint64>(i / 700);
        sample->timestampUs = i * 100LL;
        sample->transportSkip = i / 1000;
        sample->apiSkip = i / 2000;
        sample->missedTrgOverlap = i / 3000;
        sample->missedTrgOverflow = i / 4000;
        sample->bufferOverflow = i / 5000;
        data.counterSampleList.push_back(std::move(sample));
    }
    data.runs = {{0, samples * 100LL, 100'000}};
}

View::View(qint64 endUs, double seconds)
    : fromUs(endUs - static_cast<qint64>(seconds * 1e6)), toUs(endUs), spacingMs(seconds * 1000.0 / benchPixels)
{
}

quint64 availableMemory()
{
    QFile file(QStringLiteral("/proc/meminfo"));
    if (!file.open(QIODevice::ReadOnly))
        return 0;
    for (const QByteArray& line : file.readAll().split('\n')) {
        if (line.startsWith("MemAvailable:"))
            return line.simplified().split(' ').at(1).toULongLong() * 1024;
    }
    return 0;
}
