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

using Change = std::function<void(FormBench&, QDialog*)>;
Q_DECLARE_METATYPE(Change)

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
        change(bench, dialog);
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
    void opensAndStores_data()
    {
        const Table<int, int, int, int, QString, QString> row("mode", "period", "capacity", "intervalMs", "opensAs",
                                                              "accepted");
        row("defaults", 0, 1024, 10000000, 1000, "0 4096 10 1", "0 4096 10000000 1000");
        row("rounded down", 0, 8192, 2499999, 1999, "0 8192 2 1", "0 8192 2000000 1000");
        row("rounded up", 1, 51200, 2500000, 1000000, "1 (51200) 3 1000", "1 51200 3000000 1000000");
        row("odd period", 0, 4100, 1, 999, "0 4100 1 1", "0 4100 1000000 1000");
        row("far too high", highest, highest, highest, highest, "0 51200 2000 1000", "0 51200 2000000000 1000000");
        row("far too low", lowest, lowest, lowest, 0, "0 4096 1 1", "0 4096 1000000 1000");
    }
    void opensAndStores()
    {
        QFETCH(int, mode);
        QFETCH(int, period);
        QFETCH(int, capacity);
        QFETCH(int, intervalMs);
        QFETCH(QString, opensAs);
        FormBench bench;
        bench.form->measMode = mode;
        bench.form->samplePeriod = period;
        bench.form->maxSamples = capacity;
        bench.form->refreshTimer.setInterval(intervalMs);
        const QString before = kept(*bench.form);
        const auto look = [&](FormBench&, QDialog* dialog) { QCOMPARE(shown(dialog), opensAs); };
        visitSetup(bench, look, QDialogButtonBox::Cancel);
        QCOMPARE(kept(*bench.form), before);
        visitSetup(bench, look);
        QTEST(kept(*bench.form), "accepted");
    }

    void controls()
    {
        FormBench bench;
        visitSetup(bench, [](FormBench&, QDialog* dialog) {
            // The sample period is stepped, never typed.
            auto* period = spin(dialog, "spinSamplePeriod");
            period->setFocus();
            QTest::keyClicks(period, QStringLiteral("9"));
            QCOMPARE(period->value(), 4096);
            QTest::keyClick(period, Qt::Key_Up);
            QCOMPARE(period->value(), 5120);

            modes(dialog)->setFocus();
            QTest::keyClick(modes(dialog), Qt::Key_Down);
            QCOMPARE(shown(dialog), QStringLiteral("1 (5120) 10 1"));
            QTest::keyClick(modes(dialog), Qt::Key_Up);
            QCOMPARE(shown(dialog), QStringLiteral("0 5120 10 1"));
        });
    }

    void reaction_data()
    {
        // rowsAfter: "names: columns period interval"
        const Table<bool, QString, Change> row("framesKept", "rowsAfter", "change");
        row("nothing", true, "AB: 12 4096 1000", [](FormBench&, QDialog*) {});
        row("capacity", true, "AB: 12 4096 1000",
            [](FormBench&, QDialog* dialog) { spin(dialog, "spinCapacity")->stepUp(); });
        row("sample period", false, "AB: 12 5120 1000",
            [](FormBench&, QDialog* dialog) { spin(dialog, "spinSamplePeriod")->stepUp(); });
        row("mode", false, "AB: 11 4096 1000",
            [](FormBench&, QDialog* dialog) { modes(dialog)->setCurrentIndex(1); });
        row("mode there and back", true, "AB: 12 4096 1000", [](FormBench&, QDialog* dialog) {
            modes(dialog)->setCurrentIndex(1);
            modes(dialog)->setCurrentIndex(0);
        });
    }
    void reaction()
    {
        QFETCH(Change, change);
        QFETCH(bool, framesKept);
        FormBench bench(2);
        bench.form->samplePeriod = 4096;
        for (CxCameraLineData* record : qAsConst(bench.form->lineDataMap))
            appendFrame(*record, bench.nowUs, {0, 1000});
        visitSetup(bench, change);

        QString names;
        for (int row = 0; row < bench.table()->rowCount(); ++row)
            names += bench.cell(row, cameraColumn).left(1);
        QTEST(names + QStringLiteral(": %1 %2 %3")
                          .arg(bench.table()->columnCount())
                          .arg(bench.form->samplePeriod)
                          .arg(bench.form->refreshTimer.interval()),
              "rowsAfter");
        for (const CxCameraLineData* record : qAsConst(bench.form->lineDataMap)) {
            QCOMPARE(record->hasFrames(), framesKept);
            QCOMPARE(record->measMode, bench.form->measMode);
        }
    }

    void capacityHint_data()
    {
        // frameIntervalUs: of a standard measurement
        const Table<int, int, double, double, QString> row("mode", "required", "average", "frameIntervalUs", "lasts");
        row("average rate", 0, 1000, 512.0, 0.0, "lasts 80 s");
        row("required rate", 0, 1024, 0.0, 0.0, "lasts 40 s");
        row("no finite average", 0, 1, HUGE_VAL, 0.0, "lasts 11 h");
        row("no rate at all", 0, 0, 0.0, 0.0, "not known before its first measurement");
        row("frames", 1, 1000, 500.0, 1000.0, "lasts 2.8 h");
        row("no frames", 1, 1000, 500.0, 0.0, "not known before its first measurement");
    }
    void capacityHint()
    {
        QFETCH(int, mode);
        QFETCH(int, required);
        QFETCH(double, average);
        QFETCH(double, frameIntervalUs);
        QFETCH(QString, lasts);
        FormBench bench(1, mode);
        CxCameraLineData& record = bench.record(0);
        record.cameraName = QStringLiteral("<b>%1</b> %2");
        record.requiredThroughput = required;
        record.avgThroughput = average;
        record.avgFrameTime = frameIntervalUs;
        if (frameIntervalUs > 0)
            addSample(record, bench.nowUs, 0);
        visitSetup(bench, [&](FormBench&, QDialog* dialog) {
            QTextDocument text;
            text.setHtml(spin(dialog, "spinCapacity")->toolTip());
            const QStringList lines = text.toPlainText().split(QLatin1Char('\n'));
            QVERIFY2(lines.value(0).contains(mode == 0 ? QStringLiteral(" 85 MB ") : QStringLiteral(" 640 MB ")),
                     qPrintable(lines.value(0)));
            QCOMPARE(lines.value(1), QStringLiteral("<b>%1</b> %2: ") + lasts);
            const QString before = spin(dialog, "spinCapacity")->toolTip();
            spin(dialog, "spinCapacity")->setValue(2000);
            QVERIFY(spin(dialog, "spinCapacity")->toolTip() != before);
        });
    }

    void memory_data()
    {
        // told: bytes a sample, by the tool tip or docs/measurements.md
        const Table<int, int, double> row("mode", "blocks", "told");
        row("tool tip, frames", 0, usualBlocksPerFrame, memoryOf({0, 1, 4096}));
        row("tool tip, counters", 1, 1, memoryOf({1, 1, 4096}));
        row("small frames", 0, 64, bytesPerBlock + bytesPerFrame / 64);
        row("large frames", 0, 1024, bytesPerBlock + (bytesPerFrame + 16 + 11 * 24) / 1024);
    }
    void memory()
    {
#ifdef __SANITIZE_ADDRESS__
        QSKIP("the sanitizer has an allocator of its own");
#endif
        QFETCH(int, mode);
        QFETCH(int, blocks);
        QFETCH(double, told);
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
};

QTEST_MAIN(FormSetupTest)
#include "tst_formsetup.moc"
