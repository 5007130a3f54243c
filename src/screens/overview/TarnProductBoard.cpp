#include "screens/overview/TarnProductBoard.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnBoardItem TarnBoardItem::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .title = json.string("title"_L1),
        .stage = json.string("stage"_L1),
        .client_name = json.optionalString("client_name"_L1),
        .owner_name = json.optionalString("owner_name"_L1),
        .due_date = json.optionalString("due_date"_L1),
        .version = json.integer("version"_L1) };
}

TarnProductBoard TarnProductBoard::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .name = json.string("name"_L1),
        .stages = json.list<QString>("stages"_L1),
        .items = json.list<TarnBoardItem>("items"_L1) };
}
