#include "mail/TarnMailInbox.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMailInbox TarnMailInbox::fromJSON(const TarnJSONObject &json)
{
    std::optional<QString> cursor = json.optionalString("nextCursor"_L1);
    // An empty cursor would ask for the first page again, forever.
    if (cursor && cursor->isEmpty())
        cursor.reset();
    return { .sections = json.list<TarnMailSection>("sections"_L1), .nextCursor = std::move(cursor) };
}
