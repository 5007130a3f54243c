#pragma once

#include <QString>

class TarnJSONObject;

// A message to the customer drafted for someone to send or discard; `channel` is "email" or "text".
struct TarnCustomerDraft {
    QString id;
    QString channel;
    QString subject;
    QString body;
    QString created_at;

    static TarnCustomerDraft fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnCustomerDraft &, const TarnCustomerDraft &) = default;
};
