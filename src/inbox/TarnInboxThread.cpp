#include "inbox/TarnInboxThread.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnInboxThread TarnInboxThread::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .kind = json.string("kind"_L1),
        .client_id = json.optionalString("client_id"_L1),
        .customer_address = json.string("customer_address"_L1),
        .business_address = json.string("business_address"_L1),
        .owner_id = json.optionalString("owner_id"_L1),
        .snoozed_until = json.optionalString("snoozed_until"_L1),
        .client_name = json.string("client_name"_L1),
        .entries = json.list<TarnInboxEntry>("entries"_L1),
        .can_edit = json.boolean("can_edit"_L1),
        .can_send = json.boolean("can_send"_L1),
        .ai_configured = json.boolean("ai_configured"_L1),
        .sending_address = json.optionalString("sending_address"_L1),
        .assignees = json.list<TarnInboxPerson>("assignees"_L1),
        .mention_targets = json.list<TarnInboxPerson>("mention_targets"_L1) };
}
