#include "screens/customers/TarnRecordReminder.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnRecordReminder TarnRecordReminder::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .text = json.string("text"_L1),
        .remind_at = json.string("remind_at"_L1),
        .person_name = json.string("person_name"_L1) };
}
