#include "screens/support/TarnSupportBoard.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnSupportBoard TarnSupportBoard::fromJSON(const TarnJSONObject &json)
{
    return { .tasks = json.list<TarnSupportTaskSummary>("tasks"_L1),
        .people = json.list<TarnSupportNamed>("people"_L1),
        .clients = json.list<TarnSupportNamed>("clients"_L1),
        .views = json.list<TarnSupportSavedView>("views"_L1),
        .recurring = json.list<TarnSupportRecurring>("recurring"_L1),
        .timer = json.optional<TarnSupportTimer>("timer"_L1),
        .time_entries = json.list<TarnSupportTimeEntry>("time_entries"_L1) };
}
