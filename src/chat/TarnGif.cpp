#include "chat/TarnGif.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnGif TarnGif::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .title = json.string("title"_L1),
        .width = json.integer("width"_L1),
        .height = json.integer("height"_L1) };
}
