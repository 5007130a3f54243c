#include "screens/people/TarnHRRecord.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnHRRecord TarnHRRecord::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .name = json.string("name"_L1),
        .email = json.string("email"_L1),
        .job_title = json.string("job_title"_L1),
        .employment = json.string("employment"_L1),
        .started_on = json.string("started_on"_L1),
        .phone = json.optionalString("phone"_L1),
        .emergency_contact = json.optionalString("emergency_contact"_L1),
        .clocked_in = json.boolean("clocked_in"_L1),
        .version = json.integer("version"_L1) };
}
