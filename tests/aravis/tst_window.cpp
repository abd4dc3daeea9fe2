// SPDX-License-Identifier: GPL-3.0-or-later
// The real viewer with cameras that die, pause and come back, that are not there or somebody else's: its window answers
// all the while.
#include <csignal>

#include <vnCore/CxCameraManager.h>

#include "AnswerProbe.h"
#include "ChildPrograms.h"
#include "FakeGigeCamera.h"
#include "NetworkNamespace.h"
#include "ViewerSession.h"

namespace {

const bool inOwnNetwork = enterNetworkNamespace();

constexpr double answersWithinMs = 100.0;

} // namespace

class TestWindow : public QObject
{
    Q_OBJECT

private Q_SLOTS:
    void answersWhateverCamerasDo();

private:
    /// Waits until it has happened; the window has to answer meanwhile.
    void waitUntil(const char* what, const std::function<bool()>& happened)
    {
        const AnswerProbe probe;
        QTRY_VERIFY_WITH_TIMEOUT(happened() && probe.longestMs > 0, 20000);
        qInfo("%s: longest answer %.1f ms, %.1f ms without waiting for a processor", what, probe.longestMs,
              probe.longestOwnMs);
        QVERIFY(probe.longestOwnMs < answersWithinMs); // other tests may run beside it
    }
};

void TestWindow::answersWhateverCamerasDo()
{
    ViewerSession session;
    session.options.openAll = false;
    std::vector<std::unique_ptr<FakeGigeCamera>> cameras;
    for (int i = 1; i <= 4; ++i) {
        cameras.push_back(std::make_unique<FakeGigeCamera>(QStringLiteral("127.0.0.%1").arg(i)));
        QVERIFY(cameras.back()->powerUp());
        session.options.camerasToOpen.append(cameras.back()->name());
    }
    session.options.camerasToOpen << cameras[0]->name() << QStringLiteral("gev:127.0.0.9"); // in use, nobody there
    QVERIFY(session.begin());
    auto* manager = CxCameraManager::instance();
    CameraRegistry& registry = CameraRegistry::instance();
    const auto failures = [&] {
        const EventLog& log = session.viewer->events();
        int count = 0;
        for (int row = 0; row < log.rowCount(); ++row)
            count += log.index(row, log.columnCount() - 1).data().toString().contains(QLatin1String(": ")) ? 1 : 0;
        return count;
    };
    waitUntil("opening", [&] { return manager->openedCameras().size() == 4 && failures() == 2; });

    QMap<QString, VNCORE_HANDLE> handles;
    for (VNCORE_HANDLE camera : manager->openedCameras())
        handles[manager->cameraParameters(camera)->cameraInfo().id] = camera;
    const auto images = [&](int camera) {
        return registry.deliveries(handles[cameras[size_t(camera)]->name()]).images;
    };
    session.startAll->click();
    for (int i = 0; i < 4; ++i)
        QTRY_VERIFY(images(i) > 3);
    QTest::qWait(0); // what the start left to do

    QSignalSpy lost(&registry, &CameraRegistry::cameraLost);
    QSignalSpy back(&registry, &CameraRegistry::cameraReturned);
    const auto went = std::chrono::steady_clock::now();
    cameras[0]->powerDown();
    cameras[1]->signal(SIGSTOP);
    cameras[2]->signal(SIGSTOP);
    cameras[3]->powerUp();
    for (const int tap : childrenRunning("kestrova-tap"))
        ::kill(tap, SIGKILL);
    const auto gone = [&](int seconds) {
        return std::chrono::steady_clock::now() - went > std::chrono::seconds(seconds);
    };
    waitUntil("paused for 2 s", [&] { return gone(2); });
    cameras[1]->signal(SIGCONT);
    waitUntil("lost", [&] { return gone(8) && lost.size() == 3; });
    cameras[2]->signal(SIGCONT);
    waitUntil("back", [&] { return back.size() == 2; });

    session.startAll->click(); // the form waits for the images in hand
    VNCORE_HANDLE shown = handles[cameras[1]->name()];
    QVERIFY(registry.startHostAcquisition(shown));
    cameras[1]->powerDown();
    QTimer::singleShot(20, this, [&] { registry.close(shown); });
    waitUntil("closed while it dies", [&] { return manager->openedCameras().size() == 3; });
    QElapsedTimer clock;
    clock.start();
    session.viewer.reset();
    QVERIFY(clock.elapsed() < 16000);
}

QTEST_MAIN(TestWindow)
#include "tst_window.moc"
