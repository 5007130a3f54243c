#pragma once

#include "screens/customers/TarnCustomerSummary.h"

#include <QList>
#include <QString>

class TarnJSONObject;

// The register's customers, or the matches of a search.
struct TarnCustomerList {
    QList<TarnCustomerSummary> clients;

    static TarnCustomerList fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnCustomerList &, const TarnCustomerList &) = default;
};
