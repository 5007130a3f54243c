#include "screens/support/TarnSupportFile.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnSupportFile TarnSupportFile::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .name = json.string("name"_L1),
        .size = json.integer("size"_L1),
        .uploaded_by_name = json.string("uploaded_by_name"_L1),
        .created_at = json.string("created_at"_L1) };
}
