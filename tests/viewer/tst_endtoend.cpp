// SPDX-License-Identifier: GPL-3.0-or-later
// A person's session with the real viewer, the built plug-in and the default cameras, on a real display and in real
// time. Curves are looked for where a person sees them: in the picture.
#include <qcustomplot.h>

#include <QtTest/QtTest>
#include <QtWidgets/QtWidgets>

#include "ItemTexts.h"
#include "ViewerSession.h"

namespace {

constexpr int curvesWithinMs = 30'000;

/// Thin lines are smoothed and one curve is translucent: of the colours only the hue is sure. All else is grey.
bool showsCurves(const QImage& image)
{
    bool orange = false;
    bool blue = false;
    for (int y = 0; y < image.height(); ++y) {
        for (int x = 0; x < image.width(); ++x) {
            const QRgb pixel = image.pixel(x, y);
            orange |= qRed(pixel) > qBlue(pixel) + 100;
            blue |= qBlue(pixel) > qRed(pixel) + 50;
        }
    }
    return orange && blue;
}

} // namespace

class TestEndToEnd : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void sessionRestoresEveryCamera()
    {
        ViewerSession session;
        QVERIFY(session.begin());
        QCOMPARE(session.models.size(), size_t(4));
        auto* table = session.form->findChild<QTableWidget*>("table");
        auto* plot = session.form->findChild<QCustomPlot*>("plot");
        const auto states = [table] { return columnTexts(*table->model(), 1).join(' '); };
        QTest::mouseClick(session.startAll, Qt::LeftButton);
        QCOMPARE(session.startAll->text(), QString("Stop All"));
        QCOMPARE(states(), QString("Testing Testing Testing Testing"));
        for (size_t i = 0; i < session.models.size(); ++i)
            QVERIFY2(session.models[i]->parameters() != session.before[i], "nothing would have to be restored");
        for (int area = 0; area < plot->axisRectCount(); ++area)
            QTRY_VERIFY_WITH_TIMEOUT(showsCurves(plot->grab(plot->axisRect(area)->rect()).toImage()), curvesWithinMs);

        auto* list = session.viewer->window().findChild<QTreeWidget*>();
        list->setCurrentItem(list->topLevelItem(2));
        QTest::mouseClick(session.viewer->window().findChild<QAbstractButton*>("btnOpenCamera"), Qt::LeftButton);
        QCOMPARE(plot->axisRectCount(), 3);
        QCOMPARE(session.models[2]->parameters(), session.before[2]);
        QTest::mouseClick(table->cellWidget(0, 2), Qt::LeftButton); // its "Stop"
        QCOMPARE(session.models[0]->parameters(), session.before[0]);
        QCOMPARE(states(), QString("Stopped Testing Testing")); // these two measure when the window closes

        QTimer::singleShot(0, &session.viewer->window(), &QWidget::close);
        QCOMPARE(QApplication::exec(), 0);
        session.viewer->shutDown();
        QCOMPARE(session.parameters(), session.before);
    }

    void everyActionHasAKeyOfItsOwn()
    {
        ViewerSession session;
        QVERIFY(session.begin());
        MainWindow& window = session.viewer->window();
        QStringList keys;
        for (const QAction* action : window.findChildren<QAction*>()) {
            if (!action->menu() && !action->isSeparator())
                keys.append(action->shortcut().toString());
        }
        QVERIFY(keys.size() > 40 && !keys.contains(QString()));
        QCOMPARE(QStringList(keys).removeDuplicates(), 0);

        window.activateWindow();
        QVERIFY(QTest::qWaitForWindowActive(&window));
        QStringList shown;
        QTimer::singleShot(0, &window, [&shown] {
            auto* dialog = QApplication::activeModalWidget();
            const auto* list = dialog->findChild<QTreeWidget*>();
            shown = columnTexts(*list->model(), 0) + columnTexts(*list->model(), 1);
            dialog->close();
        });
        QTest::keyClick(&window, Qt::Key_F1);
        QCOMPARE(shown.mid(shown.size() / 2), keys);
        for (const char* action : {"View > Detail level > 3 Standard", "Export Graph > Copy to clipboard", "Refresh"})
            QVERIFY2(shown.contains(action), action);
    }

    void programSavesAPictureOfTheCurves()
    {
        const QTemporaryDir directory;
        const QString picture = directory.filePath("window.png");
        QProcess program;
        program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        program.start(KESTROVA_PROGRAM, {"--settings", directory.filePath("settings.ini"), "--start", "--quit-after",
                                         "6s", "--screenshot", picture});
        QVERIFY(program.waitForFinished(curvesWithinMs));
        QCOMPARE(program.exitStatus(), QProcess::NormalExit);
        QCOMPARE(program.exitCode(), 0);
        const QImage image(picture);
        const QSize size = image.size(); // lower left there is plot only, no legend
        QVERIFY(showsCurves(image.copy(0, size.height() * 2 / 3, size.width() * 4 / 5, size.height() / 3)));
    }
};

QTEST_MAIN(TestEndToEnd)
#include "tst_endtoend.moc"
