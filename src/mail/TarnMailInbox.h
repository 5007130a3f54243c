#pragma once

#include "mail/TarnMailSection.h"

#include <QList>
#include <QString>

#include <optional>

class TarnJSONObject;

// One page of a view or of a search. The last page has no nextCursor.
struct TarnMailInbox {
    QList<TarnMailSection> sections;
    std::optional<QString> nextCursor {};

    static TarnMailInbox fromJSON(const TarnJSONObject &json);
};
