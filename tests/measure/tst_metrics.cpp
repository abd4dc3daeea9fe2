// SPDX-License-Identifier: GPL-3.0-or-later
// What a collector gets over loopback, and that a bad one disturbs neither the measurement nor its end.
#include <cmath>
#include <csignal>

#include <QtNetwork/QTcpSocket>
#include <QtTest/QtTest>

#include <QtCore/QJsonArray>

#include "Files.h"
#include "MetricsServer.h"
#include "Table.h"

namespace {

constexpr int longest = 60000; // ms

std::unique_ptr<QTcpSocket> ask(const QUrl& url, const QByteArray& text)
{
    auto socket = std::make_unique<QTcpSocket>();
    socket->connectToHost(url.host(), static_cast<quint16>(url.port()));
    if (socket->waitForConnected(longest))
        socket->write(text);
    socket->flush();
    return socket;
}

QByteArray get(const QUrl& url)
{
    const auto socket = ask(url, "GET /metrics HTTP/1.1\r\nHost: test\r\n\r\n");
    QByteArray answer;
    while (socket->waitForReadyRead(longest))
        answer += socket->readAll();
    return answer;
}

} // namespace

class TestMetrics : public QObject
{
    Q_OBJECT

private:
    MetricsServer server;

private Q_SLOTS:
    void initTestCase()
    {
        QString error;
        QVERIFY2(server.listen({"127.0.0.1", 0}, &error), qPrintable(error));
    }

    void exposition_data()
    {
        const Table<QByteArray, double, QByteArray> row("figure", "value", "sample");
        row("count", "frames", 12, "kestrova_frames_total{%} 12");
        row("rate", "minThroughputMBps", 2.5, "kestrova_min_throughput_bytes_per_second{%} 2500000");
        row("percent", "maxBufferLevelPercent", 50, "kestrova_max_buffer_level_ratio{%} 0.5");
        row("time", "longestGapMs", 1500, "kestrova_longest_gap_seconds{%} 1.5");
        row("one reason", "transportSkips", 3, "kestrova_skipped_frames_total{%,reason=\"link\"} 3");
        row("another reason alone", "apiSkips", 4, "kestrova_skipped_frames_total{%,reason=\"host\"} 4");
        row("a cause", "lostInSocket", 5, "kestrova_lost_frames_total{%,cause=\"socket\"} 5");
        row("infinite", "avgThroughputMBps", INFINITY, "");
    }

    void exposition()
    {
        QFETCH(QByteArray, figure);
        QFETCH(double, value);
        QFETCH(QByteArray, sample);
        MetricsSnapshot snapshot;
        snapshot.cameras.push_back({"the \"left\" one", "1", "hub", {{figure, nullptr, 0, value}}});
        snapshot.cameras.push_back({"unknown", "2", {}, {{figure, nullptr, 0, std::nullopt}}});
        server.publish(snapshot);
        const QByteArray answer = get(server.url());
        QVERIFY2(answer.contains("kestrova_build_info{"), answer);
        QVERIFY(!answer.contains("id=\"2\""));
        sample.replace("%", "camera=\"the \\\"left\\\" one\",id=\"1\",link=\"hub\"");
        const QByteArray family = sample.left(sample.indexOf('{'));
        QVERIFY2(answer.contains(sample + '\n') && answer.contains("TYPE " + family), answer);
        QCOMPARE(answer.contains("id=\"1\""), !sample.isEmpty());
    }

    void everyFigureHasAName()
    {
        Figures figures = throughputFigures({}, 1, true);
        for (const Figure& figure : counterFigures({}, {}))
            figures.push_back(figure);
        for (const Figure& figure : figures) {
            const bool madeOfOthers = !qstrcmp(figure.key, "skips") || !qstrcmp(figure.key, "framesPerSecond");
            const auto& names = metricNames();
            const bool named = std::any_of(names.begin(), names.end(),
                                           [&](const MetricName& name) { return !qstrcmp(name.figure, figure.key); });
            QVERIFY2(named != madeOfOthers, figure.key);
        }
    }

    void badCollectors()
    {
        QTemporaryDir folder;
        const QString scenario = folder.filePath("scenario.json");
        writeFile(scenario,
                  R"({"cameras": [{"id": "1", "sensor": {"width": 320, "height": 240}, "link": {"rate": 10}}]})");
        QProcess process;
        process.start(KESTROVA_MEASURE, {"--cameras", scenario, "--all", "--json", "--metrics", "0"});
        process.setReadChannel(QProcess::StandardError);
        QVERIFY(process.waitForReadyRead(longest));
        const QByteArray told = process.readLine().trimmed();
        const QUrl url(told.mid(told.indexOf("http")));
        std::vector<std::unique_ptr<QTcpSocket>> collectors;
        for (const char* text : {"", "GET /metr", "GET /metrics HTTP/1.1\r\n\r\n"}) {
            for (int i = 0; i < 40; ++i)
                collectors.push_back(ask(url, text));
        }
        process.setReadChannel(QProcess::StandardOutput);
        QVERIFY(process.waitForReadyRead(longest));
        QElapsedTimer timer;
        timer.start();
        QCOMPARE(::kill(static_cast<pid_t>(process.processId()), SIGTERM), 0);
        QVERIFY(process.waitForFinished(longest));
        QVERIFY2(timer.elapsed() < 5000, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(process.exitCode(), 0);
        const QJsonObject summary = jsonLines(process.readAllStandardOutput()).back();
        const QJsonValue camera = summary["cameras"].toArray()[0];
        QCOMPARE(camera["missingFrames"].toInt(-1), 0);
    }
};

QTEST_GUILESS_MAIN(TestMetrics)
#include "tst_metrics.moc"
