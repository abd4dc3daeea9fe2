// SPDX-License-Identifier: GPL-3.0-or-later
// A tick of the form while cameras are measured: without the drawing as the time, with it as a counter, and the longest
// time that a worker would have waited for its record.
#include <algorithm>
#include <atomic>
#include <chrono>
#include <thread>

#include <benchmark/benchmark.h>
#include <qcustomplot.h>

#include "BenchData.h"
#include "FormBench.h"

namespace {

using Clock = std::chrono::steady_clock;

constexpr quint64 frames10M = 4000;
constexpr quint64 framesPerTick = 20; ///< a fifth of a second of 1 GB/s

double secondsSince(Clock::time_point start)
{
    return std::chrono::duration<double>(Clock::now() - start).count();
}

/// Takes and leaves a record's mutex all the time, as no worker does, and remembers the longest wait.
class LockProbe
{
public:
    explicit LockProbe(QMutex& mutex)
        : m_thread([this, &mutex] {
              while (!m_stop) {
                  const Clock::time_point start = Clock::now();
                  mutex.lock();
                  mutex.unlock();
                  m_longest = std::max(m_longest, secondsSince(start));
                  std::this_thread::sleep_for(std::chrono::microseconds(20));
              }
          })
    {
    }
    double finish()
    {
        m_stop = true;
        m_thread.join();
        return m_longest;
    }

private:
    std::atomic<bool> m_stop{false};
    double m_longest = 0.0; ///< seconds; of the thread until it is joined
    std::thread m_thread;
};

void tick(benchmark::State& state, int cameras)
{
    FormBench bench(cameras);
    bench.form->resize(1920, 1080);
    const qint64 baseUs = bench.nowUs;
    std::vector<FrameSource> sources(static_cast<std::size_t>(cameras));
    const auto arrive = [&](quint64 frames) {
        for (int camera = 0; camera < cameras; ++camera) {
            FrameSource& source = sources[static_cast<std::size_t>(camera)];
            CxCameraLineData& record = bench.record(camera);
            QMutexLocker lock(&record.mutex);
            for (quint64 i = 0; i < frames; ++i) {
                std::unique_ptr<FrameRecord> frame = source.next();
                frame->timestampUs += baseUs;
                FrameAggregates aggregates = makeAggregates(*frame, record.evaluationSettings());
                record.frameList.push_back(std::move(frame), std::move(aggregates), record.evaluationSettings());
                if (record.frameList.size() > frames10M)
                    record.frameList.pop_front();
            }
        }
        bench.nowUs = baseUs + sources[0].timeUs();
    };
    for (int camera = 0; camera < cameras; ++camera) {
        CxCameraLineData& record = bench.record(camera);
        fillRecord(record, sources[static_cast<std::size_t>(camera)], 0);
        record.measuring = true; // the samples come from here, so no worker runs
    }
    arrive(frames10M);
    bench.tick();
    QCoreApplication::processEvents();

    const auto timedTick = [&bench] {
        const Clock::time_point start = Clock::now();
        bench.tick();
        return secondsSince(start);
    };
    // The form draws nothing while its window is minimized.
    const double withReplot = std::min(timedTick(), timedTick());
    bench.form->showMinimized();
    double longestLock = 0.0;
    for (auto _ : state) {
        state.PauseTiming();
        arrive(framesPerTick);
        LockProbe probe(bench.record(0).mutex);
        state.ResumeTiming();
        bench.tick();
        state.PauseTiming();
        longestLock = std::max(longestLock, probe.finish());
        state.ResumeTiming();
    }
    state.counters["with_replot_ms"] = withReplot * 1e3;
    state.counters["longest_lock_us"] = longestLock * 1e6;
    state.counters["curves"] = bench.plot()->graphCount();
    for (int camera = 0; camera < cameras; ++camera)
        bench.record(camera).measuring = false;
}

} // namespace

void registerFormBenchmarks()
{
    for (const int cameras : {4, 8}) {
        benchmark::RegisterBenchmark(("form_tick/" + std::to_string(cameras)).c_str(), tick, cameras)
            ->Unit(benchmark::kMillisecond);
    }
}
