#pragma once

#include <QString>

class TarnJSONObject;

// A person or a customer as the board names them.
struct TarnSupportNamed {
    QString id;
    QString name;

    static TarnSupportNamed fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnSupportNamed &, const TarnSupportNamed &) = default;
};
