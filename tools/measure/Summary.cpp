// SPDX-License-Identifier: GPL-3.0-or-later
// The verdict of a camera and of the run.
#include "Summary.h"

#include <algorithm>

#include "ExitCode.h"

Outcome outcomeOf(const CameraSummary& camera)
{
    if (!camera.problems.isEmpty() || !camera.verdict.passed())
        return Outcome::Fail;
    return camera.verdict.limits.empty() ? Outcome::NoLimits : Outcome::Pass;
}

Outcome outcomeOf(const Summary& summary)
{
    if (summary.exitCode != ExitSuccess)
        return Outcome::Fail;
    const auto unlimited = [](const CameraSummary& camera) { return camera.verdict.limits.empty(); };
    return std::all_of(summary.cameras.begin(), summary.cameras.end(), unlimited) ? Outcome::NoLimits : Outcome::Pass;
}

QString outcomeText(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Pass:
        return QStringLiteral("PASS");
    case Outcome::Fail:
        return QStringLiteral("FAIL");
    case Outcome::NoLimits:
        break;
    }
    return QStringLiteral("no limits were set");
}

std::optional<QDateTime> brokenAt(const LimitVerdict& limit, const CameraSummary& camera)
{
    if (!limit.brokenAtS)
        return std::nullopt;
    return camera.startTime.addMSecs(qRound64(*limit.brokenAtS * 1e3));
}

QStringList reminders(const CameraSummary& camera)
{
    constexpr double silenceMs = 1000.0;
    const auto seconds = [&camera](const char* key) {
        return figureValue(camera.run.figures, QLatin1String(key)).value_or(0.0) / 1e3;
    };
    const double longestS = seconds("longestGapMs");
    const double silentS = seconds("silentMs");
    const double frames = figureValue(camera.run.figures, QStringLiteral("frames")).value_or(0.0);
    const bool lost = figureValue(camera.run.figures, QStringLiteral("losses")) > 0.0;
    const bool slow = isLongestGapUsual(longestS * 1e6, static_cast<double>(camera.run.elapsedUs), frames);
    if (camera.verdict.seesSilence() || silentS * 1e3 <= silenceMs || (slow && !lost))
        return {};
    return {QStringLiteral("sent nothing for up to %1 s, %2 s in all, and no limit judges that (--max-gap, "
                           "--min-delivered or --min-fps would)")
                .arg(longestS, 0, 'f', 1)
                .arg(silentS, 0, 'f', 1)};
}
