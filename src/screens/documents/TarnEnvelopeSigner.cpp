#include "screens/documents/TarnEnvelopeSigner.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnEnvelopeSigner TarnEnvelopeSigner::fromJSON(const TarnJSONObject &json)
{
    return { .order = json.integer("order"_L1),
        .name = json.string("name"_L1),
        .email = json.string("email"_L1),
        .status = json.string("status"_L1),
        .signed_at = json.optionalString("signed_at"_L1) };
}
