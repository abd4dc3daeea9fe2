// SPDX-License-Identifier: GPL-3.0-or-later
// Somebody who cannot leave the tool alone: the real viewer with its default cameras, measurements started and stopped
// every few seconds, and between that zooming, panning, switching and exporting by a seeded generator. The cameras have
// their parameters back in the end and memory has not grown. KESTROVA_SOAK_SECONDS says how long.
#include <QtGui/QPixmapCache>
#include <QtTest/QtTest>
#include <QtWidgets/QDialog>

#include "DialogRobot.h"
#include "RandomUser.h"
#include "ResidentMemory.h"
#include "ViewerSession.h"

namespace {

constexpr int actionEveryMs = 40;
constexpr int startOrStopEveryMs = 1500;
constexpr double growthMB = 10.0;
constexpr int shortestTrendSeconds = 120; ///< before that, memory has not settled

double residentMB()
{
    QPixmapCache::clear(); // up to 10 MB, filled by a window that changes its size
    return double(residentBytes()) / 1e6;
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
    void startsAndStopsAllTheTime()
    {
        bool given = false;
        const int asked = qEnvironmentVariableIntValue("KESTROVA_SOAK_SECONDS", &given);
        const int seconds = given ? asked : 10;
        ViewerSession session;
        session.set("DTGTMaxSamples", 100'000); // a record grows from start to start until its capacity is reached
        QVERIFY(session.begin());

        RandomUser user(20);
        DialogRobot robot;
        robot.answer = [](QDialog* setup) { setup->reject(); };
        int starts = 0;
        std::vector<double> resident;
        QTimer actions;
        connect(&actions, &QTimer::timeout, this, [&, acting = false]() mutable {
            if (std::exchange(acting, true))
                return; // in a dialog or box
            robot.fileName = session.directory.filePath(user.below(2) ? "file.csv" : "file.png");
            if (user.below(40) == 0)
                session.viewer->window().resize(600 + user.below(1200), 400 + user.below(700));
            user.act(*session.form);
            acting = false;
        });
        actions.start(actionEveryMs);
        const QDeadlineTimer end(seconds * 1000);
        while (!end.hasExpired()) {
            QTest::qWait(startOrStopEveryMs);
            const bool stops = session.startAll->text() == QLatin1String("Stop All");
            session.startAll->click();
            starts += stops ? 0 : 1;
            if (stops)
                resident.push_back(residentMB());
        }
        actions.stop();
        QCOMPARE(robot.seen.filter("Failed to start"), QStringList());
        session.viewer->shutDown();
        QCOMPARE(session.parameters(), session.before);

        const double growth = median(resident, 0.8, 1.0) - median(resident, 0.2, 0.4);
        qInfo("%d starts; %.1f MB resident, %.1f MB more than in the beginning", starts, median(resident, 0.8, 1.0),
              growth);
        if (seconds >= shortestTrendSeconds) {
            QVERIFY(!robot.seen.isEmpty()); // it has exported, too
            QVERIFY2(growth < growthMB, qPrintable(QString::number(growth)));
        }
    }
};

QTEST_MAIN(TestSoak)
#include "tst_soak.moc"
