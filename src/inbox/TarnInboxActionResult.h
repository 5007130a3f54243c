#pragma once

class TarnJSONObject;

// The answer of a thread action. It carries nothing the client reads: any
// JSON object is accepted, `{}` included, and the thread is read again.
struct TarnInboxActionResult {
    static TarnInboxActionResult fromJSON(const TarnJSONObject &json);
};
