// SPDX-License-Identifier: GPL-3.0-or-later
// The formulas, one after the other.
#include "NaiveEvaluator.h"

#include <algorithm>
#include <cfloat>
#include <cmath>
#include <utility>

#include "FrameCounters.h"

NaiveFigures naiveFigures(const CxCameraLineData& data, double keyUpper, qint64 fromUs, qint64 toUs,
                          double minKeySpacing)
{
    NaiveFigures figures;
    figures.minThroughput = DBL_MAX;
    const qint64 range = toUs - fromUs;
    const double frameTime = data.avgFrameTime;
    const qint64 margin = frameTime * 2.0 > static_cast<double>(range) ? static_cast<qint64>(frameTime) : range;
    const double required = data.requiredThroughput;
    const double bufferSize = data.cameraBufferSize;
    const double period = data.samplePeriod;

    auto frame = data.frameList.begin();
    while (frame != data.frameList.end() && (*frame)->timestampUs < fromUs - margin)
        ++frame;

    double sum = 0.0;
    quint64 frames = 0;
    bool first = true;
    qint64 lastRel = 0;
    double pointMinimum = DBL_MAX;
    double pointLevel = 0.0;
    for (; frame != data.frameList.end() && (*frame)->timestampUs < toUs + margin; ++frame) {
        const FrameRecord& f = **frame;
        double occupancy = 0.0;
        bool overflow = false;
        for (quint64 i = 1; i < f.blockCount; ++i) {
            const double dt = static_cast<double>(f.blockTicks[i] - f.blockTicks[i - 1]) / 250.0;
            const double speed = period / dt;
            const qint64 time = f.timestampUs + static_cast<qint64>((f.blockTicks[i] - f.blockTicks[0]) / 250);
            const qint64 rel = time - toUs;
            figures.minThroughput = std::min(figures.minThroughput, speed);
            occupancy = std::max(occupancy + (required - speed) * dt, 0.0);
            overflow = overflow || occupancy > bufferSize;
            occupancy = std::min(occupancy, bufferSize);
            // No buffer has no level: what is not a number never replaces one here.
            pointLevel = std::max(pointLevel, overflow ? 100.0 : occupancy / bufferSize * 100.0);
            figures.maxBufferLevel = std::max(figures.maxBufferLevel, pointLevel);
            if (std::exchange(first, false))
                lastRel = rel;
            if (speed < pointMinimum && speed > 0)
                pointMinimum = speed;
            if (fromUs <= time && time <= toUs && static_cast<double>(rel - lastRel) > minKeySpacing * 1000.0) {
                lastRel = rel;
                const double key = static_cast<double>(rel) / 1000000.0 + keyUpper;
                figures.minimum.push_back({key, pointMinimum});
                figures.level.push_back({key, pointLevel});
                pointMinimum = DBL_MAX;
                pointLevel = 0.0;
            }
        }
        figures.bufferOverflowCount += overflow ? 1 : 0;
        sum += static_cast<double>(f.blockCount * static_cast<quint64>(data.samplePeriod)) /
               static_cast<double>(f.durationTicks) * 250.0;
        ++frames;
    }
    figures.evaluated = frames > 0;
    figures.avgThroughput = sum / static_cast<double>(frames);
    return figures;
}

bool hasFigures(const CxCameraLineData& data, const NaiveFigures& figures)
{
    const double average = data.avgThroughput;
    return (!figures.evaluated || average == figures.avgThroughput ||
            std::abs(average / figures.avgThroughput - 1.0) < 1e-12) &&
           data.minThroughput == figures.minThroughput && data.maxBufferLevel == figures.maxBufferLevel &&
           data.bufferOverflowCount == figures.bufferOverflowCount;
}

bool figuresAreTrue(CxCameraLineData& data, qint64 fromUs, qint64 toUs)
{
    const NaiveFigures figures = naiveFigures(data, 0.0, fromUs, toUs, 0.0);
    return data.calculateStats(nullptr, nullptr, nullptr, fromUs, toUs, 0.0) == figures.evaluated &&
           (!figures.evaluated || hasFigures(data, figures));
}

NaiveCounters naiveCounters(const CxCameraLineData& data, double keyUpper, qint64 fromUs, qint64 toUs,
                            double minKeySpacing)
{
    NaiveCounters counters;
    const qint64 range = toUs - fromUs;
    const double frameTime = data.avgFrameTime;
    const qint64 margin = frameTime * 10.0 > static_cast<double>(range) ? static_cast<qint64>(frameTime) * 10 : range;
    counters.evaluated = !data.counterSampleList.empty();

    auto sample = data.counterSampleList.begin();
    while (sample != data.counterSampleList.end() && (*sample)->timestampUs < fromUs - margin)
        ++sample;
    bool first = true;
    qint64 lastRel = 0;
    for (; sample != data.counterSampleList.end() && (*sample)->timestampUs < toUs + margin; ++sample) {
        const CounterSample& s = **sample;
        const qint64 rel = s.timestampUs - toUs;
        if (std::exchange(first, false))
            lastRel = rel;
        if (static_cast<double>(rel - lastRel) > minKeySpacing * 1000.0) {
            lastRel = rel;
            const double key = static_cast<double>(rel) / 1000000.0 + keyUpper;
            forSampledCounters([&](const FrameCounter& counter, std::size_t i) {
                counters.curves[i].push_back({key, static_cast<double>(s.*counter.sample)});
            });
        }
    }
    return counters;
}

namespace {

/// A record, whatever the mode.
struct Happened
{
    qint64 timeUs;
    quint32 number;
    qint64 overflows; ///< of itself, or the camera's count
};

bool overflows(const CxCameraLineData& data, const FrameRecord& frame)
{
    double occupancy = 0.0;
    for (quint64 i = 1; i < frame.blockCount; ++i) {
        const double dt = static_cast<double>(frame.blockTicks[i] - frame.blockTicks[i - 1]) / 250.0;
        occupancy = std::max(occupancy + (data.requiredThroughput - data.samplePeriod / dt) * dt, 0.0);
        if (occupancy > data.cameraBufferSize)
            return true;
    }
    return false;
}

} // namespace

std::vector<EventMark> naiveMarks(const CxCameraLineData& data, const EventRange& range)
{
    const bool counters = data.measMode == MeasModeStandardAcq;
    std::vector<Happened> records;
    for (const auto& frame : data.frameList)
        records.push_back({frame->timestampUs, quint32(frame->frameNumber), overflows(data, *frame)});
    if (counters) {
        for (const auto& sample : data.counterSampleList)
            records.push_back({sample->timestampUs, quint32(sample->frameNumber), sample->bufferOverflow});
    }
    const bool complete = counters ? data.counterSampleList.isComplete() : data.frameList.isComplete();

    std::vector<EventMark> marks;
    const auto add = [&](EventKind kind, qint64 fromUs, qint64 toUs, qint64 amount) {
        if (amount <= 0 || toUs < range.fromUs || fromUs > range.toUs)
            return;
        const auto count = static_cast<quint64>(amount);
        if (marks.empty() || marks.back().kind != kind || fromUs - marks.back().toUs > range.joinUs) {
            marks.push_back({kind, fromUs, toUs, count});
            return;
        }
        EventMark& mark = marks.back();
        mark.amount = kind == EventKind::Silence ? std::max(mark.amount, count) : mark.amount + count;
        mark.fromUs = std::min(mark.fromUs, fromUs);
        mark.toUs = std::max(mark.toUs, toUs);
    };
    for (const MeasuredRun& run : data.runs)
        add(EventKind::Start, run.startUs, run.startUs, 1);
    for (const MeasuredRun& run : data.runs)
        add(EventKind::End, run.endUs.value_or(0), run.endUs.value_or(0), run.endUs ? 1 : 0);
    for (const EventKind kind : {EventKind::Silence, EventKind::MissingFrames, EventKind::BufferOverflow}) {
        const auto addStep = [&](const Happened& earlier, const Happened& later, qint64 limitUs) {
            const qint64 gapUs = later.timeUs - earlier.timeUs;
            const quint32 step = later.number - earlier.number;
            if (kind == EventKind::Silence && gapUs > limitUs)
                add(kind, earlier.timeUs, later.timeUs, gapUs);
            if (kind == EventKind::MissingFrames && step < 0x80000000)
                add(kind, later.timeUs, later.timeUs, qint64(step) - 1);
            if (kind == EventKind::BufferOverflow && counters)
                add(kind, later.timeUs, later.timeUs, later.overflows - earlier.overflows);
        };
        const auto silence = [&](qint64 fromUs, qint64 toUs, qint64 limitUs) {
            if (kind == EventKind::Silence && toUs - fromUs > limitUs)
                add(kind, fromUs, toUs, toUs - fromUs);
        };
        std::size_t next = 0;
        for (std::size_t run = 0; run <= data.runs.size(); ++run) { // the first one is that of no known run
            const MeasuredRun* own = run > 0 ? &data.runs[run - 1] : nullptr;
            const qint64 limitUs = own ? own->silenceLimitUs : 1'000'000;
            const auto isOwn = [&] {
                return next < records.size() &&
                       (run == data.runs.size() || records[next].timeUs < data.runs[run].startUs);
            };
            const qint64 endUs = own ? own->endUs.value_or(range.nowUs) : 0;
            if (own && (next > 0 || complete))
                silence(own->startUs, isOwn() ? records[next].timeUs : endUs, std::max(limitUs, qint64(1'000'000)));
            const std::size_t begin = next;
            for (; isOwn(); ++next) {
                if (next > begin)
                    addStep(records[next - 1], records[next], limitUs);
                if (kind == EventKind::BufferOverflow && !counters)
                    add(kind, records[next].timeUs, records[next].timeUs, records[next].overflows);
            }
            if (own && next > begin)
                silence(records[next - 1].timeUs, endUs, limitUs);
        }
    }
    return marks;
}

const char reportHeader[] = "Frame number,Frame Time [ns], Offset [B], Data Time Stamp [ns], Req. throughput [MB/s], "
                            "Link throughput [MB/s], Buffer filled [B], Max buffer level [%]\n";

QByteArray writtenReport(const CxCameraLineData& data, qint64 fromUs, qint64 toUs)
{
    QByteArray text;
    CsvReportWriter writer([&text](const char* piece, std::size_t size) {
        text.append(piece, static_cast<int>(size));
        return true;
    });
    return writer.write(data, fromUs, toUs) == CsvReportResult::Written ? text : QByteArray("not written");
}

QByteArray naiveReport(const CxCameraLineData& data, qint64 fromUs, qint64 toUs)
{
    QString text;
    double occupancy = 0.0;
    const double bufferSize = data.cameraBufferSize;
    for (const auto& frame : data.frameList) {
        for (quint64 i = 1; i < frame->blockCount; ++i) {
            const quint64 offset = (frame->blockTicks[i] - frame->blockTicks[0]) / 250;
            const qint64 time = frame->timestampUs + static_cast<qint64>(offset);
            if (time < fromUs)
                continue;
            if (time > toUs)
                break;
            const double dt = static_cast<double>(frame->blockTicks[i] - frame->blockTicks[i - 1]) / 250.0;
            const double speed = data.samplePeriod / dt;
            occupancy = std::min(std::max(occupancy + (data.requiredThroughput - speed) * dt, 0.0), bufferSize);
            const QString fields[] = {
                QString::number(frame->frameNumber),      QString::number(offset),
                QString::number(data.samplePeriod),       QString::number(frame->blockTicks[i] * 4),
                QString::number(data.requiredThroughput), QString::number(speed, 'g', 6),
                QString::number(occupancy, 'g', 6),       QString::number(occupancy / bufferSize * 100.0, 'g', 6)};
            for (const QString& field : fields)
                text += field + QLatin1Char(&field == std::end(fields) - 1 ? '\n' : ',');
        }
        if (frame->timestampUs > toUs)
            break;
    }
    return text.toLatin1();
}
