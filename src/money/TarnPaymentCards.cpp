#include "money/TarnPaymentCards.h"

#include "service/TarnJSONObject.h"

using namespace Qt::StringLiterals;

TarnPaymentCards TarnPaymentCards::fromJSON(const TarnJSONObject &json)
{
    return { json.list<TarnPaymentCard>("cards"_L1), json.list<TarnPaymentSchedule>("schedules"_L1) };
}
