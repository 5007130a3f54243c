#include "screens/documents/TarnEnvelope.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnEnvelope TarnEnvelope::fromJSON(const TarnJSONObject &json)
{
    return { .id = json.string("id"_L1),
        .document_id = json.string("document_id"_L1),
        .title = json.string("title"_L1),
        .message = json.string("message"_L1),
        .status = json.string("status"_L1),
        .sender_name = json.string("sender_name"_L1),
        .created_at = json.string("created_at"_L1),
        .sent_at = json.optionalString("sent_at"_L1),
        .completed_at = json.optionalString("completed_at"_L1),
        .signers = json.list<TarnEnvelopeSigner>("signers"_L1) };
}
