#include "screens/calls/TarnCall.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnCall TarnCall::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .direction = json.string("direction"_L1),
        .client_id = json.optionalString("client_id"_L1),
        .client_name = json.optionalString("client_name"_L1),
        .person_id = json.string("person_id"_L1),
        .person_name = json.string("person_name"_L1),
        .number = json.string("number"_L1),
        .started_at = json.string("started_at"_L1),
        .duration = json.integer("duration"_L1),
        .outcome = json.string("outcome"_L1),
        .notes = json.string("notes"_L1),
        .status = json.string("status"_L1),
        .has_recording = json.boolean("has_recording"_L1),
        .version = json.integer("version"_L1) };
}
