#include "screens/websites/TarnWebsite.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnWebsite TarnWebsite::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .domain = json.string("domain"_L1),
        .client_name = json.string("client_name"_L1),
        .status = json.string("status"_L1),
        .published_at = json.optionalString("published_at"_L1),
        .uptime = json.integer("uptime"_L1),
        .visits = json.integer("visits"_L1),
        .form_entries = json.integer("form_entries"_L1),
        .score = json.optionalInteger("score"_L1) };
}
