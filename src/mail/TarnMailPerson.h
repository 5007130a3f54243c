#pragma once

#include <QString>

class TarnJSONObject;

// A sender or recipient; the name may be empty when only the address is known.
struct TarnMailPerson {
    QString name;
    QString email;

    static TarnMailPerson fromJSON(const TarnJSONObject &json);
    // The name, or the address when there is none.
    [[nodiscard]] QString displayName() const { return name.isEmpty() ? email : name; }

    friend bool operator==(const TarnMailPerson &, const TarnMailPerson &) = default;
};
