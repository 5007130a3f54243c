#pragma once

#include <QString>

class TarnJSONObject;

// The answer of a successful code exchange: the new session token and the
// name of the person it belongs to.
struct AuthExchange {
    struct Cookie {
        QString value;
        static Cookie fromJSON(const TarnJSONObject &json);
    };
    struct User {
        QString name;
        static User fromJSON(const TarnJSONObject &json);
    };

    Cookie cookie;
    User user;
    static AuthExchange fromJSON(const TarnJSONObject &json);
};
