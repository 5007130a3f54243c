#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class TarnJSONObject;

// A person of the company as the people search finds them. `apps` is sent
// to owners only: what someone may open is the owner's business.
struct TarnTeamMember {
    QString id;
    QString name;
    QString email;
    QString role;
    bool owner = false;
    std::optional<QStringList> apps {};

    static TarnTeamMember fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnTeamMember &, const TarnTeamMember &) = default;
};
