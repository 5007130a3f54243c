#include "mail/TarnMailAttachment.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMailAttachment TarnMailAttachment::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .name = json.string("name"_L1),
        .size = json.integer("size"_L1),
        .mime = json.optionalString("mime"_L1) };
}
