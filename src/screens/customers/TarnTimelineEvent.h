#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// One thing that happened with a customer; `kind` is note, call, inbox, mail, task or stage.
struct TarnTimelineEvent {
    QString id;
    QString kind;
    QString at;
    QString title;
    QString body;
    std::optional<QString> author_name {};

    static TarnTimelineEvent fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnTimelineEvent &, const TarnTimelineEvent &) = default;
};
