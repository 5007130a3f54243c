#include "screens/support/TarnSupportTaskUpdate.h"

using namespace Qt::StringLiterals;

QJsonObject TarnSupportTaskUpdate::toJSON() const
{
    QJsonObject json { { u"version"_s, version } };
    const auto put = [&json](const QString &key, const std::optional<QString> &value) {
        if (value)
            json.insert(key, *value);
    };
    put(u"title"_s, title);
    put(u"description"_s, description);
    put(u"status"_s, status);
    put(u"priority"_s, priority);
    put(u"due_date"_s, due_date);
    put(u"assignee_id"_s, assignee_id);
    put(u"client_id"_s, client_id);
    return json;
}
