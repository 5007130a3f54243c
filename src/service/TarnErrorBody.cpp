#include "service/TarnErrorBody.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnErrorBody TarnErrorBody::fromJSON(const TarnJSONObject &json)
{
    return { json.optionalString("error"_L1) };
}

std::optional<QString> TarnErrorBody::messageIn(const QByteArray &body)
{
    try {
        return TarnJSON::decode<TarnErrorBody>(body).error;
    } catch (const TarnDecodeError &) {
        return std::nullopt;
    }
}
