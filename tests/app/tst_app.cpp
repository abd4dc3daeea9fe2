// SPDX-License-Identifier: GPL-3.0-or-later
// What both programs understand: times and numbers, and which cameras are meant.
#include <QtTest/QtTest>

#include "CameraSelection.h"
#include "NumberText.h"
#include "Table.h"

Q_DECLARE_METATYPE(Selection::Fault)

namespace {

SxCameraInfo info(const char* name, const char* id, const char* customId = "")
{
    return {QString::fromUtf8(name), QString::fromUtf8(id), QString::fromUtf8(customId)};
}

} // namespace

class TestApp : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void times_data()
    {
        // -1: refused
        const Table<qint64> row("ms");
        const std::pair<const char*, qint64> rows[] = {
            {"10s", 10000}, {"10", 10000},   {"0.25s", 250},  {"1500ms", 1500},  {"1.001s", 1001},
            {"1m", 60000},  {"1min", 60000}, {"2h", 7200000}, {"1d", 86400000},  {"", -1},
            {"0", -1},      {"0.0001s", -1}, {"-1s", -1},     {"ten", -1},       {"1x", -1},
            {"1e3", -1},    {"nan", -1},     {"10 s", -1},    {"99999999d", -1}, {"3650d", 315360000000},
            {"3651d", -1},  {"1.s", -1}};
        for (const auto& [text, ms] : rows)
            row(text, ms);
    }

    void times()
    {
        const auto time = timeFromText(QString::fromLatin1(QTest::currentDataTag()));
        QTEST(time ? qint64(time->count()) : qint64(-1), "ms");
    }

    void camerasAreFound_data()
    {
        const Table<QStringList, QVector<int>, Selection::Fault> row("names", "found", "fault");
        const auto none = Selection::Fault::None;
        row("by ID", {"2"}, {1}, none);
        row("by name", {"Other"}, {2}, none);
        row("by own name", {"Left"}, {0}, none);
        row("an ID goes before a name", {"3"}, {2}, none);
        row("each once, in their order", {"3", "Left", "1"}, {0, 2}, none);
        row("missing", {"1", "left"}, {}, Selection::Fault::Missing);
        row("an ID that no name is", {"4"}, {3}, none);
        row("ambiguous", {"Same"}, {}, Selection::Fault::Ambiguous);
    }

    void camerasAreFound()
    {
        QFETCH(QStringList, names);
        const std::vector<SxCameraInfo> known{info("Same", "1", "Left"), info("Same", "2"), info("Other", "3", "2"),
                                              info("3", "4")};
        const Selection selection = selectCameras(known, names);
        QTEST(QVector<int>(selection.cameras.begin(), selection.cameras.end()), "found");
        QTEST(selection.fault, "fault");
        QCOMPARE(selection.text.contains("1 = Same (Left), 2 = Same (2)"),
                 selection.fault == Selection::Fault::Ambiguous);
    }
};

QTEST_GUILESS_MAIN(TestApp)
#include "tst_app.moc"
