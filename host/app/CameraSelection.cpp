// SPDX-License-Identifier: GPL-3.0-or-later
// Finds cameras by what the user calls them.
#include "CameraSelection.h"

#include <algorithm>
#include <set>

#include "PlainText.h"

namespace {

std::vector<int> matches(const std::vector<SxCameraInfo>& known, const QString& name)
{
    for (const auto text : {&SxCameraInfo::id, &SxCameraInfo::customId, &SxCameraInfo::name}) {
        std::vector<int> found;
        for (int i = 0; i < static_cast<int>(known.size()); ++i) {
            if (known[static_cast<size_t>(i)].*text == name)
                found.push_back(i);
        }
        if (!found.empty())
            return found;
    }
    return {};
}

} // namespace

Selection selectCameras(const std::vector<SxCameraInfo>& known, const QStringList& names)
{
    std::set<int> selected;
    for (const QString& name : names) {
        const auto found = matches(known, name);
        if (found.empty())
            return {{}, Selection::Fault::Missing, QStringLiteral("there is no camera \"%1\"").arg(name)};
        if (found.size() > 1)
            return {{},
                    Selection::Fault::Ambiguous,
                    QStringLiteral("\"%1\" are several cameras, give the ID instead").arg(name)};
        selected.insert(found.front());
    }
    return {{selected.begin(), selected.end()}, Selection::Fault::None, {}};
}

QString cameraTitle(const SxCameraInfo& info)
{
    const QString name = info.customId.isEmpty() ? info.name : info.customId;
    return singleLine(QStringLiteral("%1 (%2)").arg(name, info.id));
}
