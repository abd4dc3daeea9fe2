// SPDX-License-Identifier: GPL-3.0-or-later
// Finds cameras by what the user calls them.
#include "CameraSelection.h"

#include <set>

#include <QtCore/QCoreApplication>

#include "CameraNames.h"

namespace {

/// The context of this file's texts in translations.
struct Texts
{
    Q_DECLARE_TR_FUNCTIONS(CameraSelection)
};

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

/// "1 = MODEL (left), 2 = MODEL (right)"
QString candidates(const std::vector<SxCameraInfo>& known, const std::vector<int>& found)
{
    QStringList texts;
    for (const int i : found) {
        const SxCameraInfo& info = known[static_cast<size_t>(i)];
        texts.append(QStringLiteral("%1 = %2").arg(singleLine(info.id), cameraDisplayName(info)));
    }
    return texts.join(QStringLiteral(", "));
}

} // namespace

Selection selectCameras(const std::vector<SxCameraInfo>& known, const QStringList& names)
{
    std::set<int> selected;
    for (const QString& name : names) {
        const auto found = matches(known, name);
        if (found.empty())
            return {{}, Selection::Fault::Missing, Texts::tr("there is no camera \"%1\"").arg(name)};
        if (found.size() > 1)
            return {{},
                    Selection::Fault::Ambiguous,
                    Texts::tr("\"%1\" is the name of several cameras, give one's ID: %2")
                        .arg(name, candidates(known, found))};
        selected.insert(found.front());
    }
    return {{selected.begin(), selected.end()}, Selection::Fault::None, {}};
}
