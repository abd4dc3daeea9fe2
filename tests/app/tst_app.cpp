// SPDX-License-Identifier: GPL-3.0-or-later
// What both programs understand: times and numbers, and which cameras are meant.
#include <QtTest/QtTest>

#include "CameraSelection.h"
#include "NumberText.h"
#include "Table.h"

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
    void times()
    {
        // -1: refused
        const Rows<const char*, qint64> rows{
            {"10s", 10000}, {"10", 10000},   {"0.25s", 250},  {"1500ms", 1500},  {"1.001s", 1001},
            {"1m", 60000},  {"1min", 60000}, {"2h", 7200000}, {"1d", 86400000},  {"", -1},
            {"0", -1},      {"0.0001s", -1}, {"-1s", -1},     {"ten", -1},       {"1x", -1},
            {"1e3", -1},    {"nan", -1},     {"10 s", -1},    {"99999999d", -1}, {"3650d", 315360000000},
            {"3651d", -1},  {"1.s", -1}};
        for (const auto& [text, ms] : rows) {
            const auto time = timeFromText(QLatin1String(text));
            QVERIFY2((time ? qint64(time->count()) : -1) == ms, text);
        }
    }

    void camerasAreFound()
    {
        using Fault = Selection::Fault;
        const std::vector<SxCameraInfo> known{info("Same", "1", "Left"), info("Same", "2"), info("Other", "3", "2"),
                                              info("3", "4")};
        const Rows<QStringList, std::vector<int>, Fault> rows{
            {{"2"}, {1}, Fault::None}, // an ID goes before any name
            {{"3"}, {2}, Fault::None},
            {{"4"}, {3}, Fault::None},
            {{"Other"}, {2}, Fault::None},
            {{"Left"}, {0}, Fault::None},
            {{"3", "Left", "1"}, {0, 2}, Fault::None}, // each once, in their order
            {{"1", "left"}, {}, Fault::Missing},
            {{"Same"}, {}, Fault::Ambiguous}};
        for (const auto& [names, found, fault] : rows) {
            const Selection selection = selectCameras(known, names);
            const bool candidates = selection.text.contains("1 = Same (Left), 2 = Same (2)");
            QVERIFY2(selection.cameras == found && selection.fault == fault &&
                         candidates == (fault == Fault::Ambiguous),
                     qPrintable(names.join(' ')));
        }
    }
};

QTEST_GUILESS_MAIN(TestApp)
#include "tst_app.moc"
