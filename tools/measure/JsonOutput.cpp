// SPDX-License-Identifier: GPL-3.0-or-later
// Output for programs: one JSON object per line. The fields are described in docs/kestrova-measure.md.
#include "JsonObjects.h"

#include <QtCore/QJsonDocument>

namespace {

/// Keeps nothing between lines: each object can be understood alone.
class JsonOutput final : public Output
{
public:
    explicit JsonOutput(LineWriter& lines) : Output(lines) {}

    void interval(const IntervalLine& line) override
    {
        QJsonObject object = cameraObject(line.camera);
        object.insert(QStringLiteral("type"), QStringLiteral("interval"));
        object.insert(QStringLiteral("time"), line.time.toUTC().toString(Qt::ISODateWithMs));
        object.insert(QStringLiteral("elapsedS"), line.stretch.endS);
        object.insert(QStringLiteral("intervalS"), line.stretch.lengthS);
        addFigures(object, line.stretch.figures);
        write(object);
    }

    void links(const LinkLine& line) override
    {
        const auto writeOne = [&](const char* type, const LinkTotals& link) {
            if (link.cameras.size() < 2)
                return;
            QJsonObject object = linkObject(link);
            object.insert(QStringLiteral("type"), QLatin1String(type));
            object.insert(QStringLiteral("time"), line.time.toUTC().toString(Qt::ISODateWithMs));
            object.insert(QStringLiteral("elapsedS"), link.endS);
            write(object);
        };
        for (const LinkTotals& link : line.table.links)
            writeOne("link", link);
        writeOne("total", line.table.all);
    }

    void summary(const Summary& summary) override { write(summaryObject(summary)); }

    void cameraList(const std::vector<SxCameraInfo>& cameras) override
    {
        for (const SxCameraInfo& camera : cameras) {
            QJsonObject object = cameraObject(camera);
            object.insert(QStringLiteral("type"), QStringLiteral("camera"));
            write(object);
        }
    }

private:
    void write(const QJsonObject& object)
    {
        writeLine(QString::fromUtf8(QJsonDocument(object).toJson(QJsonDocument::Compact)));
    }
};

} // namespace

std::unique_ptr<Output> makeJsonOutput(LineWriter& lines)
{
    return std::make_unique<JsonOutput>(lines);
}
