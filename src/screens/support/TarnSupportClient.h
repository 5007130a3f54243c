#pragma once

#include "screens/support/TarnSupportComment.h"
#include "screens/support/TarnSupportTaskSummary.h"

#include <QList>
#include <QString>

#include <optional>

class TarnJSONObject;

// A customer's support page: contact, notes, tasks and the time spent.
struct TarnSupportClient {
    QString id;
    QString name;
    std::optional<QString> phone {};
    std::optional<QString> email {};
    QList<TarnSupportComment> notes {};
    QList<TarnSupportTaskSummary> tasks {};
    qint64 logged_minutes = 0;

    static TarnSupportClient fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnSupportClient &, const TarnSupportClient &) = default;
};
