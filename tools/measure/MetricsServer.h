// SPDX-License-Identifier: GPL-3.0-or-later
// Serves the figures of a run over HTTP to whoever collects them.
#ifndef KESTROVA_MEASURE_METRICSSERVER_H
#define KESTROVA_MEASURE_METRICSSERVER_H

#include <memory>

#include <QtCore/QString>

#include "ListenAddress.h"
#include "Metrics.h"

/// Answers on threads of its own, of lower priority than any that measures. They see nothing but the snapshot that was
/// published last, so a collector that floods or hangs holds up nobody. Used on the thread of the event loop.
class MetricsServer
{
public:
    MetricsServer();
    /// Cuts connections off; takes up to two seconds, whatever they do.
    ~MetricsServer();

    /// False if that is impossible there, or if the program was built without; then `error` says why.
    bool listen(const ListenAddress& where, QString* error);
    /// Where it listens: "http://127.0.0.1:9841/metrics". After listen().
    QString url() const;
    /// Answers speak of this from now on. Does not wait for those that are being given.
    void publish(MetricsSnapshot snapshot);

private:
    class Private;
    const std::unique_ptr<Private> d;
};

#endif
