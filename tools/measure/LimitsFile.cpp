// SPDX-License-Identifier: GPL-3.0-or-later
// From JSON to limits; a key is the name of the option.
#include "LimitsFile.h"

#include <QtCore/QFile>

#include "JsonFields.h"

namespace {

constexpr double largestLimit = 1e12; ///< far beyond every figure

std::vector<Limit> readLimits(JsonFields& in, ExMeasMode mode)
{
    std::vector<Limit> limits;
    for (const LimitKind& kind : limitKinds()) {
        const QJsonValue found = in.take(kind.name);
        if (found.isUndefined())
            continue;
        if (!kind.exists(mode))
            in.fail(kind.name, QStringLiteral("has no meaning in this mode"));
        std::optional<double> value;
        if (kind.isTime)
            value = limitFromText(kind, found.toString());
        else if (found.toDouble(-1.0) >= 0.0 && found.toDouble() <= largestLimit)
            value = found.toDouble();
        if (value)
            limits.push_back({&kind, *value});
        else
            in.fail(kind.name, QStringLiteral("must be %1").arg(limitExpectation(kind)));
    }
    return limits;
}

void readDocument(const QByteArray& json, ExMeasMode mode, RigLimits& limits, QString& error)
{
    JsonFields in(jsonObject(json, error), QString(), error);
    in.object("all", [&](JsonFields& fields) { limits.all = readLimits(fields, mode); });
    in.list("cameras", [&](JsonFields& fields) {
        QString id;
        fields.text("id", id);
        if (id.isEmpty() || limits.cameras.contains(id))
            fields.fail("id", QStringLiteral("must be given and unlike that of other cameras"));
        limits.cameras.insert(id, readLimits(fields, mode));
    });
    in.finish();
    if (error.isEmpty() && limits.all.empty() && limits.cameras.isEmpty())
        in.fail("all", QStringLiteral("there is no limit"));
}

} // namespace

bool readLimitsFile(const QString& fileName, ExMeasMode mode, RigLimits& limits, QString& error)
{
    QFile file(fileName);
    QString fault;
    if (file.open(QIODevice::ReadOnly))
        readDocument(file.readAll(), mode, limits, fault);
    else
        fault = file.errorString();
    if (!fault.isEmpty())
        error = QStringLiteral("%1: %2").arg(fileName, fault);
    return fault.isEmpty();
}
