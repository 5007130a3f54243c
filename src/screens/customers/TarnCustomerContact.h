#pragma once

#include <QString>

class TarnJSONObject;

// A person at a customer's.
struct TarnCustomerContact {
    QString id;
    QString name;
    QString role;
    QString email;
    QString phone;

    static TarnCustomerContact fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnCustomerContact &, const TarnCustomerContact &) = default;
};
