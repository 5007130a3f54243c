#include "mail/TarnMailMillis.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

namespace TarnMailMillis {

std::optional<qint64> readOptional(const TarnJSONObject &json, QLatin1StringView key)
{
    const QJsonValue value = json.value(key);
    if (value.isUndefined() || value.isNull())
        return std::nullopt;
    if (!value.isString())
        return json.integer(key);
    bool ok = false;
    const qint64 ms = value.toString().trimmed().toLongLong(&ok);
    if (!ok)
        throw TarnDecodeError(key + " is not a number of milliseconds"_L1);
    return ms;
}

qint64 read(const TarnJSONObject &json, QLatin1StringView key)
{
    if (!json.has(key))
        throw TarnDecodeError("missing key "_L1 + key);
    return *readOptional(json, key);
}

} // namespace TarnMailMillis
