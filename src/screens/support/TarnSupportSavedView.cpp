#include "screens/support/TarnSupportSavedView.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnSupportSavedView TarnSupportSavedView::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .name = json.string("name"_L1),
        .filters = json.get<TarnSupportFilters>("filters"_L1) };
}
