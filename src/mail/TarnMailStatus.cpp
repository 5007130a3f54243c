#include "mail/TarnMailStatus.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMailStatus TarnMailStatus::fromJSON(const TarnJSONObject &json)
{
    return { .configured = json.boolean("configured"_L1),
        .email = json.optionalString("email"_L1).value_or(QString()),
        .gmail = json.optionalBoolean("gmail"_L1).value_or(false),
        .organize = json.optionalBoolean("organize"_L1).value_or(false),
        .calendar = json.optionalBoolean("calendar"_L1).value_or(false),
        .sending = json.optionalBoolean("sending"_L1).value_or(false) };
}
