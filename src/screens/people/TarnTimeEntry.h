#pragma once

#include <QString>

#include <optional>

class TarnJSONObject;

// One stretch on the time clock: from clocking in to clocking out, both ISO
// times in UTC; `clock_out` is absent while the person is still clocked in.
// An owner's correction keeps who made it, when and why; `version` grows
// with each one.
struct TarnTimeEntry {
    QString id;
    QString person_id;
    QString person_name;
    QString clock_in;
    std::optional<QString> clock_out {};
    std::optional<QString> edited_by_name {};
    std::optional<QString> edited_at {};
    std::optional<QString> edit_reason {};
    qint64 version = 0;

    static TarnTimeEntry fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnTimeEntry &, const TarnTimeEntry &) = default;
};
