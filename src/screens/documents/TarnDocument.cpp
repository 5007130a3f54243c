#include "screens/documents/TarnDocument.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnDocument TarnDocument::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .kind = json.string("kind"_L1),
        .title = json.string("title"_L1),
        .client_id = json.optionalString("client_id"_L1),
        .client_name = json.optionalString("client_name"_L1),
        .owner_name = json.string("owner_name"_L1),
        .status = json.string("status"_L1),
        .updated_at = json.string("updated_at"_L1),
        .pages = json.integer("pages"_L1),
        .envelope_id = json.optionalString("envelope_id"_L1),
        .envelope_status = json.optionalString("envelope_status"_L1) };
}
