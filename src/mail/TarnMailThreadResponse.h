#pragma once

#include "mail/TarnMailThread.h"

class TarnJSONObject;

// The answer of mail.thread.
struct TarnMailThreadResponse {
    TarnMailThread thread;

    static TarnMailThreadResponse fromJSON(const TarnJSONObject &json);
};
