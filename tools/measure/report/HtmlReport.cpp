// SPDX-License-Identifier: GPL-3.0-or-later
// The report's sections, the verdict first.
#include "HtmlReport.h"

#include <algorithm>

#include "CourseGraph.h"
#include "DistributionGraph.h"
#include "HtmlStyle.h"
#include "TimeText.h"

namespace {

const QString unknown = QStringLiteral("n/a");

const char* word(Outcome outcome)
{
    switch (outcome) {
    case Outcome::Pass:
        return "PASS";
    case Outcome::Fail:
        return "FAIL";
    case Outcome::NoLimits:
        break;
    }
    return "NO LIMITS";
}

Markup badge(Outcome outcome)
{
    const char* tag = outcome == Outcome::Pass   ? "span class=\"badge pass\""
                      : outcome == Outcome::Fail ? "span class=\"badge fail\""
                                                 : "span class=\"badge\"";
    return element(tag, QLatin1String(word(outcome)));
}

/// The verdict in a sentence or two.
QString verdictSentence(const ReportContent& content)
{
    const std::size_t all = content.cameras.size();
    const auto those = [&content, all](auto which) {
        const auto count = std::count_if(content.cameras.begin(), content.cameras.end(), which);
        return count == 0 ? QString()
               : all == 1 ? QStringLiteral("The camera")
                          : QStringLiteral("%1 of %2 cameras").arg(count).arg(all);
    };
    const QString broken = those([](const ReportCamera& camera) {
        return std::any_of(camera.limits.begin(), camera.limits.end(),
                           [](const ReportLimit& limit) { return !limit.kept; });
    });
    const QString troubled = those([](const ReportCamera& camera) { return !camera.problems.isEmpty(); });
    QStringList sentences;
    if (!broken.isEmpty())
        sentences << broken + QStringLiteral(" did not keep to the limits.");
    if (!troubled.isEmpty())
        sentences << troubled + QStringLiteral(" could not be measured throughout.");
    if (content.outcome == Outcome::NoLimits)
        sentences << QStringLiteral("No limits were set.");
    else if (sentences.isEmpty())
        sentences << (all == 1 ? QStringLiteral("The camera kept to all limits.")
                               : QStringLiteral("All %1 cameras kept to their limits.").arg(all));
    if (content.outcome == Outcome::Fail && broken.isEmpty() && troubled.isEmpty())
        sentences << QStringLiteral("Not all results could be written.");
    return sentences.join(QLatin1Char(' '));
}

Markup bullets(const char* list, const QStringList& texts)
{
    Markup items;
    for (const QString& text : texts)
        items += element("li", text);
    return items.isEmpty() ? items : element(list, items);
}

Markup head(const ReportContent& content)
{
    const double lengthS = static_cast<double>(content.start.msecsTo(content.end)) / 1e3;
    const QString times =
        QStringLiteral("%1 to %2 (%3), %4")
            .arg(timeText(content.start), timeText(content.end), zoneText(content.start), lengthText(lengthS));
    return element(
        "header",
        element("p class=\"tool\"",
                QStringLiteral("%1, exit code %2").arg(content.program, QString::number(content.exitCode))) +
            element("h1", badge(content.outcome) + plain(verdictSentence(content))) +
            element("p class=\"when\"", times) + bullets("ul class=\"notes\"", content.notes));
}

Markup figureValue(const ReportFigure& figure)
{
    if (figure.value.isEmpty())
        return element("small", unknown);
    Markup value = element("b", figure.value);
    if (!figure.unit.isEmpty())
        value += literal("&#8239;") + element("small", figure.unit);
    return value;
}

/// A row for each camera; where there is no room for columns, each cell shows its title.
Markup overview(const ReportContent& content)
{
    if (content.cameras.size() < 2)
        return {};
    const auto title = [](const ReportFigure& figure) {
        return figure.unit.isEmpty() ? figure.brief : figure.brief + QStringLiteral(", ") + figure.unit;
    };
    Markup headings = element("th", QStringLiteral("Camera")) + element("th", QStringLiteral("Verdict"));
    for (const ReportFigure& figure : content.cameras.front().figures) {
        if (!figure.brief.isEmpty())
            headings += element("th class=\"n\"", title(figure));
    }
    Markup rows;
    int number = 0;
    for (const ReportCamera& camera : content.cameras) {
        Markup cells =
            element("th", numbered("<a href=\"#camera-%1\">", ++number) + plain(camera.name) + literal("</a>")) +
            element("td", badge(camera.outcome));
        for (const ReportFigure& figure : camera.figures) {
            if (!figure.brief.isEmpty())
                cells += literal(figure.broken ? "<td class=\"n broken\" data-title=\""
                                               : "<td class=\"n\" data-title=\"") +
                         plain(title(figure)) + literal("\">") +
                         plain(figure.value.isEmpty() ? unknown : figure.value) + literal("</td>");
        }
        rows += element("tr", cells);
    }
    return element("section", element("h2", QStringLiteral("Cameras")) +
                                  element("table class=\"overview\"",
                                          element("thead", element("tr", headings)) + element("tbody", rows)));
}

Markup limitTable(const ReportCamera& camera)
{
    if (camera.limits.empty())
        return {};
    Markup rows;
    for (const ReportLimit& limit : camera.limits)
        rows += element(limit.kept ? "tr" : "tr class=\"broken\"",
                        element("td class=\"mark\"", QLatin1String(limit.kept ? "kept" : "broken")) +
                            element("td", limit.text) + element("td class=\"n\"", limit.measured) +
                            element("td", limit.broken));
    const Markup headings = literal("<tr><th></th><th>Limit</th><th class=\"n\">Measured</th><th>Broken</th></tr>");
    return element("h3", QStringLiteral("Limits")) +
           element("div class=\"wide\"",
                   element("table class=\"limits\"", element("thead", headings) + element("tbody", rows)));
}

Markup figureTiles(const std::vector<ReportFigure>& figures)
{
    Markup tiles;
    for (const ReportFigure& figure : figures)
        tiles += element(figure.broken ? "div class=\"broken\"" : "div",
                         element("dt", figure.title) + element("dd", figureValue(figure)));
    return element("dl class=\"tiles\"", tiles);
}

Markup distribution(const ReportCamera& camera)
{
    const Markup graph = distributionGraph(camera.distribution);
    return graph.isEmpty() ? graph : graph + figureTiles(camera.quantiles);
}

Markup findings(const ReportCamera& camera)
{
    Markup items;
    for (const ReportFinding& finding : camera.findings) {
        Markup figures;
        for (const ReportFigure& figure : finding.figures)
            figures += element("span", plain(figure.title + QLatin1Char(' ')) + figureValue(figure));
        items += element("li", plain(finding.sentence) + element("p class=\"behind\"", figures));
    }
    return items.isEmpty() ? items
                           : element("h3", QStringLiteral("Possible causes")) + element("ul class=\"why\"", items);
}

Markup cameraSection(const ReportCamera& camera, int number)
{
    const auto titled = [](const char* title, const Markup& graphs) {
        return graphs.isEmpty() ? graphs : element("h3", QLatin1String(title)) + graphs;
    };
    return numbered("<article id=\"camera-%1\">", number) +
           element("h2", badge(camera.outcome) + plain(camera.name)) +
           bullets("ul class=\"problems\"", camera.problems) + bullets("ul class=\"warnings\"", camera.warnings) +
           limitTable(camera) + titled("Figures", figureTiles(camera.figures)) + findings(camera) +
           titled("Course of the run", courseGraphs(camera)) + titled("Distribution", distribution(camera)) +
           literal("</article>");
}

Markup linkTable(const ReportContent& content)
{
    if (content.links.empty())
        return {};
    Markup rows;
    for (const ReportLink& link : content.links) {
        Markup cells = element("th", link.name) + element("td", link.cameras);
        for (const QString& number : {link.delivered, link.rate, link.share})
            cells += element("td class=\"n\"", number);
        rows += element("tr", cells);
    }
    const Markup headings = literal("<thead><tr><th>Link</th><th>Cameras</th><th class=\"n\">Delivered, MB/s"
                                    "</th><th class=\"n\">Rate, MB/s</th><th class=\"n\">Used, %</th></tr></thead>");
    return element("section",
                   element("h2", QStringLiteral("Links")) + element("table", headings + element("tbody", rows)));
}

Markup eventList(const ReportContent& content)
{
    Markup rows;
    for (const RunEvent& event : content.events)
        rows += element(event.bad ? "tr class=\"bad\"" : "tr",
                        element("td class=\"time\"", shortTimeText(event.time)) + element("td", event.camera) +
                            element("td", event.text));
    return element("section", element("h2", QStringLiteral("Events")) +
                                  element("table class=\"events\"", element("tbody", rows)));
}

Markup factTable(const char* title, const std::vector<ReportFact>& facts)
{
    Markup rows;
    for (const ReportFact& fact : facts)
        rows += element("tr", element("th", fact.title) + element("td", fact.value));
    return element("section",
                   element("h2", QLatin1String(title)) + element("table class=\"facts\"", element("tbody", rows)));
}

} // namespace

QByteArray htmlReport(const ReportContent& content)
{
    Markup cameras;
    int number = 0;
    for (const ReportCamera& camera : content.cameras)
        cameras += cameraSection(camera, ++number);
    const QString title = QStringLiteral("%1, %2").arg(QLatin1String(word(content.outcome)), timeText(content.start));
    // Not even a mistake of this program can make the file load or run something.
    const Markup page =
        literal(
            "<!DOCTYPE html>\n<html lang=\"en\"><head><meta charset=\"utf-8\"/>"
            "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; style-src 'unsafe-inline'\"/>"
            "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\"/>"
            "<meta name=\"color-scheme\" content=\"light dark\"/>") +
        element("title", title) + element("style", literal(htmlStyle)) + literal("</head>\n<body><main>") +
        head(content) + overview(content) + linkTable(content) + cameras + eventList(content) +
        literal("<div class=\"pair\">") + factTable("Settings", content.settings) +
        factTable("Machine", content.machine) + literal("</div></main></body></html>\n");
    return page.html.toUtf8();
}
