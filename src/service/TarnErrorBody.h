#pragma once

#include <QString>

#include <optional>

class QByteArray;
class TarnJSONObject;

// The service's error envelope, read from failed answers and from successful
// ones alike (a 200 whose body says "error" is a failure).
struct TarnErrorBody {
    std::optional<QString> error;
    static TarnErrorBody fromJSON(const TarnJSONObject &json);

    // The "error" of a body that is an error envelope, also when empty;
    // nothing for any other body (not JSON, not an object, no "error").
    [[nodiscard]] static std::optional<QString> messageIn(const QByteArray &body);
};
