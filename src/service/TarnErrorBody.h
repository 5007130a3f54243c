#pragma once

#include <QString>
#include <optional>

class TarnJSONObject;

// The service's error envelope, read from failed answers and from successful
// ones alike (a 200 whose body says "error" is a failure).
struct TarnErrorBody
{
    std::optional<QString> error;
    static TarnErrorBody fromJSON(const TarnJSONObject &json);
};
