#include "screens/customers/TarnCustomerProfile.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnCustomerProfile TarnCustomerProfile::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .name = json.string("name"_L1),
        .stage = json.string("stage"_L1),
        .email = json.string("email"_L1),
        .phone = json.string("phone"_L1),
        .company = json.string("company"_L1),
        .address = json.string("address"_L1),
        .version = json.integer("version"_L1),
        .archived = json.boolean("archived"_L1),
        .follow_up_on = json.optionalString("follow_up_on"_L1),
        .created_at = json.string("created_at"_L1),
        .tasks = json.list<TarnCustomerTask>("tasks"_L1),
        .contacts = json.list<TarnCustomerContact>("contacts"_L1),
        .files = json.list<TarnRecordFile>("files"_L1),
        .reminders = json.list<TarnRecordReminder>("reminders"_L1),
        .drafts = json.list<TarnCustomerDraft>("drafts"_L1) };
}
