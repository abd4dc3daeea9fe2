// SPDX-License-Identifier: GPL-3.0-or-later
// What a refresh, a report and the intake of a frame cost, each beside the straightforward way, in one run; and what
// the times of arrival of GigE Vision cost.
#include <benchmark/benchmark.h>

#include <QtWidgets/QApplication>

void registerRefreshBenchmarks();
void registerCounterBenchmarks();
void registerReportBenchmarks();
void registerIntakeBenchmarks();
void registerFormBenchmarks();
void registerImageExitBenchmarks();
void registerStampBenchmarks();
void registerTapBenchmarks();

int main(int argc, char** argv)
{
    qputenv("QT_QPA_PLATFORM", "offscreen");
    QApplication application(argc, argv);
    registerCounterBenchmarks();
    registerReportBenchmarks();
    registerIntakeBenchmarks();
    registerRefreshBenchmarks();
    registerFormBenchmarks();
    registerImageExitBenchmarks();
#ifdef BENCH_ARRIVALS
    registerStampBenchmarks();
    registerTapBenchmarks();
#endif
    benchmark::Initialize(&argc, argv);
    if (benchmark::ReportUnrecognizedArguments(argc, argv))
        return 1;
    benchmark::RunSpecifiedBenchmarks();
    benchmark::Shutdown();
    return 0;
}
