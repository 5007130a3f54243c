#pragma once

#include <QString>
#include <QStringList>

#include <optional>

class TarnJSONObject;

// The signed-in person and their saved settings, as "/api/session" answers it.
struct TarnSession {
    QString id;
    QString name;
    QString email;
    QString csrf;
    QStringList apps;
    std::optional<QString> role;
    std::optional<bool> owner;
    std::optional<bool> books_owner;
    std::optional<QString> background;
    std::optional<QString> accent;
    std::optional<QString> text_size;

    static TarnSession fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnSession &, const TarnSession &) = default;
};
