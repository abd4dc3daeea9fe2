// SPDX-License-Identifier: GPL-3.0-or-later
// Which figure has which name outside.
#include "Metrics.h"

#include "MeasuredCamera.h"
#include "PlainText.h"

namespace {

constexpr double count = 1.0;
constexpr double bytesPerSecond = 1e6; ///< a MB/s
constexpr double seconds = 1e-3;       ///< a millisecond
constexpr double ratio = 1e-2;         ///< a percent
constexpr double msPerSecond = 1000.0;

std::string oneLine(const QString& text)
{
    return singleLine(text).toStdString();
}

CameraMetrics cameraMetrics(const MeasuredCamera& camera)
{
    const SxCameraInfo& info = camera.info();
    return {oneLine(info.customId.isEmpty() ? info.name : withTimeSource(info.customId, info)), oneLine(info.id),
            oneLine(camera.link().name), camera.figuresUntilTick()};
}

} // namespace

const std::vector<MetricName>& metricNames()
{
    static const std::vector<MetricName> names{
        {"measuring", "kestrova_camera_measuring", "1 while the camera is measured, 0 before, after and when lost.",
         false, count},
        {"presentGapMs", "kestrova_silence_seconds", "Time since the last frame, or since the start.", false,
         seconds},
        {"requiredThroughputMBps", "kestrova_required_throughput_bytes_per_second",
         "What the sensor asks of the link, by the user or the camera.", false, bytesPerSecond},
        {"linkRateMBps", "kestrova_link_rate_bytes_per_second", "What the camera's link can carry, for all on it.",
         false, bytesPerSecond},
        {"frames", "kestrova_frames_total", "Frames received.", true, count},
        {"missingFrames", "kestrova_missing_frames_total", "Gaps of the frame number.", true, count},
        {"skippedFrames", "kestrova_unevaluated_frames_total",
         "Frames too small for one sample block, or for which there was no memory.", true, count},
        {"receivedBytes", "kestrova_received_bytes_total", "Bytes of all frames received.", true, count},
        {"failedWaits", "kestrova_failed_waits_total", "Image waits that failed or gave no data.", true, count},
        {"blocks", "kestrova_blocks_total", "Sample blocks received.", true, count},
        {"overflows", "kestrova_buffer_overflows_total",
         "Frames that overflowed the simulated buffer, or the camera's own count in counters mode.", true, count},
        {"transportSkips", "kestrova_skipped_frames_total", "Frames lost on the link or fetched too late.", true,
         count, "reason", "link"},
        {"apiSkips", "kestrova_skipped_frames_total", "", true, count, "reason", "host"},
        {"lostUnknown", "kestrova_lost_frames_total", "Frames that were lost, by where.", true, count, "cause",
         "unknown"},
        {"lostOnTheWay", "kestrova_lost_frames_total", "", true, count, "cause", "on_the_way"},
        {"lostInSocket", "kestrova_lost_frames_total", "", true, count, "cause", "socket"},
        {"lostNoBuffer", "kestrova_lost_frames_total", "", true, count, "cause", "no_buffer"},
        {"lostLate", "kestrova_lost_frames_total", "", true, count, "cause", "late"},
        {"lostNotAttributable", "kestrova_lost_frames_total", "", true, count, "cause", "not_attributable"},
        {"missedTriggersOverlap", "kestrova_missed_triggers_total",
         "Triggers while the sensor was busy or the camera's buffer full.", true, count, "reason", "overlap"},
        {"missedTriggersOverflow", "kestrova_missed_triggers_total", "", true, count, "reason", "buffer_full"},
        {"avgThroughputMBps", "kestrova_average_throughput_bytes_per_second",
         "Mean of the frames' throughputs since the start.", false, bytesPerSecond},
        {"minThroughputMBps", "kestrova_min_throughput_bytes_per_second",
         "Lowest throughput of a block interval since the start.", false, bytesPerSecond},
        {"deliveredMBps", "kestrova_delivered_bytes_per_second",
         "Bytes received since the start by the time that passed.", false, bytesPerSecond},
        {"throughputP0_1MBps", "kestrova_throughput_bytes_per_second",
         "Throughput that this share of all block intervals since the start had at most.", false, bytesPerSecond,
         "share", "0.001"},
        {"throughputP1MBps", "kestrova_throughput_bytes_per_second", "", false, bytesPerSecond, "share", "0.01"},
        {"throughputP10MBps", "kestrova_throughput_bytes_per_second", "", false, bytesPerSecond, "share", "0.1"},
        {"throughputP50MBps", "kestrova_throughput_bytes_per_second", "", false, bytesPerSecond, "share", "0.5"},
        {"maxBufferLevelPercent", "kestrova_max_buffer_level_ratio",
         "Highest level of the simulated camera buffer since the start.", false, ratio},
        {"longestGapMs", "kestrova_longest_gap_seconds", "Longest time without a frame since the start.", false,
         seconds},
        {"silentMs", "kestrova_silent_seconds_total", "Time in gaps that are silence.", true, seconds},
        {"losses", "kestrova_camera_losses_total", "How often the camera was lost.", true, count},
        {"lostS", "kestrova_camera_lost_seconds_total", "Time in which the camera was lost.", true, count},
    };
    return names;
}

MetricsSnapshot metricsSnapshot(const std::vector<std::unique_ptr<MeasuredCamera>>& cameras)
{
    MetricsSnapshot snapshot;
    for (const auto& camera : cameras)
        snapshot.cameras.push_back(cameraMetrics(*camera));
    snapshot.timeS = static_cast<double>(QDateTime::currentMSecsSinceEpoch()) / msPerSecond;
    return snapshot;
}
