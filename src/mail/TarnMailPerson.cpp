#include "mail/TarnMailPerson.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnMailPerson TarnMailPerson::fromJSON(const TarnJSONObject &json)
{
    return { .name = json.optionalString("name"_L1).value_or(QString()), .email = json.string("email"_L1) };
}
