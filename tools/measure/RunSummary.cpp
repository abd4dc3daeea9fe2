// SPDX-License-Identifier: GPL-3.0-or-later
// Reports, summary, exit code.
#include "RunSummary.h"

#include <algorithm>

#include "Causes.h"
#include "Complain.h"
#include "ExitCode.h"
#include "Report.h"
#include "ReportDescription.h"
#include "RunReport.h"

namespace {

ExitCode judge(const Summary& summary, bool fileFault)
{
    bool failed = false;
    bool broken = false;
    for (const CameraSummary& camera : summary.cameras) {
        failed |= !camera.problems.isEmpty();
        broken |= !camera.verdict.passed();
    }
    if (failed)
        return ExitCameraFailure;
    if (broken)
        return ExitFailure;
    return fileFault ? ExitWrongUsage : ExitSuccess;
}

CameraSummary summaryOf(const MeasuredCamera& camera, const LinkTable& links)
{
    CameraSummary summary{camera.info(), camera.wholeRun(), camera.startTime()};
    summary.requiredThroughput = camera.record().requiredThroughput;
    summary.bufferSize = camera.record().bufferSizeKnown ? camera.record().cameraBufferSize.load() : 0;
    summary.clockDriftPpm = camera.clockDriftPpm();
    summary.grainBytes = camera.conditions().grainBytes;
    summary.problems = camera.problems();
    summary.verdict = camera.verdict();
    summary.findings = diagnose(diagnosisInput(camera, links));
    return summary;
}

} // namespace

int finishRun(const Options& options, const std::vector<std::unique_ptr<MeasuredCamera>>& cameras,
              const QStringList& reports, const IntervalLog* log, const RunRecorder& recorder, Output& output)
{
    const QDateTime now = QDateTime::currentDateTime();
    Summary summary{options, log ? &log->lines() : nullptr, now, now};
    for (const auto& camera : cameras)
        summary.links.add(*camera, camera->wholeRun());
    QString error;
    bool fileFault = output.lines().lostLines() > 0 || (summary.log && summary.log->lostLines() > 0);
    for (int i = 0; i < static_cast<int>(cameras.size()); ++i) {
        const MeasuredCamera& camera = *cameras[static_cast<size_t>(i)];
        CameraSummary line = summaryOf(camera, summary.links);
        summary.startTime = std::min(summary.startTime, line.startTime);
        if (!reports.isEmpty()) {
            line.report = writeReport(camera.record(), reports[i], &error);
            if (!line.report || !writeDescription(camera, *line.report, &error)) {
                complain(error);
                fileFault = true;
            }
        }
        summary.cameras.push_back(line);
    }
    summary.exitCode = judge(summary, fileFault);
    if (!options.reportFile.isEmpty() &&
        !writeHtmlReport(reportContent(summary, cameras, recorder), options.reportFile, &error)) {
        complain(error);
        summary.exitCode = judge(summary, true);
    }
    output.summary(summary);
    return tellLostLines(output.lines()) ? judge(summary, true) : summary.exitCode;
}
