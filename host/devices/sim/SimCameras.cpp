// SPDX-License-Identifier: GPL-3.0-or-later
// The family of simulated cameras, from a scenario file or the built-in one.
#include "SimCameras.h"

#include <map>

#include <QtCore/QFile>

#include "FreeRunningCamera.h"
#include "ScenarioReader.h"

/// In a static library nobody else does.
static void registerResources()
{
    Q_INIT_RESOURCE(scenarios);
}

namespace sim {

std::vector<std::shared_ptr<CameraDevice>> createCameras(const QString& file, QString* error)
{
    registerResources();
    QFile source(file.isEmpty() ? QStringLiteral(":/kestrova/scenarios/default.json") : file);
    QString fault;
    std::vector<CameraScenario> scenarios;
    if (source.open(QIODevice::ReadOnly))
        scenarios = readScenario(source.readAll(), fault);
    else
        fault = source.errorString();
    if (!fault.isEmpty() && error)
        *error = QStringLiteral("%1: %2").arg(source.fileName(), fault);

    std::map<QString, std::shared_ptr<SharedLink>> links;
    std::vector<std::shared_ptr<CameraDevice>> cameras;
    for (const CameraScenario& scenario : scenarios) {
        std::shared_ptr<SharedLink> link;
        if (!scenario.link.name.isEmpty())
            link = links.try_emplace(scenario.link.name, std::make_shared<SharedLink>(scenario.link)).first->second;
        cameras.push_back(std::make_shared<FreeRunningCamera>(scenario, link));
    }
    return cameras;
}

} // namespace sim
