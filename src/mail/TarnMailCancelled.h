#pragma once

class TarnJSONObject;

// False when the message had already gone out.
struct TarnMailCancelled {
    bool cancelled = false;

    static TarnMailCancelled fromJSON(const TarnJSONObject &json);
};
