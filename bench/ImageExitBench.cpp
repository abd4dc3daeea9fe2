// SPDX-License-Identifier: GPL-3.0-or-later
// What the host adds to an image wait: the look-up of the camera, the newest image for the view, and the count of what
// came. Beside it the newest image alone.
#include <mutex>

#include <benchmark/benchmark.h>

#include <vnCore/vnApi.h>

#include "CameraRegistry.h"

namespace {

/// Has its next image at once.
class InstantCamera final : public CameraDevice
{
public:
    SxCameraInfo info() const override { return {}; }
    bool getInt(const char* /*name*/, int& /*value*/) override { return false; }
    bool setInt(const char* /*name*/, int /*value*/) override { return false; }
    bool canSet(const char* /*name*/, int /*value*/) override { return false; }
    bool hasParameter(const char* /*name*/) const override { return false; }
    QList<CxCameraParam::SxEnumItem> enumeration(const char* /*name*/) const override { return {}; }
    bool start() override { return true; }
    bool stop() override { return true; }
    bool isLost() const override { return false; }
    void setLossListener(std::function<void(bool lost)> /*listener*/) override {}
    bool waitForImage(std::chrono::milliseconds /*limit*/, DeviceImage& image) override
    {
        image.memory = pixels;
        image.descriptor.data = pixels.get();
        image.descriptor.dataBytes = 1 << 20;
        image.descriptor.frameNumber = nextNumber++;
        return true;
    }

private:
    const std::shared_ptr<quint8> pixels = std::make_shared<quint8>();
    quint32 nextNumber = 0;
};

void host(benchmark::State& state)
{
    CameraRegistry& registry = CameraRegistry::instance();
    VNCORE_HANDLE camera = registry.open(registry.addDevice(std::make_shared<InstantCamera>()));
    vnApi_StartAcquisition(camera);
    VN_IMG image{};
    image.size = sizeof(VN_IMG);
    for (auto _ : state)
        benchmark::DoNotOptimize(vnApi_GetImage(camera, 1, &image, nullptr, false));
    if (registry.deliveries(camera).images != static_cast<quint64>(state.iterations()))
        state.SkipWithError("not all are counted");
    registry.removeAllDevices();
}

void newestOnly(benchmark::State& state)
{
    const std::shared_ptr<CameraDevice> camera = std::make_shared<InstantCamera>();
    std::mutex newestMutex;
    DeviceImage newest;
    std::chrono::steady_clock::time_point lastImageAt;
    DeviceImage image;
    for (auto _ : state) {
        if (!camera->waitForImage(std::chrono::milliseconds(1), image))
            state.SkipWithError("no image");
        DeviceImage latest = image;
        const std::lock_guard lock(newestMutex);
        lastImageAt = std::chrono::steady_clock::now();
        std::swap(newest, latest);
        benchmark::DoNotOptimize(lastImageAt);
    }
}

} // namespace

void registerImageExitBenchmarks()
{
    benchmark::RegisterBenchmark("image_exit/newest", newestOnly);
    benchmark::RegisterBenchmark("image_exit/host", host);
}
