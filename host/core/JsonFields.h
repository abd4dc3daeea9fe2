// SPDX-License-Identifier: GPL-3.0-or-later
// Takes the fields of a JSON object one by one, checks their ranges and reports the first fault, unknown keys
// included.
#ifndef KESTROVA_JSONFIELDS_H
#define KESTROVA_JSONFIELDS_H

#include <cmath>

#include <QtCore/QJsonArray>
#include <QtCore/QJsonDocument>
#include <QtCore/QJsonObject>
#include <QtCore/QSet>
#include <QtCore/QString>

#include "PlainText.h"

/// The object that a document is, or null. Of what is no JSON `error` tells line and reason.
inline QJsonValue jsonObject(const QByteArray& json, QString& error)
{
    QJsonParseError fault{};
    const QJsonDocument document = QJsonDocument::fromJson(json, &fault);
    if (fault.error != QJsonParseError::NoError)
        error = QStringLiteral("line %1: %2").arg(json.left(fault.offset).count('\n') + 1).arg(fault.errorString());
    return document.isObject() ? QJsonValue(document.object()) : QJsonValue();
}

/// Fields that are missing keep the value that they have. After a fault nothing is read any more.
class JsonFields
{
public:
    JsonFields(const QJsonValue& value, const QString& objectPath, QString& firstError)
        : fields(value.toObject()), path(objectPath), error(firstError)
    {
        if (!value.isObject())
            fail(path, QStringLiteral("must be an object"));
    }

    void text(const char* key, QString& value)
    {
        const QJsonValue found = take(key);
        if (found.isString())
            value = found.toString();
        else
            refuse(found, key, QStringLiteral("must be a text"));
    }

    void flag(const char* key, bool& value)
    {
        const QJsonValue found = take(key);
        if (found.isBool())
            value = found.toBool();
        else
            refuse(found, key, QStringLiteral("must be true or false"));
    }

    void number(const char* key, double& value, double low, double high)
    {
        const QJsonValue found = take(key);
        const double read = found.toDouble(NAN);
        if (read >= low && read <= high)
            value = read;
        else
            refuse(found, key, QStringLiteral("must be a number from %1 to %2").arg(low).arg(high));
    }

    template<typename Integer>
    void whole(const char* key, Integer& value, double low, double high)
    {
        const QJsonValue found = take(key);
        const double read = found.toDouble(NAN);
        if (read >= low && read <= high && std::floor(read) == read)
            value = static_cast<Integer>(read);
        else
            refuse(found, key,
                   QStringLiteral("must be a whole number from %1 to %2").arg(low, 0, 'f', 0).arg(high, 0, 'f', 0));
    }

    /// Calls read(JsonFields&) for the object, if there is one.
    template<typename Read>
    void object(const char* key, Read read)
    {
        const QJsonValue found = take(key);
        if (!found.isUndefined())
            readObject(found, place(key), read);
    }

    /// Calls read(JsonFields&) for every object of the list, if there is one.
    template<typename Read>
    void list(const char* key, Read read)
    {
        const QJsonValue found = take(key);
        if (!found.isUndefined() && !found.isArray())
            return fail(place(key), QStringLiteral("must be a list"));
        const QJsonArray items = found.toArray();
        for (int i = 0; i < items.size() && error.isEmpty(); ++i)
            readObject(items[i], QStringLiteral("%1[%2]").arg(place(key)).arg(i), read);
    }

    /// The field as it is, for those that may be of several kinds; undefined if it is missing.
    QJsonValue take(const char* key)
    {
        if (!error.isEmpty())
            return QJsonValue(QJsonValue::Undefined);
        taken.insert(QLatin1String(key));
        return fields.value(QLatin1String(key));
    }

    void fail(const char* key, const QString& reason) { fail(place(key), reason); }

    /// What is left is unknown.
    void finish()
    {
        for (auto field = fields.begin(); field != fields.end(); ++field) {
            if (!taken.contains(field.key()))
                fail(path, QStringLiteral("unknown key \"%1\"").arg(singleLine(field.key())));
        }
    }

private:
    template<typename Read>
    void readObject(const QJsonValue& value, const QString& where, Read read)
    {
        JsonFields inner(value, where, error);
        read(inner);
        inner.finish();
    }

    QString place(const char* key) const
    {
        return path.isEmpty() ? QLatin1String(key) : path + QLatin1Char('.') + QLatin1String(key);
    }

    void refuse(const QJsonValue& found, const char* key, const QString& reason)
    {
        if (!found.isUndefined())
            fail(place(key), reason);
    }

    void fail(const QString& where, const QString& reason)
    {
        if (error.isEmpty())
            error = where.isEmpty() ? reason : QStringLiteral("%1: %2").arg(where, reason);
    }

    const QJsonObject fields;
    const QString path;
    QString& error;
    QSet<QString> taken;
};

#endif
