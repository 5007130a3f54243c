#pragma once

#include <QLatin1StringView>
#include <QtGlobal>

#include <optional>

class TarnJSONObject;

// The mail service writes its "...Ms" times as a JSON number or as a string
// of digits, depending on which backend produced the record; both mean
// milliseconds since the Unix epoch. Anything else rejects the record.
namespace TarnMailMillis {

[[nodiscard]] qint64 read(const TarnJSONObject &json, QLatin1StringView key);
[[nodiscard]] std::optional<qint64> readOptional(const TarnJSONObject &json, QLatin1StringView key);

} // namespace TarnMailMillis
