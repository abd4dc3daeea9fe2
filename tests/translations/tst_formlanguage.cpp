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
        FormBench bench(1);
        QCOMPARE(QCoreApplication::translate("QPlatformTheme", "Cancel"), QStringLiteral("Abbrechen")); // Qt's own
        const QString stopped = QStringLiteral("Gestoppt Start export|Alle starten setup");
        for (const QString& look : {stopped, QStringLiteral("Misst Stopp|Alle stoppen"), stopped}) {
            QCOMPARE(bench.look(), look);
            bench.press("btnStartAll");
        }
    }

    void curveBoxes()
    {
        installLanguage(QStringLiteral("de"));
        for (const auto& [mode, box, curve] : Rows<int, int, QString>{{MeasModeDataThroughput, 0, "Min throughput"},
                                                                      {MeasModeDataThroughput, 1, "Max buffer level"},
                                                                      {MeasModeStandardAcq, 4, "Buffer overflow"}}) {
            FormBench bench(1, mode);
            for (const auto& kind : bench.record(0).counterList)
                kind->supported = true;
            bench.tick();
            QCOMPARE(bench.curveNames().filter(curve).size(), 1);
            bench.curveBox(box)->click();
            bench.tick();
            QCOMPARE(bench.curveNames().filter(curve).size(), 0);
        }
    }

    void counterAxis()
    {
        installLanguage(QStringLiteral("de"));
        const Rows<int, int, QString> rows{{0, 250, "-0.8..300"},
                                           {100, 250, "80..300"},
                                           {0, 0, "-0.8..1.2"},
                                           {-1, -1, "-0.8..1.2"},         // no sample in range
                                           {-2, -2, "1.2..1.71799e+09"}}; // no curve
        for (const auto& [first, last, expected] : rows) {
            FormBench bench(1, MeasModeStandardAcq);
            for (const auto& kind : bench.record(0).counterList)
                kind->supported = first != -2;
            const qint64 at = bench.nowUs - (first < 0 ? 3600LL : 10LL) * 1'000'000;
            addSample(bench.record(0), at - 1'000'000, 7); // the first one is never a point
            addSample(bench.record(0), at, first);
            addSample(bench.record(0), at + 1'000'000, last);
            bench.tick();
            const QCPAxis* axis = bench.area(0)->axis(QCPAxis::atLeft);
            QCOMPARE(axis->label() + QLatin1Char(' ') + rangeText(axis), QStringLiteral("Zählerstand ") + expected);
        }
    }

    void nothingIsCutOff()
    {
        for (const char* language : {"de", "zh_CN"}) {
            for (const int mode : {MeasModeDataThroughput, MeasModeStandardAcq}) {
                installLanguage(QLatin1String(language));
                FormBench bench(2, mode);
                CxDataGraphSetupDlg setup(bench.form.get(), nullptr);
                for (QWidget* window : {static_cast<QWidget*>(bench.form.get()), static_cast<QWidget*>(&setup)}) {
                    window->show();
                    bench.tick();
                    for (const QWidget* widget : window->findChildren<QWidget*>()) {
                        if (widget->isVisible() &&
                            (qobject_cast<const QAbstractButton*>(widget) || qobject_cast<const QLabel*>(widget))) {
                            QVERIFY2(widget->width() >= widget->minimumSizeHint().width(),
                                     qPrintable(language + widget->objectName()));
                        }
                    }
                }
                const QHeaderView* header = bench.table()->horizontalHeader();
                for (int column = 0; column < header->count(); ++column) {
                    const QTableWidgetItem* item = bench.table()->horizontalHeaderItem(column);
                    const QFont font = item->data(Qt::FontRole).isValid() ? item->font() : header->font();
                    const QSize text =
                        QFontMetrics(font).boundingRect(QRect(0, 0, 1000, 1000), 0, item->text()).size();
                    QVERIFY2(text.width() <= header->sectionSize(column) && text.height() <= header->height() + 2,
                             qPrintable(QStringLiteral("%1: %2 in %3")
                                            .arg(item->text())
                                            .arg(text.height())
                                            .arg(header->height())));
                }
                cleanup();
            }
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
