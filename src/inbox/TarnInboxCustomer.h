#pragma once

#include <QString>

class TarnJSONObject;

// The answer of turning a sender into a customer.
struct TarnInboxCustomer {
    QString client_id;

    static TarnInboxCustomer fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnInboxCustomer &, const TarnInboxCustomer &) = default;
};
