// SPDX-License-Identifier: GPL-3.0-or-later
// The setup dialog and the form's reaction, by the real controls.
#include <numeric>

#include <malloc.h>

#include <vnCoreGui/CxExportToolButton.h>

#include "DialogRobot.h"
#include "FormBench.h"
#include "RandomRecord.h"
#include "setup/CapacityHint.h"
#include "Table.h"

using Change = std::function<void(QDialog*)>;

namespace {

QSpinBox* spin(const QDialog* dialog, const char* name)
{
    return dialog->findChild<QSpinBox*>(QLatin1String(name));
}

QComboBox* modes(const QDialog* dialog)
{
    return dialog->findChild<QComboBox*>(QStringLiteral("measureMode"));
}

void press(const QDialog* dialog, QDialogButtonBox::StandardButton button)
{
    QTest::mouseClick(dialog->findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
}

/// "mode period capacity refresh", the period in brackets while it cannot be changed.
QString shown(const QDialog* dialog)
{
    const bool enabled = spin(dialog, "spinSamplePeriod")->isEnabled();
    for (const char* label : {"label_samplePeriod", "label_bytes"}) {
        if (dialog->findChild<QLabel*>(QLatin1String(label))->isEnabled() != enabled)
            return QStringLiteral("label and box differ");
    }
    return QString::fromLatin1(enabled ? "%1 %2 %3 %4" : "%1 (%2) %3 %4")
        .arg(modes(dialog)->currentIndex())
        .arg(spin(dialog, "spinSamplePeriod")->value())
        .arg(spin(dialog, "spinCapacity")->value())
        .arg(spin(dialog, "graphRefreshPeriod")->value());
}

QString kept(const CxDataGraphForm& form)
{
    return QStringLiteral("%1 %2 %3 %4")
        .arg(form.measMode)
        .arg(form.samplePeriod)
        .arg(form.maxSamples)
        .arg(form.refreshTimer.interval());
}

/// Opens the setup dialog by its button and leaves it by one of the dialog's.
void visitSetup(FormBench& bench, const Change& change,
                QDialogButtonBox::StandardButton leaveBy = QDialogButtonBox::Ok)
{
    DialogRobot robot;
    robot.answer = [&](QDialog* dialog) {
        change(dialog);
        press(dialog, leaveBy);
    };
    bench.press("btnSetup");
}

constexpr int lowest = std::numeric_limits<int>::min();
constexpr int highest = std::numeric_limits<int>::max();

} // namespace

class FormSetupTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void opensAndStores()
    {
        const Rows<int, int, int, int, QString, QString> rows{
            {0, 1024, 10000000, 1000, "0 4096 10 1", "0 4096 10000000 1000"},
            {0, 8192, 2499999, 1999, "0 8192 2 1", "0 8192 2000000 1000"}, // rounded down
            {1, 51200, 2500000, 1000000, "1 (51200) 3 1000", "1 51200 3000000 1000000"},
            {0, 4100, 1, 999, "0 4100 1 1", "0 4100 1000000 1000"},
            {highest, highest, highest, highest, "0 51200 2000 1000", "0 51200 2000000000 1000000"},
            {lowest, lowest, lowest, 0, "0 4096 1 1", "0 4096 1000000 1000"}};
        for (const auto& [mode, period, capacity, intervalMs, opensAs, accepted] : rows) {
            FormBench bench;
            bench.form->measMode = mode;
            bench.form->samplePeriod = period;
            bench.form->maxSamples = capacity;
            bench.form->refreshTimer.setInterval(intervalMs);
            const QString before = kept(*bench.form);
            QString opened;
            const auto look = [&](QDialog* dialog) { opened = shown(dialog); };
            visitSetup(bench, look, QDialogButtonBox::Cancel);
            QCOMPARE(opened + ", " + kept(*bench.form), opensAs + ", " + before);
            visitSetup(bench, look);
            QCOMPARE(opened + ", " + kept(*bench.form), opensAs + ", " + accepted);
        }
    }

    void controls()
    {
        FormBench bench;
        visitSetup(bench, [](QDialog* dialog) {
            auto* period = spin(dialog, "spinSamplePeriod"); // is stepped, never typed
            const Rows<QWidget*, int, QString> rows{{period, Qt::Key_9, "0 4096 10 1"},
                                                    {period, Qt::Key_Up, "0 5120 10 1"},
                                                    {modes(dialog), Qt::Key_Down, "1 (5120) 10 1"},
                                                    {modes(dialog), Qt::Key_Up, "0 5120 10 1"}};
            for (const auto& [widget, key, expected] : rows) {
                widget->setFocus();
                QTest::keyClick(widget, Qt::Key(key));
                QCOMPARE(shown(dialog), expected);
            }
        });
    }

    void reaction()
    {
        const auto step = [](const char* name) { return [name](QDialog* dialog) { spin(dialog, name)->stepUp(); }; };
        const auto mode = [](QDialog* dialog) { modes(dialog)->setCurrentIndex(1); };
        // after: "names: columns period interval"
        const Rows<Change, bool, QString> rows{{[](QDialog*) {}, true, "AB: 12 4096 1000"},
                                               {step("spinCapacity"), true, "AB: 12 4096 1000"},
                                               {step("spinSamplePeriod"), false, "AB: 12 5120 1000"},
                                               {mode, false, "AB: 11 4096 1000"},
                                               {[mode](QDialog* dialog) {
                                                    mode(dialog);
                                                    modes(dialog)->setCurrentIndex(0);
                                                },
                                                true, "AB: 12 4096 1000"}};
        for (const auto& [change, framesKept, after] : rows) {
            FormBench bench(2);
            bench.form->samplePeriod = 4096;
            for (CxCameraLineData* record : qAsConst(bench.form->lineDataMap))
                appendFrame(*record, bench.nowUs, {0, 1000});
            visitSetup(bench, change);
            QString names;
            for (const QString& camera : bench.columnTexts(cameraColumn))
                names += camera.left(1);
            QCOMPARE(names + QStringLiteral(": %1 %2 %3")
                                 .arg(bench.table()->columnCount())
                                 .arg(bench.form->samplePeriod)
                                 .arg(bench.form->refreshTimer.interval()),
                     after);
            for (const CxCameraLineData* record : qAsConst(bench.form->lineDataMap))
                QVERIFY(record->hasFrames() == framesKept && record->measMode == bench.form->measMode);
        }
    }

    void capacityHint()
    {
        // frames: measured in half a second, of 8 KiB each
        const Rows<int, int, int, QString> rows{{0, 1024, 0, " 86 MB , the last 40 s at the required throughput"},
                                                {0, 0, 0, " 86 MB , not known before its first measurement"},
                                                {0, 1024, 4, " 86 MB , the last 7.2 d at the present rate"},
                                                {1, 1024, 4, " 656 MB , the last 14 d at the present rate"},
                                                {1, 1024, 0, " 656 MB , not known before its first measurement"}};
        for (const auto& [mode, required, frames, told] : rows) {
            FormBench bench(14, mode);
            CxCameraLineData& record = bench.record(0);
            record.cameraName = QStringLiteral("<b>%1</b> %2");
            for (CxCameraLineData* each : qAsConst(bench.form->lineDataMap))
                each->requiredThroughput = each == &record ? required : 0;
            if (frames > 0) {
                record.autoRequiredThroughput = false;
                bench.measureButton(0)->click();
                bench.deliverFrames(0, frames);
                QTRY_COMPARE(int(record.runTotals().frames), frames);
                bench.nowUs += second / 2;
                bench.measureButton(0)->click();
                const QString kept = QLatin1String(mode == MeasModeStandardAcq ? "14 d" : "43 h"); // shorter periods
                QVERIFY(bench.table()
                            ->item(0, statusColumn)
                            ->toolTip()
                            .contains("Kept are the last " + kept +
                                      " at the present rate: capacity 10,000,000 samples."));
            }
            QString before;
            QSet<QString> hints; // another one whatever is changed
            visitSetup(bench, [&](QDialog* dialog) {
                const auto note = [&] { hints << spin(dialog, "spinCapacity")->toolTip(); };
                before = spin(dialog, "spinCapacity")->toolTip();
                modes(dialog)->setCurrentIndex(0), note();
                bench.record(0).requiredThroughput = 5;
                spin(dialog, "spinSamplePeriod")->stepUp(), note();
                modes(dialog)->setCurrentIndex(1), note();
                spin(dialog, "spinCapacity")->setValue(2000), note();
            });
            QVERIFY(hints.size() >= 3);
            QTextDocument text;
            text.setHtml(before);
            const QStringList lines = text.toPlainText().split(QLatin1Char('\n'));
            QVERIFY(lines[0].startsWith("10,000,000 samples"));
            const QString memory = QRegularExpression(QStringLiteral(" [0-9]+ MB ")).match(lines[0]).captured();
            QCOMPARE(memory + lines.value(1), QString(told).replace(", ", "<b>%1</b> %2: "));
            QCOMPARE(lines.size(), 14); // not all cameras
            QCOMPARE(lines.last(), QString("and 2 other cameras"));
        }
    }

    void memory()
    {
#ifdef __SANITIZE_ADDRESS__
        QSKIP("the sanitizer has an allocator of its own");
#endif
        // told: bytes a sample, by the tool tip or docs/measurements.md
        for (const auto& [mode, blocks, told] :
             Rows<int, int, double>{{0, usualBlocksPerFrame, memoryOf({0, 1, 4096})},
                                    {1, 1, memoryOf({1, 1, 4096})},
                                    {0, 64, bytesPerBlock + bytesPerFrame / 64},
                                    {0, 1024, bytesPerBlock + (bytesPerFrame + 16 + 11 * 24) / 1024}}) {
            constexpr int frames = 5120;
            std::vector<quint64> ticks(static_cast<size_t>(blocks));
            std::iota(ticks.begin(), ticks.end(), 0);
            CxCameraLineData data;
            const size_t before = mallinfo2().uordblks;
            for (int i = 0; i < frames; ++i) {
                if (mode == MeasModeStandardAcq)
                    addSample(data, i, 0);
                else
                    appendFrame(data, i, ticks);
            }
            const double measured = double(mallinfo2().uordblks - before) / (frames * blocks);
            QVERIFY2(std::abs(measured / told - 1.0) < 0.03, qPrintable(QString::number(measured)));
        }
    }
};

QTEST_MAIN(FormSetupTest)
#include "tst_formsetup.moc"
