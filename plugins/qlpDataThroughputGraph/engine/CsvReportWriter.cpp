// SPDX-License-Identifier: GPL-3.0-or-later
// One line per block interval, gathered in a buffer and written in large pieces.
#include "CsvReportWriter.h"

#include <cstring>
#include <memory>
#include <utility>

#include <QtCore/QMutexLocker>

#include "BlockModel.h"
#include "CameraLineData.h"
#include "CsvNumber.h"
#include "LogLine.h"
#include "TimeMath.h"

namespace {

constexpr int columns = 8;
constexpr quint64 nsPerTick = 4;
constexpr quint64 intervalsPerQuestion = quint64{1} << 15; ///< whether to go on: some milliseconds of writing

/// Collects lines and passes them on when there are enough.
class TextBuffer
{
public:
    explicit TextBuffer(const CsvReportWriter::Sink& sink) : output(sink) {}

    /// Where the next line goes; there is room for all its columns.
    char* position() { return buffer.get() + used; }

    /// Takes what was written up to `end`. False when the sink refuses.
    bool advance(const char* end)
    {
        used = static_cast<std::size_t>(end - buffer.get());
        return used < flushAt || flush();
    }

    bool flush()
    {
        const std::size_t size = std::exchange(used, 0);
        return size == 0 || output(buffer.get(), size);
    }

private:
    static constexpr std::size_t flushAt = std::size_t{256} * 1024;
    static constexpr std::size_t lineRoom = columns * (std::size_t{csvNumberRoom} + 1);
    static_assert(sizeof csvReportHeader < lineRoom + flushAt, "the header must fit");

    const CsvReportWriter::Sink& output;
    std::unique_ptr<char[]> buffer{new char[flushAt + lineRoom]};
    std::size_t used = 0;
};

/// The numbers of a line with a comma between them and a line feed at the end.
template<typename First, typename... Rest>
char* writeLine(char* out, First first, Rest... rest)
{
    out = writeCsvNumber(out, first);
    ((*out++ = ',', out = writeCsvNumber(out, rest)), ...);
    *out++ = '\n';
    return out;
}

} // namespace

CsvReportWriter::CsvReportWriter(Sink sink, GoOn goOn) : output(std::move(sink)), mayGoOn(std::move(goOn)) {}

CsvReportResult CsvReportWriter::write(const CxCameraLineData& data, qint64 fromUs, qint64 toUs)
{
    const auto failed = [] {
        LOG_FAILURE("CsvReportWriter::write", "Cannot write the report");
        return CsvReportResult::Failed;
    };

    QMutexLocker lock(&data.mutex);
    TextBuffer text(output);
    const auto cancelled = [&] { return text.flush() ? CsvReportResult::Cancelled : failed(); };
    std::memcpy(text.position(), csvReportHeader, sizeof csvReportHeader - 1);
    if (!text.advance(text.position() + sizeof csvReportHeader - 1))
        return failed();

    const quint32 period = data.evaluationSettings().samplePeriod;
    const qint32 required = data.requiredThroughput;
    BufferModel buffer(data.cameraBufferSize); // carried on from frame to frame
    qint32 visited = 0;
    const auto goOn = [&] { return !mayGoOn || mayGoOn(visited); };
    for (const auto& frame : data.frameList) {
        if (!goOn())
            return cancelled();
        if (!frame->blockTicks || frame->blockCount == 0)
            continue;
        const quint64* ticks = frame->blockTicks.get();
        for (quint64 i = 1; i < frame->blockCount; ++i) {
            if (i % intervalsPerQuestion == 0 && !goOn())
                return cancelled();
            const quint64 offsetUs = (ticks[i] - ticks[0]) / ticksPerUs;
            const qint64 timeUs = saturatingAdd(frame->timestampUs, static_cast<qint64>(offsetUs));
            if (timeUs < fromUs)
                continue;
            if (timeUs > toUs)
                break;
            const BlockInterval interval(ticks[i] - ticks[i - 1], period);
            buffer.add(interval.delta(required));
            if (!text.advance(writeLine(text.position(), frame->frameNumber, offsetUs, static_cast<quint64>(period),
                                        ticks[i] * nsPerTick, required, interval.speed, buffer.occupancy(),
                                        buffer.level())))
                return failed();
        }
        ++visited;
        if (frame->timestampUs > toUs)
            break;
    }
    return text.flush() ? CsvReportResult::Written : failed();
}
