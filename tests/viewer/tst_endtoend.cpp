// SPDX-License-Identifier: GPL-3.0-or-later
// A person's session with the real viewer, the built plug-in and the default cameras, on a real display and in real
// time. Curves are looked for where a person sees them: in the picture.
#include <vector>

#include <qcustomplot.h>

#include <QtTest/QtTest>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QToolButton>
#include <QtWidgets/QTreeWidget>

#include "CameraRegistry.h"
#include "MainWindow.h"
#include "sim/SimulatedCamera.h"
#include "Viewer.h"

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
    void sessionRestoresEveryCamera();
    void programSavesAPictureOfTheCurves();

private:
    QString settingsFile() const { return m_directory.filePath("settings.ini"); }

    QTemporaryDir m_directory;
};

void TestEndToEnd::sessionRestoresEveryCamera()
{
    ViewerOptions options;
    options.settingsFile = settingsFile();
    Viewer viewer(options);
    QCOMPARE(viewer.start(), QString());
    QVERIFY(QTest::qWaitForWindowExposed(&viewer.window()));

    std::vector<std::shared_ptr<sim::SimulatedCamera>> models; // outlive the viewer's end
    std::vector<QMap<QString, int>> before;
    for (int i = 0; i < CameraRegistry::instance().deviceCount(); ++i) {
        models.push_back(std::dynamic_pointer_cast<sim::SimulatedCamera>(CameraRegistry::instance().device(i)));
        QVERIFY(models.back());
        before.push_back(models.back()->parameters());
    }
    QCOMPARE(models.size(), size_t(4));

    auto* form = viewer.window().findChild<QWidget*>("CxDataGraphForm");
    QVERIFY(form);
    auto* startAll = form->findChild<QAbstractButton*>("btnStartAll");
    auto* table = form->findChild<QTableWidget*>("table");
    auto* plot = form->findChild<QCustomPlot*>("plot");
    QTest::mouseClick(startAll, Qt::LeftButton);
    QCOMPARE(startAll->text(), QString("Stop All"));
    for (size_t i = 0; i < models.size(); ++i) {
        QCOMPARE(table->item(int(i), 1)->text(), QString("Testing"));
        QVERIFY2(models[i]->parameters() != before[i], "nothing would have to be restored");
    }
    for (int area = 0; area < plot->axisRectCount(); ++area) {
        QTRY_VERIFY_WITH_TIMEOUT(showsCurves(plot->grab(plot->axisRect(area)->rect()).toImage()), curvesWithinMs);
    }

    auto* list = viewer.window().findChild<QTreeWidget*>();
    list->setCurrentItem(list->topLevelItem(2));
    QTest::mouseClick(viewer.window().findChild<QAbstractButton*>("btnOpenCamera"), Qt::LeftButton);
    QCOMPARE(table->rowCount(), 3);
    QCOMPARE(plot->axisRectCount(), 3);
    QCOMPARE(models[2]->parameters(), before[2]);

    QTest::mouseClick(table->cellWidget(0, 2), Qt::LeftButton); // its "Stop"
    QCOMPARE(table->item(0, 1)->text(), QString("Stopped"));
    QCOMPARE(models[0]->parameters(), before[0]);
    QCOMPARE(table->item(1, 1)->text(), QString("Testing")); // this one and the next measure when the window closes

    QTimer::singleShot(0, &viewer.window(), &QWidget::close);
    QCOMPARE(QApplication::exec(), 0);
    viewer.shutDown();
    for (size_t i = 0; i < models.size(); ++i) {
        QCOMPARE(models[i]->parameters(), before[i]);
    }
}

void TestEndToEnd::programSavesAPictureOfTheCurves()
{
    const QString picture = m_directory.filePath("window.png");
    QProcess program;
    program.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    program.start(KESTROVA_PROGRAM,
                  {"--settings", settingsFile(), "--start", "--quit-after", "6s", "--screenshot", picture});
    QVERIFY(program.waitForFinished(curvesWithinMs));
    QCOMPARE(program.exitStatus(), QProcess::NormalExit);
    QCOMPARE(program.exitCode(), 0);
    const QImage image(picture);
    const QSize size = image.size(); // lower left there is plot only, no legend
    QVERIFY(showsCurves(image.copy(0, size.height() * 2 / 3, size.width() * 4 / 5, size.height() / 3)));
}

QTEST_MAIN(TestEndToEnd)
#include "tst_endtoend.moc"
