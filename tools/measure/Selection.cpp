// SPDX-License-Identifier: GPL-3.0-or-later
// Finds cameras by what the user calls them.
#include "Selection.h"

#include <algorithm>
#include <set>

#include <QtCore/QRegularExpression>

#include "Options.h"
#include "PlainText.h"

namespace {

constexpr int longestName = 100; ///< of a camera within a file's, of which file systems take 255 bytes

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

QStringList reportFiles(const QString& pattern, const std::vector<SxCameraInfo>& cameras)
{
    static const QRegularExpression unsafe(QStringLiteral("[^A-Za-z0-9._-]+"));
    QStringList files;
    for (const SxCameraInfo& info : cameras) {
        const QString plain =
            QStringLiteral("%1-%2").arg(info.name, info.id).replace(unsafe, QStringLiteral("_")).right(longestName);
        const auto fileOf = [&pattern](const QString& camera) {
            return QString(pattern).replace(cameraPlaceholder, camera);
        };
        QString file = fileOf(plain);
        for (int twin = 2; files.contains(file); ++twin)
            file = fileOf(QStringLiteral("%1-%2").arg(plain).arg(twin));
        files.append(file);
    }
    return files;
}
