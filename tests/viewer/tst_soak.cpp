// SPDX-License-Identifier: GPL-3.0-or-later
// Somebody who cannot leave the tool alone: the real viewer with its default cameras, measurements started and stopped
// every few seconds, and between that zooming, panning, switching and exporting by a seeded generator. The cameras have
// their parameters back in the end and memory has not grown. KESTROVA_SOAK_SECONDS says how long.
#include <malloc.h>
#include <unistd.h>

#include <random>

#include <qcustomplot.h>

#include <QtTest/QtTest>
#include <QtWidgets/QCheckBox>
#include <QtWidgets/QPushButton>
#include <QtWidgets/QTableWidget>
#include <QtWidgets/QToolButton>

#include <vnCoreGui/CxExportToolButton.h>

#include "CameraRegistry.h"
#include "DialogRobot.h"
#include "MainWindow.h"
#include "sim/SimulatedCamera.h"
#include "Viewer.h"

namespace {

constexpr int actionEveryMs = 40;
constexpr int startOrStopEveryMs = 1500;
constexpr double growthMB = 10.0;
constexpr int shortestTrendSeconds = 120; ///< before that, memory has not settled

double residentMB()
{
    QPixmapCache::clear(); // up to 10 MB, filled by a window that changes its size
    malloc_trim(0);
    QFile file(QStringLiteral("/proc/self/statm"));
    if (!file.open(QIODevice::ReadOnly))
        return 0.0;
    return file.readAll().split(' ').value(1).toDouble() * double(sysconf(_SC_PAGESIZE)) / 1e6;
}

/// Of a part of the values, given by its beginning and its end as shares of all.
double median(const std::vector<double>& values, double from, double to)
{
    const auto at = [&](double share) { return values.begin() + std::ptrdiff_t(share * double(values.size())); };
    std::vector<double> part(at(from), at(to));
    std::sort(part.begin(), part.end());
    return part.empty() ? 0.0 : part[part.size() / 2];
}

} // namespace

class TestSoak : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void startsAndStopsAllTheTime();

private:
    void act();
    template<class Widget>
    Widget* child(const char* name) const
    {
        return m_form->findChild<Widget*>(QLatin1String(name));
    }
    template<class Widget>
    Widget* any(const QWidget* parent)
    {
        const auto all = parent->findChildren<Widget*>();
        return all.isEmpty() ? nullptr : all.at(below(all.size()));
    }
    int below(int limit) { return std::uniform_int_distribution<int>(0, limit - 1)(m_random); }

    std::mt19937 m_random{20};
    QWidget* m_form = nullptr;
    QTemporaryDir m_directory;
};

void TestSoak::startsAndStopsAllTheTime()
{
    bool given = false;
    const int asked = qEnvironmentVariableIntValue("KESTROVA_SOAK_SECONDS", &given);
    const int seconds = given ? asked : 10;
    ViewerOptions options;
    options.settingsFile = m_directory.filePath("settings.ini");
    // A record grows from start to start until its capacity is reached, so that has to be soon.
    QSettings(options.settingsFile, QSettings::IniFormat)
        .setValue("DataThroughputGraphPlugin/DTGTMaxSamples", 100'000);
    Viewer viewer(options);
    QCOMPARE(viewer.start(), QString());
    QVERIFY(QTest::qWaitForWindowExposed(&viewer.window()));
    m_form = viewer.window().findChild<QWidget*>("CxDataGraphForm");
    QVERIFY(m_form);
    std::vector<std::pair<std::shared_ptr<sim::SimulatedCamera>, QMap<QString, int>>> cameras;
    for (int i = 0; i < CameraRegistry::instance().deviceCount(); ++i) {
        const auto camera = std::dynamic_pointer_cast<sim::SimulatedCamera>(CameraRegistry::instance().device(i));
        cameras.emplace_back(camera, camera->parameters());
    }

    DialogRobot robot;
    int starts = 0;
    std::vector<double> resident;
    QTimer actions;
    connect(&actions, &QTimer::timeout, this, [&, acting = false]() mutable {
        if (std::exchange(acting, true))
            return; // in a dialog or box
        robot.fileName = m_directory.filePath(below(2) ? "file.csv" : "file.png");
        act();
        acting = false;
    });
    actions.start(actionEveryMs);
    const QDeadlineTimer end(seconds * 1000);
    while (!end.hasExpired()) {
        QTest::qWait(startOrStopEveryMs);
        auto* startAll = child<QPushButton>("btnStartAll");
        const bool stops = startAll->text() == QLatin1String("Stop All");
        startAll->click();
        starts += stops ? 0 : 1;
        if (stops)
            resident.push_back(residentMB());
    }
    actions.stop();
    QCOMPARE(robot.seen.filter("Failed to start"), QStringList());
    viewer.shutDown();
    for (const auto& [camera, before] : cameras)
        QCOMPARE(camera->parameters(), before);

    const double growth = median(resident, 0.8, 1.0) - median(resident, 0.2, 0.4);
    qInfo("%d starts; %.1f MB resident, %.1f MB more than in the beginning", starts, median(resident, 0.8, 1.0),
          growth);
    if (seconds >= shortestTrendSeconds) {
        QVERIFY(!robot.seen.isEmpty()); // it has exported, too
        QVERIFY2(growth < growthMB, qPrintable(QString::number(growth)));
    }
}

/// Anything that a person can do with the form at any time, but for starting and stopping all.
void TestSoak::act()
{
    auto* plot = child<QCustomPlot>("plot");
    auto* table = child<QTableWidget>("table");
    const QPoint at(below(plot->width()), below(plot->height()));
    switch (below(12)) {
    case 0:
    case 1: {
        QWheelEvent wheel(at, plot->mapToGlobal(at), {}, QPoint(0, below(2) ? 120 : -120), Qt::NoButton,
                          Qt::NoModifier, Qt::NoScrollPhase, false);
        QCoreApplication::sendEvent(plot, &wheel);
        break;
    }
    case 2:
    case 3:
        QTest::mousePress(plot, Qt::LeftButton, {}, at);
        QTest::mouseMove(plot, at + QPoint(below(200) - 100, 0));
        QTest::mouseRelease(plot, Qt::LeftButton, {}, at);
        break;
    case 4:
        child<QToolButton>("btnResetZoom")->click();
        break;
    case 5:
        child<QPushButton>("resetPan")->click();
        break;
    case 6: // a Graph box, automatic throughput or scaling
    case 7:
        if (auto* box = any<QCheckBox>(table))
            box->click();
        break;
    case 8:
        if (auto* box = below(2) ? any<QCheckBox>(child<QTableWidget>("tablePlotCheck"))
                                 : child<QCheckBox>("checkBoxLiveGraph"))
            box->click();
        break;
    case 9:
        if (below(4) == 0)
            m_form->window()->resize(600 + below(1200), 400 + below(700));
        break;
    case 10: // a row's "Start", "Stop" or "Export Data..."
        if (auto* button = any<QToolButton>(table); button && below(4) == 0)
            button->click();
        break;
    default:
        if (below(4) == 0) {
            auto* exporter = child<CxExportToolButton>("btnExport");
            exporter->setExportType(below(2) ? ExportToFile : ExportToClipboard);
            exporter->click();
        }
    }
}

QTEST_MAIN(TestSoak)
#include "tst_soak.moc"
