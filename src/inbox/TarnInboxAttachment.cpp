#include "inbox/TarnInboxAttachment.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnInboxAttachment TarnInboxAttachment::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1), .name = json.string("name"_L1), .status = json.string("status"_L1) };
}
