// SPDX-License-Identifier: GPL-3.0-or-later
// The server by prometheus-cpp, which brings an HTTP server of its own.
#include "MetricsServer.h"

#include <sys/resource.h>
#include <unistd.h>

#include <algorithm>
#include <cmath>
#include <mutex>
#include <thread>

#include <prometheus/collectable.h>
#include <prometheus/exposer.h>
#include <prometheus/metric_family.h>

namespace {

constexpr int lowPriority = 15; ///< niceness

using prometheus::ClientMetric;
using prometheus::MetricFamily;
using prometheus::MetricType;

ClientMetric sample(MetricType type, double value, std::vector<ClientMetric::Label> labels)
{
    ClientMetric metric;
    metric.label = std::move(labels);
    (type == MetricType::Counter ? metric.counter.value : metric.gauge.value) = value;
    return metric;
}

MetricFamily gauge(const char* name, const char* help, double value, std::vector<ClientMetric::Label> labels = {})
{
    return {name, help, MetricType::Gauge, {sample(MetricType::Gauge, value, std::move(labels))}};
}

std::vector<ClientMetric::Label> labelsOf(const CameraMetrics& camera, const MetricName& metric)
{
    std::vector<ClientMetric::Label> labels{{"camera", camera.camera}, {"id", camera.id}};
    if (!camera.link.empty())
        labels.push_back({"link", camera.link});
    if (metric.label)
        labels.push_back({metric.label, metric.value});
    return labels;
}

/// What is not known, or not finite, is left out.
void addSamples(MetricFamily& family, const MetricName& metric, const std::vector<CameraMetrics>& cameras)
{
    for (const CameraMetrics& camera : cameras) {
        const auto value = figureValue(camera.figures, QLatin1String(metric.figure));
        if (value && std::isfinite(*value))
            family.metric.push_back(sample(family.type, *value * metric.unit, labelsOf(camera, metric)));
    }
}

std::vector<MetricFamily> familiesOf(const MetricsSnapshot& snapshot)
{
    std::vector<MetricFamily> families{
        gauge("kestrova_build_info", "Always 1; the version is a label.", 1.0, {{"version", KESTROVA_VERSION}}),
        gauge("kestrova_update_timestamp_seconds", "When these figures were taken.", snapshot.timeS)};
    for (const MetricName& metric : metricNames()) {
        if (families.back().name != metric.name)
            families.push_back(
                {metric.name, metric.help, metric.counter ? MetricType::Counter : MetricType::Gauge, {}});
        addSamples(families.back(), metric, snapshot.cameras);
    }
    families.erase(std::remove_if(families.begin(), families.end(),
                                  [](const MetricFamily& family) { return family.metric.empty(); }),
                   families.end());
    return families;
}

/// Any thread.
class Published : public prometheus::Collectable
{
public:
    void set(std::shared_ptr<const MetricsSnapshot> snapshot)
    {
        const std::lock_guard<std::mutex> lock(mutex);
        newest.swap(snapshot);
    }

    std::vector<MetricFamily> Collect() const override
    {
        const auto snapshot = get();
        return snapshot ? familiesOf(*snapshot) : std::vector<MetricFamily>();
    }

private:
    std::shared_ptr<const MetricsSnapshot> get() const
    {
        const std::lock_guard<std::mutex> lock(mutex);
        return newest;
    }

    mutable std::mutex mutex; ///< guards `newest`; nothing is called under it
    std::shared_ptr<const MetricsSnapshot> newest;
};

/// Four answers at once; whoever asks for nothing within a second is cut off.
std::vector<std::string> serverOptions(const ListenAddress& where)
{
    return {"listening_ports", where.text().toStdString(), "num_threads", "4", "request_timeout_ms", "1000"};
}

} // namespace

class MetricsServer::Private
{
public:
    ListenAddress listening;
    const std::shared_ptr<Published> published = std::make_shared<Published>();
    std::unique_ptr<prometheus::Exposer> exposer;
};

MetricsServer::MetricsServer() : d(std::make_unique<Private>()) {}

MetricsServer::~MetricsServer() = default;

bool MetricsServer::listen(const ListenAddress& where, QString* error)
{
    // Threads inherit their niceness from the one that starts them.
    std::thread([&] {
        ::setpriority(PRIO_PROCESS, static_cast<id_t>(::gettid()), lowPriority);
        try {
            d->exposer = std::make_unique<prometheus::Exposer>(serverOptions(where));
        } catch (const std::exception& fault) {
            *error = QString::fromLocal8Bit(fault.what());
        }
    }).join();
    if (!d->exposer) {
        const QString reason = listenFault(where);
        *error = QStringLiteral("--metrics: cannot listen at %1: %2")
                     .arg(where.text(), reason.isEmpty() ? *error : reason);
        return false;
    }
    d->exposer->RegisterCollectable(d->published);
    d->listening = {where.address, d->exposer->GetListeningPorts().front()};
    return true;
}

QString MetricsServer::url() const
{
    return QStringLiteral("http://%1/metrics").arg(d->listening.text());
}

void MetricsServer::publish(MetricsSnapshot snapshot)
{
    d->published->set(std::make_shared<const MetricsSnapshot>(std::move(snapshot)));
}
