// SPDX-License-Identifier: GPL-3.0-or-later
// Settings that nobody wrote on purpose: every key of form and viewer absent, of another type, at its limits and beyond
// them, and the whole file torn off or changed at any place. Nothing crashes, and no control shows what it cannot.
#include <random>

#include <vnCoreGui/CxExportToolButton.h>

#include "DialogRobot.h"
#include "EventLog.h"
#include "Files.h"
#include "FormBench.h"
#include "MainWindow.h"
#include "SettingsStore.h"
#include "Table.h"
#include "TakeOvers.h"
#include "Viewer.h"

namespace {

constexpr const char* formKeys[] = {"DTGTSamplePeriod", "DTGTMaxSamples", "DTGTExportType", "DTGTMeasMode",
                                    "DTGTLiveGraph"};
constexpr const char* viewerKeys[] = {"geometry", "docks", "lastDirectory", "detailLevel"};

/// As they stand in the file.
const auto values =
    QByteArray(";x;-1;0;1;7;2147483647;-2147483648;99999999999999999999;1.5e300;nan;1, 2, 3;@Invalid();"
               "@ByteArray(\\0\\x1\\xff);@Rect(1 2 -3 4);@Variant(\\0\\0\\0\\x7f);"
               "\"@Variant(\\0\\0\\0\\t\\xff)\"")
        .split(';');

} // namespace

class SettingsTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void init() { settingsFile = directory.filePath(QStringLiteral("settings.ini")); }
    void formTakesAnyValue_data() { rows(formKeys); }
    void formTakesAnyValue()
    {
        QFETCH(QByteArray, line);
        writeFile(settingsFile, line + '\n');
        const CriticalLines quiet;
        FormBench bench(1);
        QSettings settings(settingsFile, QSettings::IniFormat);
        DialogRobot robot;
        robot.fileName = directory.filePath(QStringLiteral("graph.png"));
        int shown = 0;
        robot.answer = [&shown](QDialog* setup) {
            for (const QSpinBox* spin : setup->findChildren<QSpinBox*>())
                shown += spin->value() >= spin->minimum() && spin->value() <= spin->maximum();
            const auto* mode = setup->findChild<QComboBox*>();
            shown += mode->currentIndex() < mode->count();
            setup->accept();
        };
        const auto before = bench.cameras[0]->parameters();
        const CxCameraLineData& record = bench.record(0);
        // With what is loaded while the camera measures, with that from the start, with what the setup dialog has made of it.
        for (int run = 0; run < 3; ++run) {
            bench.deliverFrames(0, 3);
            bench.press("btnStartAll");
            if (run == 0) {
                QTRY_COMPARE(record.runTotals().frames, quint64(3));
                const quint64 blocks = record.frameList.back()->blockCount;
                bench.form->loadSettings(settings);
                bench.deliverFrames(0, 3);
                QTRY_COMPARE(record.runTotals().frames, quint64(6));
                QCOMPARE(record.frameList.size(), quint64(6));
                QCOMPARE(record.frameList.back()->blockCount, blocks);
                QCOMPARE(record.evaluationSettings().samplePeriod, 1024U);
            }
            bench.tick();
            bench.press("btnStartAll");
            bench.invoke("updateGraph");
            QMetaObject::invokeMethod(bench.form.get(), "onBtnExport", Q_ARG(int, ExportToFile));
            bench.press("btnSetup");
        }
        QCOMPARE(shown, 3 * 4);
        QCOMPARE(bench.cameras[0]->parameters(), before);
        bench.form->saveSettings(settings);
    }

    void viewerTakesAnyValue_data() { rows(viewerKeys); }
    void viewerTakesAnyValue()
    {
        QFETCH(QByteArray, line);
        writeFile(settingsFile, "[Viewer]\n" + line + '\n');
        checkViewer();
    }

    /// Torn off after every byte, and changed at every one; now and then the whole viewer begins with it.
    void viewerTakesAnyFile()
    {
        constexpr int viewerEvery = 100;
        QFile::remove(settingsFile);
        checkViewer();
        const QByteArray whole = readFile(settingsFile);
        QVERIFY(whole.size() > 500);
        std::mt19937 random(6);
        EventLog log;
        TakeOvers takeOvers;
        MainWindow window(takeOvers, log);
        for (int at = 0; at < whole.size(); ++at) {
            QByteArray changed = whole;
            changed[at] = char(std::uniform_int_distribution<int>(0, 255)(random));
            for (const QByteArray& content : {whole.left(at), changed}) {
                writeFile(settingsFile, content);
                if (at % viewerEvery == 0) {
                    checkViewer();
                } else {
                    SettingsStore store(settingsFile);
                    store.settings().beginGroup(QStringLiteral("Viewer"));
                    window.restoreArrangement(store.settings());
                }
                if (QTest::currentTestFailed())
                    QFAIL(content);
            }
        }
    }

private:
    template<class Keys>
    static void rows(const Keys& keys)
    {
        const Table<QByteArray> row("line");
        for (const char* key : keys) {
            for (const QByteArray& value : values) {
                const QByteArray line = QByteArray(key) + '=' + value;
                row(line, line);
            }
        }
    }

    /// It starts with the present file, and the next start finds a good one.
    void checkViewer() const
    {
        ViewerOptions options;
        options.settingsFile = settingsFile;
        options.openAll = false;
        Viewer viewer(options);
        QCOMPARE(viewer.start(), QString());
        const int level = IxAppDelegate::instance()->applicationOptions().detailLevel;
        QVERIFY(level >= 1 && level <= 5);
        const QAction* checked = viewer.window().findChild<QActionGroup*>()->checkedAction();
        QVERIFY(checked && checked->data().toInt() == level);
        QVERIFY(QFileInfo(IxAppDelegate::instance()->lastDirectory()).isDir());
        const QSize size = viewer.window().size();
        QVERIFY(size.width() > 0 && size.height() > 0 && size.width() < 10000 && size.height() < 10000);
        viewer.shutDown();
        QVERIFY(SettingsStore(settingsFile).damagedFile().isEmpty());
    }

    QTemporaryDir directory;
    QString settingsFile;
};

QTEST_MAIN(SettingsTest)
#include "tst_settings.moc"
