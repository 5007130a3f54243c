#pragma once

#include "money/TarnPaymentRecords.h"

#include <QList>

class TarnJSONObject;

// A client's saved cards and the recurring charges on them.
struct TarnPaymentCards {
    QList<TarnPaymentCard> cards;
    QList<TarnPaymentSchedule> schedules;

    static TarnPaymentCards fromJSON(const TarnJSONObject &json);
    friend bool operator==(const TarnPaymentCards &, const TarnPaymentCards &) = default;
};
