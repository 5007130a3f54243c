#pragma once

#include <optional>

class TarnJSONObject;

// The answer of thread actions and of acting on a reply draft. Some of the
// service's methods answer an empty object, hence the optional.
struct TarnMailOK {
    std::optional<bool> ok {};

    static TarnMailOK fromJSON(const TarnJSONObject &json);
};

using TarnMailOKReply = TarnMailOK;
