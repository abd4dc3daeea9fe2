// SPDX-License-Identifier: GPL-3.0-or-later
// The rules, one by one.
#include "Diagnosis.h"

#include <algorithm>
#include <cmath>
#include <iterator>

#include <QtCore/QCoreApplication>

#include "HostDiagnosis.h"
#include "Plural.h"

namespace {

using Kind = Finding::Kind;

constexpr double longSilenceS = 1.0;
constexpr double stallShare = 0.5;    ///< a block at less than this share of the required throughput is a stall
constexpr double stallLevel = 1.0;    ///< percent of the buffer that it fills at least
constexpr double fullShare = 0.9;     ///< of its rate, from which on a link is full
constexpr double largeDriftPpm = 100; ///< quartz clocks keep within this

QString rounded(double value, int decimals = 1)
{
    return QString::number(value, 'f', decimals);
}

/// Looks for each cause in turn.
class Diagnosis
{
    Q_DECLARE_TR_FUNCTIONS(Diagnosis)

public:
    explicit Diagnosis(const DiagnosisInput& figures) : in(figures) {}

    std::vector<Finding> findings()
    {
        lookAtTime();
        lookAtLink();
        lookAtBuffer();
        if (in.host)
            lookAtHost();
        else
            lookAtLosses();
        lookAtTriggers();
        lookAtReset();
        lookAtClock();
        lookAtHistory(); // judges the others
        return std::move(found);
    }

private:
    double counted(VN_COUNTER_SELECTOR counter) const { return in.counters[counter].value_or(0.0); }
    double foundBufferFull() const
    {
        return counted(VN_COUNTER_MISSED_TRG_OVERFLOW) + counted(VN_COUNTER_BUFFER_OVERFLOW);
    }
    bool isLinkShort() const
    {
        const auto average = in.run.avgThroughput();
        return in.required && average && *average < *in.required;
    }
    /// Others take what this camera lacks: the link is full, and not with this camera alone.
    bool isCrowdedOut() const
    {
        return in.link && in.link->cameras > 1 && in.link->rate && in.link->delivered >= fullShare * *in.link->rate &&
               in.link->own < fullShare * in.link->delivered && (isLinkShort() || foundBufferFull() > 0.0);
    }

    void add(Kind kind, const QString& sentence, std::vector<NamedFigure> figures)
    {
        found.push_back({kind, sentence, std::move(figures)});
    }

    void lookAtTime()
    {
        const double longestS = static_cast<double>(in.run.longestGapUs) / 1e6;
        const double silentS = static_cast<double>(in.run.silentUs) / 1e6;
        // The first gap of a slow camera counts as silence, as nothing tells yet how slow it is.
        const bool slow = isLongestGapUsual(longestS, static_cast<double>(in.run.elapsedUs) / 1e6,
                                            static_cast<double>(in.run.frames));
        if (std::min(longestS, silentS) <= longSilenceS || (slow && in.run.losses == 0))
            return;
        add(Kind::Silence,
            tr("No frame came for up to %1 s, %2 s in all. Triggers may be missing, or the camera or its link may "
               "have stopped.")
                .arg(rounded(longestS), rounded(silentS)),
            {{"longestGapMs", longestS * 1e3, "ms"}, {"silentMs", silentS * 1e3, "ms"}});
        if (in.run.losses > 0) {
            const double lostS = static_cast<double>(in.run.lostUs) / 1e6;
            found.back().sentence =
                tr("No frame came for up to %1 s, %2 s in all. For %3 s of these the camera was lost: its cable, its "
                   "power or the camera itself may be the cause.")
                    .arg(rounded(longestS), rounded(silentS), rounded(lostS));
            found.back().figures.push_back({"lostS", lostS, "s"});
        }
    }

    void lookAtLink()
    {
        const bool crowdedOut = isCrowdedOut();
        const bool enoughAlone = crowdedOut && in.required && *in.link->rate >= *in.required;
        if (isLinkShort() && !enoughAlone) {
            const double average = *in.run.avgThroughput();
            add(Kind::LinkTooSlow,
                tr("The sensor asks for more than the link gives: it carries %1 MB/s on average, and %2 MB/s "
                   "are required. A slower connection than meant, or a hub or switch on the way, may be the "
                   "cause.")
                    .arg(rounded(average), rounded(*in.required)),
                {{"avgThroughputMBps", average, "MB/s"}, {"requiredThroughputMBps", *in.required, "MB/s"}});
        }
        if (crowdedOut) {
            const LinkUse& link = *in.link;
            add(Kind::SharedLink,
                tr("%1 cameras share the link %2, which is full with %3 of %4 MB/s. This camera has %5 MB/s of "
                   "it, the busiest one %6 MB/s.")
                    .arg(QString::number(link.cameras), link.name, rounded(link.delivered), rounded(*link.rate),
                         rounded(link.own), rounded(link.busiest)),
                {{"linkDeliveredMBps", link.delivered, "MB/s"},
                 {"linkRateMBps", *link.rate, "MB/s"},
                 {"deliveredMBps", link.own, "MB/s"},
                 {"busiestDeliveredMBps", link.busiest, "MB/s"}});
        }
    }

    /// Of a link that is fast enough on the whole.
    void lookAtBuffer()
    {
        const RunTotals& run = in.run;
        if (!in.required || !run.avgThroughput() || isLinkShort() || !run.minThroughput || in.bufferSize <= 0.0)
            return;
        const double slowest = *run.minThroughput;
        const double longestBlockMs = slowest > 0.0 ? in.samplePeriod / slowest / 1e3 : 0.0;
        const std::vector<NamedFigure> figures{{"minThroughputMBps", slowest, "MB/s"},
                                               {"longestBlockMs", longestBlockMs, "ms"},
                                               {"maxBufferLevelPercent", run.maxBufferLevel.value_or(0.0), "%"},
                                               {"overflows", static_cast<double>(run.overflows), ""}};
        if (run.overflows > 0)
            add(Kind::StallsNotHeld,
                tr("The link may stall for longer than the camera's buffer can hold, though the average is "
                   "enough.") +
                    QLatin1Char(' ') +
                    (run.overflows == 1 ? tr("One frame would have overflowed it.")
                                        : tr("%n frames would have overflowed it.", nullptr,
                                             plural(static_cast<double>(run.overflows)))) +
                    QLatin1Char(' ') + tr("The slowest block took %1 ms.").arg(rounded(longestBlockMs, 2)),
                figures);
        else if (slowest < stallShare * *in.required && run.maxBufferLevel >= stallLevel)
            add(Kind::StallsHeld,
                tr("The link has short stalls, which the camera's buffer holds: the slowest block took %1 ms, "
                   "the buffer was filled to %2 %.")
                    .arg(rounded(longestBlockMs, 2), rounded(run.maxBufferLevel.value_or(0.0))),
                figures);
    }

    /// Tells more of losses than the counters and the frames' numbers do.
    void lookAtHost()
    {
        std::vector<Finding> more = hostFindings(in);
        std::move(more.begin(), more.end(), std::back_inserter(found));
    }

    void lookAtLosses()
    {
        const double onLink = counted(VN_COUNTER_TRANSPORT_SKIP);
        const double atHost = counted(VN_COUNTER_API_SKIP);
        const auto missing = static_cast<double>(in.run.missingFrames);
        if (onLink > 0.0)
            add(Kind::LostOnLink,
                (onLink == 1.0 ? tr("One frame was lost on the link.")
                               : tr("%n frames were lost on the link.", nullptr, plural(onLink))) +
                    QLatin1Char(' ') +
                    tr("A bad cable or plug, interference, or a switch that drops packets may be the cause."),
                {{"transportSkips", onLink, ""}});
        if (atHost > 0.0)
            add(Kind::FetchedTooLate,
                (atHost == 1.0 ? tr("One frame was fetched too late.")
                               : tr("%n frames were fetched too late.", nullptr, plural(atHost))) +
                    QLatin1Char(' ') + tr("This machine may be too busy or too slow."),
                {{"apiSkips", atHost, ""}});
        const bool countersTell = in.counters[VN_COUNTER_TRANSPORT_SKIP] && in.counters[VN_COUNTER_API_SKIP];
        if (missing > 0.0 && !countersTell)
            add(Kind::FramesMissing,
                (missing == 1.0 ? tr("One frame is missing.")
                                : tr("%n frames are missing.", nullptr, plural(missing))) +
                    QLatin1Char(' ') +
                    tr("Frames may be lost on the link or fetched too late; the camera's counters tell which."),
                {{"missingFrames", missing, ""}});
    }

    void lookAtTriggers()
    {
        const double whileBusy = counted(VN_COUNTER_MISSED_TRG_OVERLAP);
        const double full = foundBufferFull();
        if (whileBusy > 0.0)
            add(Kind::TriggersTooFast,
                (whileBusy == 1.0 ? tr("One trigger came while the sensor was busy.")
                                  : tr("%n triggers came while the sensor was busy.", nullptr, plural(whileBusy))) +
                    QLatin1Char(' ') + tr("Triggers may come faster than it exposes and reads out."),
                {{"missedTriggersOverlap", whileBusy, ""}});
        if (full > 0.0)
            add(Kind::TriggersFullBuffer,
                (full == 1.0 ? tr("Once the camera's buffer was full.")
                             : tr("%n times the camera's buffer was full.", nullptr, plural(full))) +
                    QLatin1Char(' ') + tr("The triggers may be too fast for the link, or the link may stall."),
                {{"missedTriggersOverflow", counted(VN_COUNTER_MISSED_TRG_OVERFLOW), ""},
                 {"overflows", counted(VN_COUNTER_BUFFER_OVERFLOW), ""}});
    }

    void lookAtReset()
    {
        if (in.countersReset > 0)
            add(Kind::CountersReset,
                tr("Counters of the camera began anew, so how far they counted is not known. The camera may have "
                   "been "
                   "restarted, or another program has reset them."),
                {{"countersReset", double(in.countersReset), ""}});
    }

    void lookAtClock()
    {
        if (in.driftPpm && std::abs(*in.driftPpm) > largeDriftPpm)
            add(Kind::ClockDrift,
                tr("The camera's clock drifts by %1 ppm against this machine's. One of them may be bad; "
                   "throughputs are wrong by as much.")
                    .arg(rounded(*in.driftPpm)),
                {{"clockDriftPpm", *in.driftPpm, "ppm"}});
    }

    void lookAtHistory()
    {
        const double runS = static_cast<double>(in.run.elapsedUs) / 1e6;
        const bool wrong = std::any_of(found.begin(), found.end(),
                                       [](const Finding& finding) { return finding.kind != Kind::CoarseArrival; });
        if (wrong && in.droppedFrames > 0)
            add(Kind::HistoryTooShort,
                tr("Only the last %1 s of %2 s are kept. What went wrong may lie before them; a greater "
                   "capacity keeps more.")
                    .arg(rounded(in.keptS), rounded(runS)),
                {{"keptS", in.keptS, "s"}, {"runS", runS, "s"}});
    }

    const DiagnosisInput& in;
    std::vector<Finding> found;
};

} // namespace

std::vector<Finding> diagnose(const DiagnosisInput& input)
{
    return Diagnosis(input).findings();
}
