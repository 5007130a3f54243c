#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// One document of the documents screen. `kind` is "worksheet", "agreement"
// or "proposal"; `status` "draft", "final" or "signed". A document that was
// put into an envelope carries the envelope's id and status ("draft", "sent",
// "completed").
struct TarnDocument {
    QString id;
    QString kind;
    QString title;
    std::optional<QString> client_id {};
    std::optional<QString> client_name {};
    QString owner_name;
    QString status;
    QString updated_at;
    qint64 pages = 0;
    std::optional<QString> envelope_id {};
    std::optional<QString> envelope_status {};

    static TarnDocument fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnDocument &, const TarnDocument &) = default;
};
