// SPDX-License-Identifier: GPL-3.0-or-later
// Many cameras in the real viewer: the window answers in time, and no frame that a camera handed out is missing in
// its record. KESTROVA_LOAD_CAMERAS and KESTROVA_LOAD_SECONDS ask for another load than the usual one.
#include <functional>

#include <qcustomplot.h>

#include <QtTest/QtTest>

#include "AnswerProbe.h"
#include "engine/CameraLineData.h"
#include "Files.h"
#include "form/DataGraphForm.h"
#include "ViewerSession.h"

namespace {

constexpr int answersWithinMs = 50;
constexpr int framesPerSecond = 5;

int setting(const char* name, int usual)
{
    bool given = false;
    const int value = qEnvironmentVariableIntValue(name, &given);
    return given ? value : usual;
}

const bool underValgrind = qEnvironmentVariableIsSet("KESTROVA_TEST_SCALE"); // nothing is in time there

/// A quarter of a megabyte, five times a second; links that are no faster, so that the curves are dense.
QByteArray scenario(int cameras)
{
    QJsonArray list;
    for (int i = 0; i < cameras; ++i) {
        list.append(QJsonObject{{"name", "CAM"},
                                {"id", QString::number(1000 + i)},
                                {"sensor", QJsonObject{{"width", 512}, {"height", 512}, {"rateHz", framesPerSecond}}},
                                {"link", QJsonObject{{"rate", 1.32}, {"stallEveryMs", 50}, {"stallUs", 200}}}});
    }
    return QJsonDocument(QJsonObject{{"cameras", list}}).toJson();
}

} // namespace

class TestLoad : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void throughput() { windowAnswersAndNoFrameIsLost(MeasModeDataThroughput); }
    void counters() { windowAnswersAndNoFrameIsLost(MeasModeStandardAcq); }

private:
    void windowAnswersAndNoFrameIsLost(int mode);
    void zoomUntil(CxDataGraphForm* form, const char* state, const std::function<bool()>& done);
};

/// A turn of the wheel every 100 ms, in and out.
void TestLoad::zoomUntil(CxDataGraphForm* form, const char* state, const std::function<bool()>& done)
{
    QCoreApplication::processEvents(); // what a start or stop left to do
    auto* plot = form->findChild<QCustomPlot*>("plot");
    const QPoint at = plot->axisRect(0)->center();
    int angle = 120;
    QTimer wheel;
    connect(&wheel, &QTimer::timeout, this, [&] {
        QWheelEvent event(at, at, {}, QPoint(0, angle = -angle), Qt::NoButton, Qt::NoModifier, Qt::NoScrollPhase,
                          false);
        QCoreApplication::sendEvent(plot, &event);
    });
    const AnswerProbe probe;
    wheel.start(100);
    QTRY_VERIFY_WITH_TIMEOUT(done(), 200'000);
    qInfo("%d cameras, %s: longest answer %.1f ms, %.1f ms without waiting for a processor", form->lineDataMap.size(),
          state, probe.longestMs, probe.longestOwnMs);
    QVERIFY(underValgrind || probe.longestOwnMs < answersWithinMs); // other tests may run beside it
}

void TestLoad::windowAnswersAndNoFrameIsLost(int mode)
{
    const int cameras = setting("KESTROVA_LOAD_CAMERAS", underValgrind ? 2 : 16);
    ViewerSession session;
    session.options.camerasFile = writeFile(session.directory.filePath("cameras.json"), scenario(cameras));
    session.set("DTGTMeasMode", mode);
    QVERIFY(session.begin());
    auto* form = static_cast<CxDataGraphForm*>(session.form);
    QCOMPARE(form->lineDataMap.size(), cameras);
    session.startAll->click();
    const auto frames = quint64(setting("KESTROVA_LOAD_SECONDS", 2)) * quint64(framesPerSecond);
    const auto received = [](const auto& model) { return model->ledger().total(sim::Fate::Received).frames; };
    zoomUntil(form, "measuring", [&] { return received(session.models.back()) > frames; });
    form->findChild<QAbstractButton*>("checkBoxLiveGraph")->click();
    zoomUntil(form, "measuring without live graph", [&] { return received(session.models.back()) > 2 * frames; });
    session.startAll->click();
    zoomUntil(form, "stopped", [rest = 20]() mutable { return --rest < 0; });

    for (int i = 0; i < cameras; ++i) {
        const auto& model = session.models[size_t(i)];
        const CxCameraLineData* record = form->lineDataMap.value(CameraRegistry::instance().openedHandle(i));
        QCOMPARE(record->runTotals().frames, received(model));
        const Deliveries seen = CameraRegistry::instance().deliveries(record->hCam);
        QCOMPARE(seen.images, received(model));
        QVERIFY(underValgrind || seen.missing == 0);
        // Neither drawing nor its absence has made a camera wait: its counters show nothing but what arrived.
        QVERIFY(underValgrind || model->ledger().counters[VN_COUNTER_API_SKIP] == 0);
    }
}

QTEST_MAIN(TestLoad)
#include "tst_load.moc"
