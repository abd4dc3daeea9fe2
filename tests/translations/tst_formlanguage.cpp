// SPDX-License-Identifier: GPL-3.0-or-later
// The form in other languages: what compares or looks up texts still works, and nothing is cut off.
#include "FormBench.h"
#include "Language.h"
#include "setup/DataGraphSetupDlg.h"
#include "Table.h"

class FormLanguageTest : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startAllAndStopAll()
    {
        installLanguage(QStringLiteral("de"));
        FormBench bench(2);
        const auto texts = [&bench] {
            return QStringList{bench.child<QPushButton>("btnStartAll")->text(), bench.measureButton(1)->text(),
                               bench.status(1)};
        };
        QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Abbrechen")); // Qt's own
        const QStringList stopped{"Alle starten", "Start", "Gestoppt"};
        QCOMPARE(texts(), stopped);
        bench.press("btnStartAll");
        QCOMPARE(texts(), (QStringList{"Alle stoppen", "Stopp", "Misst"}));
        bench.press("btnStartAll");
        QCOMPARE(texts(), stopped);
    }

    void curveBoxes_data()
    {
        const Table<int, int, QString> row("mode", "box", "curve");
        row("throughput", MeasModeDataThroughput, 0, "Min throughput");
        row("throughput, level", MeasModeDataThroughput, 1, "Max buffer level");
        row("counters", MeasModeStandardAcq, 4, "Buffer overflow");
    }
    void curveBoxes()
    {
        QFETCH(int, mode);
        QFETCH(int, box);
        QFETCH(QString, curve);
        installLanguage(QStringLiteral("de"));
        FormBench bench(1, mode);
        for (const auto& kind : bench.record(0).counterList)
            kind->supported = true;
        const auto isShown = [&] { return !bench.curveNames().filter(curve).isEmpty(); };
        bench.tick();
        QVERIFY(isShown());
        bench.curveBox(box)->click();
        bench.tick();
        QVERIFY(!isShown());
    }

    void counterAxis_data()
    {
        const Table<int, int, QString> row("first", "last", "expected");
        row("from 0", 0, 250, "-0.8..300");
        row("from 100", 100, 250, "80..300");
        row("all 0", 0, 0, "-0.8..1.2");
        row("no sample in range", -1, -1, "-0.8..1.2");
        row("no curve", -2, -2, "1.2..1.71799e+09");
    }
    void counterAxis()
    {
        QFETCH(int, first);
        QFETCH(int, last);
        installLanguage(QStringLiteral("de"));
        FormBench bench(1, MeasModeStandardAcq);
        for (const auto& kind : bench.record(0).counterList)
            kind->supported = first != -2;
        const qint64 at = bench.nowUs - (first < 0 ? 3600LL : 10LL) * 1'000'000;
        addSample(bench.record(0), at - 1'000'000, 7); // the first one is never a point
        addSample(bench.record(0), at, first);
        addSample(bench.record(0), at + 1'000'000, last);
        bench.tick();
        const QCPAxis* axis = bench.area(0)->axis(QCPAxis::atLeft);
        QCOMPARE(axis->label(), QStringLiteral("Zählerstand"));
        QTEST(rangeText(axis), "expected");
    }

    void nothingIsCutOff_data()
    {
        const Table<QString, int> row("language", "mode");
        row("German, throughput", "de", MeasModeDataThroughput);
        row("German, counters", "de", MeasModeStandardAcq);
        row("Chinese, throughput", "zh_CN", MeasModeDataThroughput);
        row("Chinese, counters", "zh_CN", MeasModeStandardAcq);
    }
    void nothingIsCutOff()
    {
        QFETCH(QString, language);
        QFETCH(int, mode);
        installLanguage(language);
        FormBench bench(2, mode);
        CxDataGraphSetupDlg setup(bench.form.get(), nullptr);
        for (QWidget* window : {static_cast<QWidget*>(bench.form.get()), static_cast<QWidget*>(&setup)}) {
            window->show();
            bench.tick();
            for (const QWidget* widget : window->findChildren<QWidget*>()) {
                if (widget->isVisible() &&
                    (qobject_cast<const QAbstractButton*>(widget) || qobject_cast<const QLabel*>(widget))) {
                    QVERIFY2(widget->width() >= widget->minimumSizeHint().width(),
                             qPrintable(widget->objectName() + widget->property("text").toString()));
                }
            }
        }
        const QHeaderView* header = bench.table()->horizontalHeader();
        for (int column = 0; column < header->count(); ++column) {
            const QTableWidgetItem* item = bench.table()->horizontalHeaderItem(column);
            const QFont font = item->data(Qt::FontRole).isValid() ? item->font() : header->font();
            const QSize text = QFontMetrics(font).boundingRect(QRect(0, 0, 1000, 1000), 0, item->text()).size();
            QVERIFY2(text.width() <= header->sectionSize(column) && text.height() <= header->height() + 2,
                     qPrintable(
                         QStringLiteral("%1: %2 in %3").arg(item->text()).arg(text.height()).arg(header->height())));
        }
    }

    void cleanup()
    {
        const auto translators = QCoreApplication::instance()->findChildren<QTranslator*>();
        qDeleteAll(translators);
    }
};

QTEST_MAIN(FormLanguageTest)
#include "tst_formlanguage.moc"
