#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// One row of the call book. `direction` is "in" or "out"; `outcome` one of
// "answered", "missed", "voicemail", "no-answer", "busy"; `status` "ringing",
// "in-call" or "ended" (a placed call moves through them); `duration` is in
// seconds of talk, so far while the call is on. `version` grows with every
// edited cell.
struct TarnCall {
    QString id;
    QString direction;
    std::optional<QString> client_id {};
    std::optional<QString> client_name {};
    QString person_id;
    QString person_name;
    QString number;
    QString started_at;
    qint64 duration = 0;
    QString outcome;
    QString notes;
    QString status;
    bool has_recording = false;
    qint64 version = 0;

    static TarnCall fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnCall &, const TarnCall &) = default;
};
