// SPDX-License-Identifier: GPL-3.0-or-later
// In place of the server in a build without prometheus-cpp.
#include "MetricsServer.h"

class MetricsServer::Private
{
};

MetricsServer::MetricsServer() = default;

MetricsServer::~MetricsServer() = default;

bool MetricsServer::listen(const ListenAddress&, QString* error)
{
    *error = QStringLiteral("--metrics: this program was built without prometheus-cpp");
    return false;
}

QString MetricsServer::url() const
{
    return {};
}

// NOLINTNEXTLINE(performance-unnecessary-value-param) the real one keeps it
void MetricsServer::publish(MetricsSnapshot) {}
