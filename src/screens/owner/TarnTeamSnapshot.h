#pragma once

#include "screens/owner/TarnMoneyMonth.h"
#include "screens/owner/TarnTeamWeek.h"

#include <QList>
#include <QString>

class TarnJSONObject;

// The company at a glance. `months` holds last month then this one and
// `payments_received` counts this month's; amounts are in cents; `today` and
// `week_start` are ISO dates.
struct TarnTeamSnapshot {
    QString today {};
    QList<TarnMoneyMonth> months {};
    qint64 open_invoices = 0;
    qint64 open_invoices_amount = 0;
    qint64 open_invoices_overdue = 0;
    qint64 unpaid_bills = 0;
    qint64 unpaid_bills_amount = 0;
    qint64 unpaid_bills_overdue = 0;
    qint64 payments_received = 0;
    qint64 payments_received_amount = 0;
    qint64 support_open = 0;
    qint64 support_overdue = 0;
    qint64 inbox_waiting = 0;
    QString week_start {};
    QList<TarnTeamWeek> team {};

    static TarnTeamSnapshot fromJSON(const TarnJSONObject &json);

    friend bool operator==(const TarnTeamSnapshot &, const TarnTeamSnapshot &) = default;
};
