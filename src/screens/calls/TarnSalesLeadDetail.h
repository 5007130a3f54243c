#pragma once

#include "screens/calls/TarnCall.h"
#include "screens/calls/TarnSalesLead.h"

#include <QList>

class TarnJSONObject;

// One lead with its calls, newest first.
struct TarnSalesLeadDetail {
    TarnSalesLead lead;
    QList<TarnCall> calls;

    static TarnSalesLeadDetail fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnSalesLeadDetail &, const TarnSalesLeadDetail &) = default;
};
