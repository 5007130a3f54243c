#pragma once

#include "money/TarnPaymentRecords.h"

#include <QList>

class TarnJSONObject;

// A client's saved cards.
struct TarnPaymentCards {
    QList<TarnPaymentCard> cards;

    static TarnPaymentCards fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnPaymentCards &, const TarnPaymentCards &) = default;
};
