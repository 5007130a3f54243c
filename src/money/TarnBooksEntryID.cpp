#include "money/TarnBooksEntryID.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnBooksEntryID TarnBooksEntryID::fromJSON(const TarnJSONObject &json)
{
    return { json.string("entry_id"_L1) };
}
