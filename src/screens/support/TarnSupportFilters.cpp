#include "screens/support/TarnSupportFilters.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnSupportFilters TarnSupportFilters::fromJSON(const TarnJSONObject &json)
{
    return { .assignee_id = json.optionalString("assignee_id"_L1),
        .client_id = json.optionalString("client_id"_L1),
        .priority = json.optionalString("priority"_L1),
        .due = json.optionalString("due"_L1),
        .text = json.optionalString("text"_L1) };
}

QJsonObject TarnSupportFilters::toJSON() const
{
    QJsonObject json;
    const auto put = [&json](const QString &key, const std::optional<QString> &value) {
        if (value && !value->isEmpty())
            json.insert(key, *value);
    };
    put(u"assignee_id"_s, assignee_id);
    put(u"client_id"_s, client_id);
    put(u"priority"_s, priority);
    put(u"due"_s, due);
    put(u"text"_s, text);
    return json;
}
