#pragma once

#include <QJsonObject>
#include <QJsonValue>
#include <QString>

// The bodies of the call book's changes.

// One edited cell of a call: `column` is "outcome", "notes" or "client_id"
// and is sent as the key of `value`, beside the `version` the edit was based
// on. An empty customer is sent as null: the call is no longer tied to one.
struct TarnCallCell {
    QString column;
    QString value;
    qint64 version = 0;
    [[nodiscard]] QJsonObject toJSON() const
    {
        const bool cleared = column == QLatin1StringView("client_id") && value.isEmpty();
        return { { QStringLiteral("version"), version },
            { column, cleared ? QJsonValue(QJsonValue::Null) : QJsonValue(value) } };
    }
};

// Placing a call: `mode` is how it is placed (see CallBookRules::modes);
// an empty `client_id` lets the service find the customer by the number.
struct TarnSalesCallStart {
    QString number;
    QString client_id;
    QString mode;
    [[nodiscard]] QJsonObject toJSON() const
    {
        QJsonObject json { { QStringLiteral("number"), number }, { QStringLiteral("mode"), mode } };
        if (!client_id.isEmpty())
            json.insert(QStringLiteral("client_id"), client_id);
        return json;
    }
};
