#include "screens/customers/TarnRecordFile.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnRecordFile TarnRecordFile::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .name = json.string("name"_L1),
        .size = json.integer("size"_L1),
        .added_at = json.string("added_at"_L1) };
}
